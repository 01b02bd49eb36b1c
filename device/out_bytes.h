// Building frames on the device side: little-endian words appended to a byte vector, and the
// 20-byte head that starts every frame.
//
// The bytes that a board writes too (frame heads, record heads, items, layouts, date-times,
// settings) come from the microcontroller library's writer, appending here instead of to a
// serial port: one encoder for both device libraries.
#pragma once

#include "TremolanthWriter.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dev {

using Bytes = std::vector<std::uint8_t>;

inline void AppendByte(void* out, std::uint8_t v) { static_cast<Bytes*>(out)->push_back(v); }
// The shared writer, appending to out.
inline TrmWriter WriterInto(Bytes& out) { return TrmWriter(AppendByte, &out); }

inline void Put8(Bytes& out, std::uint8_t v) { out.push_back(v); }
inline void Put16(Bytes& out, std::uint16_t v) { WriterInto(out).u16(v); }
inline void Put32(Bytes& out, std::uint32_t v) { WriterInto(out).u32(v); }
inline void PutBytes(Bytes& out, const Bytes& more) { out.insert(out.end(), more.begin(), more.end()); }
// A byte count, then the bytes: how every length-prefixed field of the link is laid out.
inline void PutCounted(Bytes& out, const Bytes& value) {
    Put32(out, static_cast<std::uint32_t>(value.size()));
    PutBytes(out, value);
}

inline std::uint32_t Read32(const std::uint8_t* p) {
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
           (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
}
inline std::uint16_t Read16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

// Marker, the two header words, type and flags: the first 20 bytes of every frame.
Bytes EncodeFrameHead(std::uint16_t type, std::uint16_t flags);

}  // namespace dev
