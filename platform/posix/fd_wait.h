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

// Writes every byte with writeSome (a call that never blocks), waiting for room between
// calls: length, or kSocketError when the time ran out, the handle was closed or a write failed.
using WriteSome = long (*)(int fd, const void* data, unsigned long size);
int WriteWithin(SocketHandle handle, int fd, const void* data, int length,
                int timeoutMilliseconds, WriteSome writeSome);

}  // namespace plat::posix
