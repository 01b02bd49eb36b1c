#include "platform/socket.h"

#include "platform/socket_table.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <cstring>

namespace plat {

namespace {

void ShutdownBoth(std::intptr_t native) { ::shutdown(static_cast<SOCKET>(native), SD_BOTH); }
void ReleaseNative(std::intptr_t native) { ::closesocket(static_cast<SOCKET>(native)); }

bool ResolveIpv4(const char* host, sockaddr_in* out) {
    std::memset(out, 0, sizeof *out);
    out->sin_family = AF_INET;
    if (inet_pton(AF_INET, host, &out->sin_addr) == 1) return true;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* result = nullptr;
    if (getaddrinfo(host, nullptr, &hints, &result) != 0 || !result) return false;
    out->sin_addr = reinterpret_cast<sockaddr_in*>(result->ai_addr)->sin_addr;
    freeaddrinfo(result);
    return true;
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

}  // namespace

int SocketsStartup() {
    socket_table::SetNativeOps({ShutdownBoth, ReleaseNative});
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data);
}

void SocketsCleanup() { WSACleanup(); }

SocketHandle SocketAdopt(std::intptr_t nativeSocket) {
    socket_table::SetNativeOps({ShutdownBoth, ReleaseNative});
    return socket_table::Add(nativeSocket);
}

int SocketSend(SocketHandle socket, const void* data, int length) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) {
        WSASetLastError(WSAENOTSOCK);
        return kSocketError;
    }
    int n = ::send(static_cast<SOCKET>(native), static_cast<const char*>(data), length, 0);
    int saved = WSAGetLastError();
    socket_table::Release(socket);
    WSASetLastError(saved);
    return n == SOCKET_ERROR ? kSocketError : n;
}

int SocketReceive(SocketHandle socket, void* data, int length) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) {
        WSASetLastError(WSAENOTSOCK);
        return kSocketError;
    }
    // A reset stays an error, whatever the system reports for later receives.
    if (int noted = socket_table::ReceiveError(socket)) {
        socket_table::Release(socket);
        WSASetLastError(noted);
        return kSocketError;
    }
    int n = SOCKET_ERROR;
    if (WaitReadableOrClosed(socket, static_cast<SOCKET>(native))) {
        n = ::recv(static_cast<SOCKET>(native), static_cast<char*>(data), length, 0);
    }
    int saved = WSAGetLastError();
    if (n == SOCKET_ERROR && saved != 0) socket_table::NoteReceiveError(socket, saved);
    socket_table::Release(socket);
    WSASetLastError(saved);
    return n == SOCKET_ERROR ? kSocketError : n;
}

int SocketWaitReadable(SocketHandle socket, int timeoutMilliseconds) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) return kSocketError;
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(static_cast<SOCKET>(native), &readable);
    timeval tv{timeoutMilliseconds / 1000, (timeoutMilliseconds % 1000) * 1000};
    int rc = ::select(0, &readable, nullptr, nullptr, &tv);
    socket_table::Release(socket);
    return rc == SOCKET_ERROR ? kSocketError : (rc > 0 ? 1 : 0);
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

void SocketClose(SocketHandle socket) {
    if (socket != kInvalidSocket) socket_table::Close(socket);
}

int SocketLastError() { return WSAGetLastError(); }

SocketHandle SocketConnectTcp(const char* host, std::uint16_t port) {
    sockaddr_in address;
    if (!ResolveIpv4(host, &address)) return kInvalidSocket;
    address.sin_port = htons(port);
    SOCKET s = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (s == INVALID_SOCKET) return kInvalidSocket;
    if (::connect(s, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::closesocket(s);
        return kInvalidSocket;
    }
    NoDelay(s);
    return SocketAdopt(static_cast<std::intptr_t>(s));
}

SocketHandle SocketListenTcp(const char* address, std::uint16_t port, std::uint16_t* boundPort) {
    sockaddr_in local;
    if (!ResolveIpv4(address, &local)) return kInvalidSocket;
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
    pair[0] = SocketConnectTcp("127.0.0.1", port);
    pair[1] = pair[0] == kInvalidSocket ? kInvalidSocket : SocketAccept(listener);
    SocketClose(listener);
    if (pair[1] == kInvalidSocket) {
        SocketClose(pair[0]);
        return WSAECONNREFUSED;
    }
    return 0;
}

}  // namespace plat
