#include "platform/lock.h"

#include <mutex>

namespace plat {

void LockInit(Lock& lock) {
    if (!lock.impl) lock.impl = new std::recursive_mutex;
}

void LockEnter(Lock& lock) { static_cast<std::recursive_mutex*>(lock.impl)->lock(); }

bool LockTryEnter(Lock& lock) { return static_cast<std::recursive_mutex*>(lock.impl)->try_lock(); }

void LockLeave(Lock& lock) { static_cast<std::recursive_mutex*>(lock.impl)->unlock(); }

void LockDelete(Lock& lock) {
    delete static_cast<std::recursive_mutex*>(lock.impl);
    lock.impl = nullptr;
}

}  // namespace plat
