// Threads: a detached thread running one function with one argument, and a plain sleep.
#pragma once

namespace plat {

using ThreadFunction = void (*)(void* argument);

// Starts a thread that nobody joins; 0 on success, else the system's error code.
int StartDetachedThread(ThreadFunction function, void* argument);

// Tests: every start fails with this error code (0 lets starts succeed again).
void FailThreadStartsForTest(int error);

void SleepMilliseconds(unsigned milliseconds);

}  // namespace plat
