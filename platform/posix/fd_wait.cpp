#include "platform/posix/fd_wait.h"

#include "platform/socket_table.h"

#include <poll.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace plat::posix {

namespace {
constexpr int kSliceMilliseconds = 50;
}

int MillisecondsLeft(Clock::time_point deadline) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return left.count() <= 0 ? 0 : static_cast<int>(std::min<long long>(left.count(), INT_MAX));
}

bool WaitFor(SocketHandle handle, int fd, short events, Clock::time_point deadline) {
    for (;;) {
        if (socket_table::IsClosed(handle)) {
            errno = EBADF;
            return false;
        }
        const int left = MillisecondsLeft(deadline);
        if (left == 0) {
            errno = ETIMEDOUT;
            return false;
        }
        pollfd p{fd, events, 0};
        const int rc = ::poll(&p, 1, std::min(left, kSliceMilliseconds));
        if (rc > 0) return true;
        if (rc < 0 && errno != EINTR) return false;
    }
}

int WriteWithin(SocketHandle handle, int fd, const void* data, int length,
                int timeoutMilliseconds, WriteSome writeSome) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    const auto* bytes = static_cast<const char*>(data);
    int done = 0;
    while (done < length) {
        const long n = writeSome(fd, bytes + done, static_cast<unsigned long>(length - done));
        if (n > 0) {
            done += static_cast<int>(n);
        } else if (n < 0 && errno == EINTR) {
            continue;
        } else if ((n < 0 && errno != EAGAIN && errno != EWOULDBLOCK) ||
                   !WaitFor(handle, fd, POLLOUT, deadline)) {
            return kSocketError;
        }
    }
    return length;
}

}  // namespace plat::posix
