#include "platform/program_lock.h"

namespace plat {

namespace {
thread_local int t_depth = 0;  // the lock is recursive: how often this thread entered it
}

Lock& ProgramLock() {
    // Made on first use (thread-safe), never deleted: a worker still ending after the link
    // shut down may take it once more.
    static Lock* lock = [] {
        auto* made = new Lock;
        LockInit(*made);
        return made;
    }();
    return *lock;
}

void ProgramLockEnter() {
    LockEnter(ProgramLock());
    ++t_depth;
}

bool ProgramLockEnterWithin(unsigned milliseconds) {
    if (!LockEnterWithin(ProgramLock(), milliseconds)) return false;
    ++t_depth;
    return true;
}

void ProgramLockLeave() {
    --t_depth;
    LockLeave(ProgramLock());
}

bool ProgramLockHeldHere() { return t_depth > 0; }

}  // namespace plat
