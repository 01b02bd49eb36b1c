#include "platform/program_lock.h"

namespace plat {

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

}  // namespace plat
