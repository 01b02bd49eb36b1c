#include "platform/socket.h"

#include "platform/call_within.h"
#include "platform/posix/fd_wait.h"
#include "platform/socket_table.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>

namespace plat {

namespace socket_table {
const int kClosedHandleError = EBADF;
void SetSystemError(int error) { errno = error; }
int SystemError() { return errno; }
}  // namespace socket_table

namespace {

using posix::Clock;
using posix::MillisecondsLeft;

constexpr int kListenResolveMilliseconds = 10000;

void ShutdownBoth(std::intptr_t native) { ::shutdown(static_cast<int>(native), SHUT_RDWR); }
void ReleaseNative(std::intptr_t native) { ::close(static_cast<int>(native)); }

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
    if (!found || !*found) return false;
    out->sin_addr = **found;
    return true;
}

int TcpSend(SocketHandle socket, std::intptr_t native, const void* data, int length,
            int timeoutMilliseconds) {
    return posix::WriteWithin(socket, static_cast<int>(native), data, length, timeoutMilliseconds,
                              [](int fd, const void* bytes, unsigned long size) -> long {
                                  return ::send(fd, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
                              });
}

// Blocks until data, the end or an error; closing the handle shuts the socket down, which
// wakes it.
int TcpReceive(SocketHandle, std::intptr_t native, void* data, int length) {
    ssize_t n;
    do {
        n = ::recv(static_cast<int>(native), data, static_cast<size_t>(length), 0);
    } while (n < 0 && errno == EINTR);
    return n < 0 ? kSocketError : static_cast<int>(n);
}

int TcpWaitReadable(SocketHandle, std::intptr_t native, int timeoutMilliseconds) {
    pollfd p{static_cast<int>(native), POLLIN, 0};
    int rc;
    do {
        rc = ::poll(&p, 1, timeoutMilliseconds);
    } while (rc < 0 && errno == EINTR);
    return rc < 0 ? kSocketError : (rc > 0 ? 1 : 0);
}

const socket_table::NativeOps kTcpOps{ShutdownBoth, ReleaseNative, TcpSend, TcpReceive,
                                      TcpWaitReadable};

SocketHandle AddTcp(int fd) {
    int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    return socket_table::Add(fd, kTcpOps);
}

}  // namespace

int SocketsStartup() {
    // A peer that vanishes must give an error from send, not kill the program.
    std::signal(SIGPIPE, SIG_IGN);
    return 0;
}

void SocketsCleanup() {}

SocketHandle SocketAdopt(std::intptr_t nativeSocket) {
    SocketsStartup();
    return socket_table::Add(nativeSocket, kTcpOps);
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

int SocketConnectNative(std::intptr_t nativeSocket, const void* address, int addressLength,
                        int timeoutMilliseconds) {
    const int fd = static_cast<int>(nativeSocket);
    const int flags = ::fcntl(fd, F_GETFL, 0);
    ::fcntl(fd, F_SETFL, flags | O_NONBLOCK);
    int error = 0;
    if (::connect(fd, static_cast<const sockaddr*>(address), static_cast<socklen_t>(addressLength)) != 0) {
        error = errno;
        if (error == EINPROGRESS) {
            pollfd p{fd, POLLOUT, 0};
            int rc;
            do {
                rc = ::poll(&p, 1, timeoutMilliseconds);
            } while (rc < 0 && errno == EINTR);
            socklen_t size = sizeof error;
            if (rc == 0) {
                error = ETIMEDOUT;
            } else if (rc < 0 || ::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) != 0) {
                error = errno;
            }
        }
    }
    ::fcntl(fd, F_SETFL, flags);
    return error;
}

SocketHandle SocketConnectTcp(const char* host, std::uint16_t port, int timeoutMilliseconds) {
    SocketsStartup();
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    sockaddr_in address;
    if (!ResolveIpv4(host, &address, timeoutMilliseconds)) return kInvalidSocket;
    address.sin_port = htons(port);
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0) return kInvalidSocket;
    if (SocketConnectNative(fd, &address, sizeof address, MillisecondsLeft(deadline)) != 0) {
        ::close(fd);
        return kInvalidSocket;
    }
    return AddTcp(fd);
}

SocketHandle SocketListenTcp(const char* address, std::uint16_t port, std::uint16_t* boundPort) {
    SocketsStartup();
    sockaddr_in local;
    if (!ResolveIpv4(address, &local, kListenResolveMilliseconds)) return kInvalidSocket;
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
    return socket_table::Add(fd, kTcpOps);
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
    return AddTcp(fd);
}

int SocketPair(SocketHandle pair[2]) {
    SocketsStartup();
    int fds[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, fds) != 0) return errno;
    pair[0] = socket_table::Add(fds[0], kTcpOps);
    pair[1] = socket_table::Add(fds[1], kTcpOps);
    return 0;
}

}  // namespace plat
