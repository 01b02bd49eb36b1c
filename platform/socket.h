// Stream sockets behind handles that are never reused within the process.
//
// Closing a handle wakes a receive blocked on it in another thread, and the handle stays dead
// for good: a worker that still holds an old handle can never read from a later connection,
// even when the system hands the same native socket number to the new one.
#pragma once

#include <cstdint>

namespace plat {

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kInvalidSocket = -1;
inline constexpr int kSocketError = -1;

// Starts and stops the sockets library (Winsock 2.2 on Windows); 0 on success.
int SocketsStartup();
void SocketsCleanup();

// Takes ownership of a connected native socket (a SOCKET or a file descriptor).
SocketHandle SocketAdopt(std::intptr_t nativeSocket);

// Sends every byte within the time: length, or kSocketError when the peer stopped taking
// bytes for that long (the system's timed-out error), the connection failed or the handle was
// closed. A device that never reads can hold a sender only this long, and closing the handle
// from another thread wakes the sender at once.
int SocketSend(SocketHandle socket, const void* data, int length, int timeoutMilliseconds);

// One receive call: bytes received (0 when the peer has shut down or nothing came), or
// kSocketError (also for a closed or unknown handle).
int SocketReceive(SocketHandle socket, void* data, int length);

// Waits until a receive would not block: 1 readable (data, end or error), 0 timed out,
// kSocketError for a closed or unknown handle.
int SocketWaitReadable(SocketHandle socket, int timeoutMilliseconds);

// Shuts the connection down at once and releases the native socket when no call uses it.
void SocketClose(SocketHandle socket);

// Closes with a reset instead of an orderly end: the peer's next receive fails (a device
// that drops the link, or a radio link that breaks).
void SocketReset(SocketHandle socket);

// The last socket error of this thread (errno or WSAGetLastError).
int SocketLastError();

// TCP over IPv4. host is a dotted address or a name. Returns kInvalidSocket when the name
// cannot be resolved or the connection is not made within the time (a silent device and a
// slow name server alike).
SocketHandle SocketConnectTcp(const char* host, std::uint16_t port, int timeoutMilliseconds);

// Connects a native stream socket of any family (a Bluetooth one, say) to the address within
// the time: 0, or the system's error (its timed-out error when the peer did not answer).
int SocketConnectNative(std::intptr_t nativeSocket, const void* address, int addressLength,
                        int timeoutMilliseconds);
// Listens on address:port (port 0: any free port, reported in *boundPort when given).
SocketHandle SocketListenTcp(const char* address, std::uint16_t port, std::uint16_t* boundPort);
// Waits for the next connection; kInvalidSocket when the listener was closed or failed.
SocketHandle SocketAccept(SocketHandle listener);

// Two connected stream sockets (socketpair, or a loopback TCP pair where that is missing).
int SocketPair(SocketHandle pair[2]);

}  // namespace plat
