#include "platform/socket.h"

#include "platform/call_within.h"
#include "platform/socket_table.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstring>
#include <optional>
#include <string>

namespace plat {

namespace socket_table {
const int kClosedHandleError = WSAENOTSOCK;
void SetSystemError(int error) { WSASetLastError(error); }
int SystemError() { return WSAGetLastError(); }
}  // namespace socket_table

namespace {

constexpr int kWaitSliceMilliseconds = 20;
constexpr int kListenResolveMilliseconds = 10000;

void ShutdownBoth(std::intptr_t native) { ::shutdown(static_cast<SOCKET>(native), SD_BOTH); }
void ReleaseNative(std::intptr_t native) { ::closesocket(static_cast<SOCKET>(native)); }

// A dotted address at once; a name through the resolver, waited for only until the deadline.
bool ResolveIpv4(const char* host, sockaddr_in* out, int timeoutMilliseconds) {
    std::memset(out, 0, sizeof *out);
    out->sin_family = AF_INET;
    if (inet_pton(AF_INET, host, &out->sin_addr) == 1) return true;
    const std::string name = host;
    std::optional<std::optional<in_addr>> found = CallWithin<std::optional<in_addr>>(
        [name]() -> std::optional<in_addr> {
            addrinfo hints{};
            hints.ai_family = AF_INET;
            hints.ai_socktype = SOCK_STREAM;
            addrinfo* result = nullptr;
            if (getaddrinfo(name.c_str(), nullptr, &hints, &result) != 0 || !result) return {};
            in_addr address = reinterpret_cast<sockaddr_in*>(result->ai_addr)->sin_addr;
            freeaddrinfo(result);
            return address;
        },
        timeoutMilliseconds);
    if (!found || !*found) {
        WSASetLastError(WSAHOST_NOT_FOUND);
        return false;
    }
    out->sin_addr = **found;
    return true;
}

using Clock = std::chrono::steady_clock;

int MillisecondsLeft(Clock::time_point deadline) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return left.count() <= 0 ? 0 : static_cast<int>(std::min<long long>(left.count(), INT_MAX));
}

// Waits until the socket can take more bytes, in slices so that a handle closed meanwhile is
// noticed (Winsock does not wake a blocked call on shutdown); false on the deadline
// (WSAETIMEDOUT) or a closed handle.
bool WaitWritableOrClosed(SocketHandle handle, SOCKET s, Clock::time_point deadline) {
    for (;;) {
        if (socket_table::IsClosed(handle)) {
            WSASetLastError(WSAENOTSOCK);
            return false;
        }
        const int left = MillisecondsLeft(deadline);
        if (left == 0) {
            WSASetLastError(WSAETIMEDOUT);
            return false;
        }
        fd_set writable, failed;
        FD_ZERO(&writable);
        FD_ZERO(&failed);
        FD_SET(s, &writable);
        FD_SET(s, &failed);
        const int slice = std::min(left, kWaitSliceMilliseconds);
        timeval tv{0, slice * 1000};
        const int rc = ::select(0, nullptr, &writable, &failed, &tv);
        if (rc == SOCKET_ERROR) return false;
        if (rc > 0) return true;
    }
}

// Sends never block: a full send buffer is waited on with a deadline instead.
void NonBlocking(SOCKET s) {
    u_long on = 1;
    ::ioctlsocket(s, FIONBIO, &on);
}

// Waits until the socket is readable or its handle was closed. Winsock does not wake a
// blocked recv or accept on shutdown, so calls wait here in short slices instead.
bool WaitReadableOrClosed(SocketHandle handle, SOCKET s) {
    for (;;) {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(s, &readable);
        timeval slice{0, 20000};
        int rc = ::select(0, &readable, nullptr, nullptr, &slice);
        if (socket_table::IsClosed(handle)) {
            WSASetLastError(WSAENOTSOCK);
            return false;
        }
        if (rc == SOCKET_ERROR) return false;
        if (rc > 0) return true;
    }
}

void NoDelay(SOCKET s) {
    BOOL one = TRUE;
    ::setsockopt(s, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&one), sizeof one);
}

int TcpSend(SocketHandle socket, std::intptr_t native, const void* data, int length,
            int timeoutMilliseconds) {
    const SOCKET s = static_cast<SOCKET>(native);
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    const auto* bytes = static_cast<const char*>(data);
    int done = 0;
    while (done < length) {
        const int n = ::send(s, bytes + done, length - done, 0);
        if (n != SOCKET_ERROR) {
            done += n;
        } else if (WSAGetLastError() != WSAEWOULDBLOCK ||
                   !WaitWritableOrClosed(socket, s, deadline)) {
            return kSocketError;
        }
    }
    return length;
}

int TcpReceive(SocketHandle socket, std::intptr_t native, void* data, int length) {
    const SOCKET s = static_cast<SOCKET>(native);
    if (!WaitReadableOrClosed(socket, s)) return kSocketError;
    const int n = ::recv(s, static_cast<char*>(data), length, 0);
    return n == SOCKET_ERROR ? kSocketError : n;
}

