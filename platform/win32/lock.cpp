#include "platform/lock.h"

#include <windows.h>

namespace plat {

void LockInit(Lock& lock) {
    if (lock.impl) return;
    auto* section = new CRITICAL_SECTION;
    InitializeCriticalSection(section);
    lock.impl = section;
}

void LockEnter(Lock& lock) { EnterCriticalSection(static_cast<CRITICAL_SECTION*>(lock.impl)); }

bool LockTryEnter(Lock& lock) {
    return TryEnterCriticalSection(static_cast<CRITICAL_SECTION*>(lock.impl)) != 0;
}

void LockLeave(Lock& lock) { LeaveCriticalSection(static_cast<CRITICAL_SECTION*>(lock.impl)); }

void LockDelete(Lock& lock) {
    if (!lock.impl) return;
    DeleteCriticalSection(static_cast<CRITICAL_SECTION*>(lock.impl));
    delete static_cast<CRITICAL_SECTION*>(lock.impl);
    lock.impl = nullptr;
}

}  // namespace plat
