#include "platform/lock.h"

#include "platform/thread.h"

#include <chrono>

namespace plat {

bool LockEnterWithin(Lock& lock, unsigned milliseconds) {
    const auto deadline =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!LockTryEnter(lock)) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        SleepMilliseconds(1);
    }
    return true;
}

}  // namespace plat
