#include "platform/lock.h"
#include "platform/thread.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <atomic>

using testing_support::WaitUntil;

TEST(Lock, TheHolderMayEnterAgainWhileOthersWait) {
    plat::Lock lock;
    plat::LockInit(lock);
    plat::LockEnter(lock);
    plat::LockEnter(lock);  // recursive: no deadlock

    struct Shared {
        plat::Lock* lock;
        std::atomic<int> stage{0};
    } shared{&lock};
    ASSERT_EQ(0, plat::StartDetachedThread(
                     [](void* p) {
                         auto* s = static_cast<Shared*>(p);
                         s->stage = 1;
                         plat::LockEnter(*s->lock);
                         s->stage = 2;
                         plat::LockLeave(*s->lock);
                         s->stage = 3;
                     },
                     &shared));
    ASSERT_TRUE(WaitUntil([&] { return shared.stage >= 1; }));
    plat::LockLeave(lock);
    plat::SleepMilliseconds(20);
    EXPECT_EQ(1, shared.stage.load()) << "entered while the lock was still held once";
    plat::LockLeave(lock);
    EXPECT_TRUE(WaitUntil([&] { return shared.stage == 3; }));
    plat::LockDelete(lock);
    EXPECT_EQ(nullptr, lock.impl);
}
