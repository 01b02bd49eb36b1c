#include "platform/socket.h"
#include "platform/thread.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>

using testing_support::WaitUntil;

namespace {

struct Pair {
    plat::SocketHandle s[2] = {plat::kInvalidSocket, plat::kInvalidSocket};
    Pair() { EXPECT_EQ(0, plat::SocketPair(s)); }
    ~Pair() {
        plat::SocketClose(s[0]);
        plat::SocketClose(s[1]);
    }
};

struct BlockedReceive {
    plat::SocketHandle socket;
    std::atomic<int> result{-100};
    std::atomic<bool> started{false};
};

void ReceiveOnce(void* p) {
    auto* b = static_cast<BlockedReceive*>(p);
    char c;
    b->started = true;
    b->result = plat::SocketReceive(b->socket, &c, 1);
}

}  // namespace

TEST(Socket, CloseWakesAReceiveBlockedInAnotherThread) {
    Pair pair;
    BlockedReceive blocked{pair.s[0]};
    ASSERT_EQ(0, plat::StartDetachedThread(ReceiveOnce, &blocked));
    ASSERT_TRUE(WaitUntil([&] { return blocked.started.load(); }));
    plat::SleepMilliseconds(20);  // let it block inside recv
    plat::SocketClose(pair.s[0]);
    ASSERT_TRUE(WaitUntil([&] { return blocked.result != -100; }))
        << "the blocked receive never returned";
    EXPECT_LE(blocked.result.load(), 0);
    char c;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(pair.s[0], &c, 1));
    pair.s[0] = plat::kInvalidSocket;
}

TEST(Socket, AClosedHandleStaysDeadWhenNewSocketsAreMade) {
    Pair first;
    plat::SocketHandle old = first.s[0];
    plat::SocketClose(old);
    first.s[0] = plat::kInvalidSocket;
    Pair second;  // may get the same native socket number
    EXPECT_NE(old, second.s[0]);
    EXPECT_NE(old, second.s[1]);
    ASSERT_EQ(1, plat::SocketSend(second.s[1], "x", 1));
    char c;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(old, &c, 1));
    EXPECT_EQ(plat::kSocketError, plat::SocketSend(old, "y", 1));
    EXPECT_EQ(1, plat::SocketReceive(second.s[0], &c, 1));
    EXPECT_EQ('x', c);
}

TEST(Socket, UnknownHandlesFailQuietly) {
    char c = 0;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(12345, &c, 1));
    EXPECT_EQ(plat::kSocketError, plat::SocketSend(plat::kInvalidSocket, &c, 1));
    plat::SocketClose(plat::kInvalidSocket);
    plat::SocketClose(777777);
}
