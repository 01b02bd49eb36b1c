#include "platform/socket.h"

#include "platform/socket_table.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace plat {

namespace {

void ShutdownBoth(std::intptr_t native) { ::shutdown(static_cast<int>(native), SHUT_RDWR); }
void ReleaseNative(std::intptr_t native) { ::close(static_cast<int>(native)); }

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

}  // namespace

int SocketsStartup() {
    // A peer that vanishes must give an error from send, not kill the program.
    std::signal(SIGPIPE, SIG_IGN);
    socket_table::SetNativeOps({ShutdownBoth, ReleaseNative});
    return 0;
}

void SocketsCleanup() {}

SocketHandle SocketAdopt(std::intptr_t nativeSocket) {
    SocketsStartup();
    return socket_table::Add(nativeSocket);
}

int SocketSend(SocketHandle socket, const void* data, int length) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) {
        errno = EBADF;
        return kSocketError;
    }
    ssize_t n = ::send(static_cast<int>(native), data, static_cast<size_t>(length), MSG_NOSIGNAL);
    int saved = errno;
    socket_table::Release(socket);
    errno = saved;
    return n < 0 ? kSocketError : static_cast<int>(n);
}

int SocketReceive(SocketHandle socket, void* data, int length) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) {
        errno = EBADF;
        return kSocketError;
    }
    // After a reset the system reports an end of data, which a link does not take as an end.
    if (int noted = socket_table::ReceiveError(socket)) {
        socket_table::Release(socket);
        errno = noted;
        return kSocketError;
    }
    ssize_t n;
    do {
        n = ::recv(static_cast<int>(native), data, static_cast<size_t>(length), 0);
    } while (n < 0 && errno == EINTR);
    int saved = errno;
    if (n < 0) socket_table::NoteReceiveError(socket, saved);
    socket_table::Release(socket);
    errno = saved;
    return n < 0 ? kSocketError : static_cast<int>(n);
}

int SocketWaitReadable(SocketHandle socket, int timeoutMilliseconds) {
    std::intptr_t native;
    if (!socket_table::Acquire(socket, &native)) return kSocketError;
    pollfd p{static_cast<int>(native), POLLIN, 0};
    int rc;
    do {
        rc = ::poll(&p, 1, timeoutMilliseconds);
    } while (rc < 0 && errno == EINTR);
    socket_table::Release(socket);
    return rc < 0 ? kSocketError : (rc > 0 ? 1 : 0);
}

void SocketReset(SocketHandle socket) {
    std::intptr_t native;
    if (socket_table::Acquire(socket, &native)) {
        linger abort{1, 0};
        ::setsockopt(static_cast<int>(native), SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
        socket_table::Release(socket);
    }
    socket_table::CloseWithoutShutdown(socket);
}

void SocketClose(SocketHandle socket) {
    if (socket != kInvalidSocket) socket_table::Close(socket);
}

int SocketLastError() { return errno; }

SocketHandle SocketConnectTcp(const char* host, std::uint16_t port) {
    SocketsStartup();
    sockaddr_in address;
    if (!ResolveIpv4(host, &address)) return kInvalidSocket;
    address.sin_port = htons(port);
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0) return kInvalidSocket;
    if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(fd);
        return kInvalidSocket;
    }
    int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    return socket_table::Add(fd);
}

SocketHandle SocketListenTcp(const char* address, std::uint16_t port, std::uint16_t* boundPort) {
    SocketsStartup();
    sockaddr_in local;
    if (!ResolveIpv4(address, &local)) return kInvalidSocket;
    local.sin_port = htons(port);
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0) return kInvalidSocket;
    int one = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    if (::bind(fd, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0 ||
        ::listen(fd, 4) != 0) {
        ::close(fd);
        return kInvalidSocket;
    }
    if (boundPort) {
        socklen_t len = sizeof local;
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&local), &len);
        *boundPort = ntohs(local.sin_port);
    }
    return socket_table::Add(fd);
}

SocketHandle SocketAccept(SocketHandle listener) {
    std::intptr_t native;
    if (!socket_table::Acquire(listener, &native)) return kInvalidSocket;
    int fd;
    do {
        fd = ::accept(static_cast<int>(native), nullptr, nullptr);
    } while (fd < 0 && errno == EINTR);
    socket_table::Release(listener);
    if (fd < 0) return kInvalidSocket;
    int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    return socket_table::Add(fd);
}

int SocketPair(SocketHandle pair[2]) {
    SocketsStartup();
    int fds[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, fds) != 0) return errno;
    pair[0] = socket_table::Add(fds[0]);
    pair[1] = socket_table::Add(fds[1]);
    return 0;
}

}  // namespace plat
