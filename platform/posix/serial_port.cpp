// A tty in raw mode behind a socket handle.
#include "platform/serial_port.h"

#include "platform/posix/fd_wait.h"
#include "platform/socket_table.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace plat {

namespace {

using posix::Clock;
using posix::WaitFor;

bool SpeedOf(std::uint32_t baud, speed_t* speed) {
    static const struct {
        std::uint32_t baud;
        speed_t speed;
    } kSpeeds[] = {{1200, B1200},       {2400, B2400},       {4800, B4800},
                   {9600, B9600},       {19200, B19200},     {38400, B38400},
                   {57600, B57600},     {115200, B115200},   {230400, B230400},
                   {460800, B460800},   {500000, B500000},   {576000, B576000},
                   {921600, B921600},   {1000000, B1000000}, {2000000, B2000000}};
    for (const auto& s : kSpeeds) {
        if (s.baud == baud) {
            *speed = s.speed;
            return true;
        }
    }
    return false;
}

// The port was opened without blocking: a write takes what fits.
int SerialSend(SocketHandle handle, std::intptr_t native, const void* data, int length,
               int timeoutMilliseconds) {
    return posix::WriteWithin(handle, static_cast<int>(native), data, length, timeoutMilliseconds,
                              [](int fd, const void* bytes, unsigned long size) -> long {
                                  return ::write(fd, bytes, size);
                              });
}

// What has arrived, or 0 after the wait; a tty whose other end went away reads as an end of
// file or fails with EIO, and that is an error that stays.
int SerialReceive(SocketHandle handle, std::intptr_t native, void* data, int length) {
    const int fd = static_cast<int>(native);
    const auto deadline = Clock::now() + std::chrono::milliseconds(kSerialReadWaitMs);
    if (!WaitFor(handle, fd, POLLIN, deadline)) return errno == ETIMEDOUT ? 0 : kSocketError;
    ssize_t n;
    do {
        n = ::read(fd, data, static_cast<size_t>(length));
    } while (n < 0 && errno == EINTR);
    if (n > 0) return static_cast<int>(n);
    if (n < 0 && errno == EAGAIN) return 0;
    if (n == 0) errno = EIO;
    return kSocketError;
}

int SerialWaitReadable(SocketHandle handle, std::intptr_t native, int timeoutMilliseconds) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    if (WaitFor(handle, static_cast<int>(native), POLLIN, deadline)) return 1;
    return errno == ETIMEDOUT ? 0 : kSocketError;
}

void SerialRelease(std::intptr_t native) { ::close(static_cast<int>(native)); }

// No wake: a read or write waits in short slices and sees the handle closed.
const socket_table::NativeOps kSerialOps{nullptr, SerialRelease, SerialSend, SerialReceive,
                                         SerialWaitReadable};

}  // namespace

SocketHandle SerialOpen(const std::string& path, std::uint32_t baud) {
    speed_t speed;
    if (!SpeedOf(baud, &speed)) return kInvalidSocket;
    const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return kInvalidSocket;
    termios tty{};
    // Another program on the port would steal its bytes: busy.
    bool ok = ::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::tcgetattr(fd, &tty) == 0;
    if (ok) {
        ::cfmakeraw(&tty);
        tty.c_cflag |= CLOCAL | CREAD;
        tty.c_cflag &= ~static_cast<tcflag_t>(CRTSCTS | CSTOPB | PARENB);
        tty.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
        tty.c_cc[VMIN] = 1;
        tty.c_cc[VTIME] = 0;
        ok = ::cfsetispeed(&tty, speed) == 0 && ::cfsetospeed(&tty, speed) == 0 &&
             ::tcsetattr(fd, TCSANOW, &tty) == 0;
    }
    if (!ok) {
        ::close(fd);
        return kInvalidSocket;
    }
    // A pty has no modem lines: that is no failure.
    int lines = TIOCM_DTR | TIOCM_RTS;
    ::ioctl(fd, TIOCMBIS, &lines);
    ::tcflush(fd, TCIOFLUSH);
    return socket_table::Add(fd, kSerialOps);
}

bool IsSerialPort(SocketHandle handle) { return socket_table::OpsOf(handle) == &kSerialOps; }

std::vector<SerialPortName> ListSerialPorts() { return {}; }

}  // namespace plat
