// Waiting on a descriptor with a deadline, in slices, so that a handle closed meanwhile by
// another thread is noticed even where closing does not wake the wait (a tty).
#pragma once

#include "platform/socket.h"

#include <chrono>

namespace plat::posix {

using Clock = std::chrono::steady_clock;

// Milliseconds until the deadline, 0 once it has passed.
int MillisecondsLeft(Clock::time_point deadline);

// True once the descriptor has one of the events; false when the deadline passed (errno
// ETIMEDOUT), the handle was closed (EBADF) or poll failed.
bool WaitFor(SocketHandle handle, int fd, short events, Clock::time_point deadline);

}  // namespace plat::posix
