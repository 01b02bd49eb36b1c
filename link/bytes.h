// Little-endian reads and writes for frames and payloads.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

namespace bytes {

inline std::uint16_t Get16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}
inline std::uint32_t Get32(const std::uint8_t* p) {
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
           (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
}
inline void Put16(std::uint8_t* p, std::uint16_t v) {
    p[0] = static_cast<std::uint8_t>(v);
    p[1] = static_cast<std::uint8_t>(v >> 8);
}
inline void Put32(std::uint8_t* p, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<std::uint8_t>(v >> (8 * i));
}
inline void Append32(std::string& out, std::uint32_t v) {
    std::uint8_t b[4];
    Put32(b, v);
    out.append(reinterpret_cast<const char*>(b), 4);
}

}  // namespace bytes
