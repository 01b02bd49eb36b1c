// The one lock of the program: it serialises every frame sent to the device and guards the
// controls of the panel. It lives as long as the process, so nothing that takes it has to
// wonder whether the link was started or already shut down.
#pragma once

#include "platform/lock.h"

namespace plat {

Lock& ProgramLock();

// Holds the program lock for one scope.
class ProgramLockHold : public LockHold {
public:
    ProgramLockHold() : LockHold(ProgramLock()) {}
};

}  // namespace plat
