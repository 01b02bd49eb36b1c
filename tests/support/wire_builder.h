// Writing test bytes by hand: little-endian words and UTF-16 texts appended to a byte vector.
// Deliberately dumb: what a frame contains is spelled out in each test.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::uint8_t>;

Bytes operator+(Bytes a, const Bytes& b);
Bytes U8(std::initializer_list<int> values);
Bytes U16(std::uint16_t v);
Bytes U32(std::uint32_t v);
Bytes Utf16(const std::u16string& text);  // UTF-16LE bytes, no terminator
Bytes Ascii(const std::string& text);     // the bytes, no terminator

// The 20 bytes that start every frame.
Bytes FrameHead(std::uint16_t type, std::uint16_t flags);

std::string Hex(const Bytes& bytes);

}  // namespace testing_support

#include "platform/socket.h"

namespace testing_support {

// Reads exactly n bytes from a test peer, waiting at most timeout in all; fewer on timeout.
Bytes ReadPeer(plat::SocketHandle socket, std::size_t n, int timeoutMilliseconds = 5000);
// Whatever arrives within the quiet time (to check that nothing more was sent).
Bytes DrainPeer(plat::SocketHandle socket, int quietMilliseconds = 50);
bool SendPeer(plat::SocketHandle socket, const Bytes& bytes);
// Sends on the socket until not one more byte fits: its peer plays a device that never reads.
void FillUntilFull(plat::SocketHandle socket);

// A connected pair: [0] for the link, [1] for the test's device.
struct SocketPairFixture {
    plat::SocketHandle client = plat::kInvalidSocket;
    plat::SocketHandle device = plat::kInvalidSocket;
    SocketPairFixture();
    ~SocketPairFixture();
    void CloseClient();
};

}  // namespace testing_support
