#include "platform/posix/fd_wait.h"

#include "platform/socket_table.h"

#include <poll.h>

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

}  // namespace plat::posix
