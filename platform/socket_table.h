// The table behind plat::SocketHandle, shared by the Windows and POSIX socket and serial code.
// Handles count up from a large base and are never reused; a native handle is released only
// when its handle is closed and no call is using it. Each handle carries the calls of its kind
// (a stream socket, or a serial port standing in for one), so the link reads, writes and closes
// either through the same socket calls.
#pragma once

#include "platform/socket.h"

#include <cstdint>

namespace plat::socket_table {

struct NativeOps {
    void (*wake)(std::intptr_t native);     // wakes blocked calls (a shutdown); may be null
    void (*release)(std::intptr_t native);  // closesocket / close / CloseHandle
    // On a pinned native handle; each leaves the system's error set when it fails.
    int (*send)(SocketHandle handle, std::intptr_t native, const void* data, int length,
                int timeoutMilliseconds);
    int (*receive)(SocketHandle handle, std::intptr_t native, void* data, int length);
    int (*waitReadable)(SocketHandle handle, std::intptr_t native, int timeoutMilliseconds);
};

// The ops live as long as the program (a static table of the body).
SocketHandle Add(std::intptr_t native, const NativeOps& ops);
// Pins the native handle for one call; false for a closed or unknown handle.
bool Acquire(SocketHandle handle, std::intptr_t* native, const NativeOps** ops = nullptr);
void Release(SocketHandle handle);
void Close(SocketHandle handle);
// Releases the native socket without waking calls first (a shutdown would send an orderly
// end before the reset that a zero linger makes).
void CloseWithoutShutdown(SocketHandle handle);
// True once the handle was closed (a pinned call should give up).
bool IsClosed(SocketHandle handle);
// The ops of an open handle, or nullptr.
const NativeOps* OpsOf(SocketHandle handle);

// A receive error stays: once a receive failed (a reset connection, a port that went away),
// every later receive on the handle fails with the same error, where the system would report
// an end of data.
void NoteReceiveError(SocketHandle handle, int error);
// The error noted for the handle, or 0.
int ReceiveError(SocketHandle handle);

// How each body reports errors: errno, or the Winsock error of the thread.
void SetSystemError(int error);
int SystemError();
extern const int kClosedHandleError;  // EBADF, or WSAENOTSOCK

}  // namespace plat::socket_table
