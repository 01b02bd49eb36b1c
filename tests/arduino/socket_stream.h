// An Arduino Stream over one end of a local stream socket, for running the device library
// natively against the client's real link. Reads come in at most 64 bytes at a time, as an
// Uno's serial buffer holds them. Written bytes queue as in a serial port's transmit buffer
// (but without a bound) and go out, as far as the peer takes them, whenever the stream is
// asked for input or flushed: the sketch never waits on the client.
#pragma once

#include <Arduino.h>

#include <sys/socket.h>

#include <vector>

class SocketStream : public Stream {
public:
    explicit SocketStream(int fd = -1) : fd_(fd) {}
    void Attach(int fd) {
        fd_ = fd;
        in_.clear();
        at_ = 0;
        out_.clear();
    }
    void Flush() {
        while (!out_.empty()) {
            const ssize_t n = ::send(fd_, out_.data(), out_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (n <= 0) return;
            out_.erase(out_.begin(), out_.begin() + n);
        }
    }
    int fd() const { return fd_; }

    size_t write(uint8_t byte) override {
        out_.push_back(byte);
        return 1;
    }
    int available() override {
        Fill();
        return static_cast<int>(in_.size() - at_);
    }
    int read() override {
        Fill();
        return at_ < in_.size() ? in_[at_++] : -1;
    }
    int peek() override {
        Fill();
        return at_ < in_.size() ? in_[at_] : -1;
    }

private:
    void Fill() {
        Flush();
        if (at_ < in_.size()) return;
        in_.assign(64, 0);
        at_ = 0;
        const ssize_t n = ::recv(fd_, in_.data(), in_.size(), MSG_DONTWAIT);
        in_.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
    }

    int fd_;
    std::vector<uint8_t> in_;
    std::size_t at_ = 0;
    std::vector<uint8_t> out_;
};
