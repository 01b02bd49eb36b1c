// The one lock of the program: it guards the controls of the panel and the link's identity
// texts. It lives as long as the process, so nothing that takes it has to wonder whether the
// link was started or already shut down.
//
// It is held only for work in memory: nothing waits on the device while holding it, so the
// screen can always read the store whatever the device does. Each thread knows whether it
// holds it, so that the link can refuse to send from under it.
#pragma once

#include "platform/lock.h"

namespace plat {

Lock& ProgramLock();

void ProgramLockEnter();
// Enters when it can be had within the time; false otherwise.
bool ProgramLockEnterWithin(unsigned milliseconds);
void ProgramLockLeave();
// True while this thread holds the program lock.
bool ProgramLockHeldHere();

// Holds the program lock for one scope.
class ProgramLockHold {
public:
    ProgramLockHold() { ProgramLockEnter(); }
    ~ProgramLockHold() { ProgramLockLeave(); }
    ProgramLockHold(const ProgramLockHold&) = delete;
    ProgramLockHold& operator=(const ProgramLockHold&) = delete;
};

}  // namespace plat
