// The table behind plat::SocketHandle, shared by the Windows and POSIX socket code.
// Handles count up from a large base and are never reused; a native socket is released only
// when its handle is closed and no call is using it.
#pragma once

#include "platform/socket.h"

#include <cstdint>

namespace plat::socket_table {

struct NativeOps {
    void (*shutdownBoth)(std::intptr_t native);  // wakes blocked calls
    void (*release)(std::intptr_t native);       // closesocket / close
};

void SetNativeOps(const NativeOps& ops);

SocketHandle Add(std::intptr_t native);
// Pins the native socket for one call; false for a closed or unknown handle.
bool Acquire(SocketHandle handle, std::intptr_t* native);
void Release(SocketHandle handle);
void Close(SocketHandle handle);
// Releases the native socket without shutting it down first (a shutdown would send an
// orderly end before the reset that a zero linger makes).
void CloseWithoutShutdown(SocketHandle handle);
// True once the handle was closed (a pinned call should give up).
bool IsClosed(SocketHandle handle);

// A receive error stays: once a receive failed (a reset connection), every later receive on
// the handle fails with the same error, where the system would report an end of data.
void NoteReceiveError(SocketHandle handle, int error);
// The error noted for the handle, or 0.
int ReceiveError(SocketHandle handle);

}  // namespace plat::socket_table
