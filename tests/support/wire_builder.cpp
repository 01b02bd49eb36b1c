#include "tests/support/wire_builder.h"

namespace testing_support {

Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Bytes U8(std::initializer_list<int> values) {
    Bytes out;
    for (int v : values) out.push_back(static_cast<std::uint8_t>(v));
    return out;
}

Bytes U16(std::uint16_t v) { return {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8)}; }

Bytes U32(std::uint32_t v) {
    return {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8),
            static_cast<std::uint8_t>(v >> 16), static_cast<std::uint8_t>(v >> 24)};
}

Bytes Utf16(const std::u16string& text) {
    Bytes out;
    for (char16_t c : text) {
        out.push_back(static_cast<std::uint8_t>(c));
        out.push_back(static_cast<std::uint8_t>(c >> 8));
    }
    return out;
}

Bytes Ascii(const std::string& text) { return Bytes(text.begin(), text.end()); }

Bytes FrameHead(std::uint16_t type, std::uint16_t flags) {
    return U8({0x48, 0xEF, 0xF0, 0x74, 0x72, 0xEF, 0xE6, 0x66, 0x00, 0x03, 0x00, 0x00, 0x01, 0x00,
               0x01, 0x00}) +
           U16(type) + U16(flags);
}

std::string Hex(const Bytes& bytes) {
    static const char* digits = "0123456789ABCDEF";
    std::string out;
    for (std::uint8_t b : bytes) {
        if (!out.empty()) out += ' ';
        out += digits[b >> 4];
        out += digits[b & 15];
    }
    return out;
}

}  // namespace testing_support

#include <chrono>

namespace testing_support {

Bytes ReadPeer(plat::SocketHandle socket, std::size_t n, int timeoutMilliseconds) {
    Bytes out(n);
    std::size_t got = 0;
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    while (got < n) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                        deadline - std::chrono::steady_clock::now()).count();
        if (left <= 0 || plat::SocketWaitReadable(socket, static_cast<int>(left)) != 1) break;
        int r = plat::SocketReceive(socket, out.data() + got, static_cast<int>(n - got));
        if (r <= 0) break;
        got += static_cast<std::size_t>(r);
    }
    out.resize(got);
    return out;
}

Bytes DrainPeer(plat::SocketHandle socket, int quietMilliseconds) {
    Bytes out;
    std::uint8_t buffer[4096];
    while (plat::SocketWaitReadable(socket, quietMilliseconds) == 1) {
        int r = plat::SocketReceive(socket, buffer, sizeof buffer);
        if (r <= 0) break;
        out.insert(out.end(), buffer, buffer + r);
    }
    return out;
}

bool SendPeer(plat::SocketHandle socket, const Bytes& bytes) {
    return plat::SocketSend(socket, bytes.data(), static_cast<int>(bytes.size()), 10000) !=
           plat::kSocketError;
}

void FillUntilFull(plat::SocketHandle socket) {
    // The system reports room only once a good part of its buffer is free: smaller and smaller
    // pieces take the last of it.
    const Bytes chunk(64 * 1024, 0x5A);
    for (int size : {64 * 1024, 4096, 256, 16, 1}) {
        while (plat::SocketSend(socket, chunk.data(), size, 100) != plat::kSocketError) {
        }
    }
}

SocketPairFixture::SocketPairFixture() {
    plat::SocketHandle pair[2];
    if (plat::SocketPair(pair) == 0) {
        client = pair[0];
        device = pair[1];
    }
}

SocketPairFixture::~SocketPairFixture() {
    CloseClient();
    plat::SocketClose(device);
}

void SocketPairFixture::CloseClient() {
    plat::SocketClose(client);
    client = plat::kInvalidSocket;
}

}  // namespace testing_support