int TcpWaitReadable(SocketHandle, std::intptr_t native, int timeoutMilliseconds) {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(static_cast<SOCKET>(native), &readable);
    timeval tv{timeoutMilliseconds / 1000, (timeoutMilliseconds % 1000) * 1000};
    const int rc = ::select(0, &readable, nullptr, nullptr, &tv);
    return rc == SOCKET_ERROR ? kSocketError : (rc > 0 ? 1 : 0);
}

const socket_table::NativeOps kTcpOps{ShutdownBoth, ReleaseNative, TcpSend, TcpReceive,
                                      TcpWaitReadable};

}  // namespace

int SocketsStartup() {
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data);
}

void SocketsCleanup() { WSACleanup(); }

SocketHandle SocketAdopt(std::intptr_t nativeSocket) {
    NonBlocking(static_cast<SOCKET>(nativeSocket));
    return socket_table::Add(nativeSocket, kTcpOps);
}

void SocketReset(SocketHandle socket) {
    std::intptr_t native;
    if (socket_table::Acquire(socket, &native)) {
        linger abort{1, 0};
        ::setsockopt(static_cast<SOCKET>(native), SOL_SOCKET, SO_LINGER,
                     reinterpret_cast<const char*>(&abort), sizeof abort);
        socket_table::Release(socket);
    }
    socket_table::CloseWithoutShutdown(socket);
}

int SocketConnectNative(std::intptr_t nativeSocket, const void* address, int addressLength,
                        int timeoutMilliseconds) {
    const SOCKET s = static_cast<SOCKET>(nativeSocket);
    NonBlocking(s);
    if (::connect(s, static_cast<const sockaddr*>(address), addressLength) == 0) return 0;
    const int error = WSAGetLastError();
    if (error != WSAEWOULDBLOCK) return error;
    fd_set writable, failed;
    FD_ZERO(&writable);
    FD_ZERO(&failed);
    FD_SET(s, &writable);
    FD_SET(s, &failed);
    timeval tv{timeoutMilliseconds / 1000, (timeoutMilliseconds % 1000) * 1000};
    const int rc = ::select(0, nullptr, &writable, &failed, &tv);
    if (rc == 0) return WSAETIMEDOUT;
    if (rc == SOCKET_ERROR) return WSAGetLastError();
    int result = 0;
    int size = sizeof result;
    if (::getsockopt(s, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&result), &size) != 0) {
        return WSAGetLastError();
    }
    if (result == 0 && FD_ISSET(s, &failed)) return WSAECONNREFUSED;
    return result;
}

SocketHandle SocketConnectTcp(const char* host, std::uint16_t port, int timeoutMilliseconds) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    sockaddr_in address;
    if (!ResolveIpv4(host, &address, timeoutMilliseconds)) return kInvalidSocket;
    address.sin_port = htons(port);
    SOCKET s = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (s == INVALID_SOCKET) return kInvalidSocket;
    if (int error = SocketConnectNative(static_cast<std::intptr_t>(s), &address, sizeof address,
                                        MillisecondsLeft(deadline))) {
        ::closesocket(s);
        WSASetLastError(error);
        return kInvalidSocket;
    }
    NoDelay(s);
    return SocketAdopt(static_cast<std::intptr_t>(s));
}

SocketHandle SocketListenTcp(const char* address, std::uint16_t port, std::uint16_t* boundPort) {
    sockaddr_in local;
    if (!ResolveIpv4(address, &local, kListenResolveMilliseconds)) return kInvalidSocket;
    local.sin_port = htons(port);
    SOCKET s = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (s == INVALID_SOCKET) return kInvalidSocket;
    if (::bind(s, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0 ||
        ::listen(s, 4) != 0) {
        ::closesocket(s);
        return kInvalidSocket;
    }
    if (boundPort) {
        int len = sizeof local;
        ::getsockname(s, reinterpret_cast<sockaddr*>(&local), &len);
        *boundPort = ntohs(local.sin_port);
    }
    return SocketAdopt(static_cast<std::intptr_t>(s));
}

SocketHandle SocketAccept(SocketHandle listener) {
    std::intptr_t native;
    if (!socket_table::Acquire(listener, &native)) return kInvalidSocket;
    SOCKET s = INVALID_SOCKET;
    if (WaitReadableOrClosed(listener, static_cast<SOCKET>(native))) {
        s = ::accept(static_cast<SOCKET>(native), nullptr, nullptr);
    }
    socket_table::Release(listener);
    if (s == INVALID_SOCKET) return kInvalidSocket;
    NoDelay(s);
    return SocketAdopt(static_cast<std::intptr_t>(s));
}

int SocketPair(SocketHandle pair[2]) {
    std::uint16_t port = 0;
    SocketHandle listener = SocketListenTcp("127.0.0.1", 0, &port);
    if (listener == kInvalidSocket) return WSAGetLastError();
    pair[0] = SocketConnectTcp("127.0.0.1", port, kListenResolveMilliseconds);
    pair[1] = pair[0] == kInvalidSocket ? kInvalidSocket : SocketAccept(listener);
    SocketClose(listener);
    if (pair[1] == kInvalidSocket) {
        SocketClose(pair[0]);
        return WSAECONNREFUSED;
    }
    return 0;
}

}  // namespace plat
