#include "platform/codepage.h"

#include <cstring>

namespace plat {

namespace {

// Windows-1252 bytes 0x80 to 0x9F; the five unassigned bytes map to the C1 controls, as
// MultiByteToWideChar does.
constexpr char16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t ByteToWide(unsigned char b) {
    return (b >= 0x80 && b <= 0x9F) ? kHigh[b - 0x80] : static_cast<char16_t>(b);
}

char WideToByte(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (int i = 0; i < 32; ++i) {
        if (kHigh[i] == c) return static_cast<char>(0x80 + i);
    }
    return '?';
}

template <typename From, typename To, typename Map>
int Convert(const From* src, int srcLength, To* dst, int dstLength, Map map) {
    if (!src) return 0;
    size_t count;
    if (srcLength < 0) {
        count = 0;
        while (src[count] != 0) ++count;
        ++count;  // the terminating zero is converted too
    } else {
        count = static_cast<size_t>(srcLength);
    }
    if (count == 0) return 0;
    if (!dst || dstLength == 0) return static_cast<int>(count);
    size_t fits = count < static_cast<size_t>(dstLength) ? count : static_cast<size_t>(dstLength);
    for (size_t i = 0; i < fits; ++i) dst[i] = map(src[i]);
    return fits == count ? static_cast<int>(count) : 0;
}

}  // namespace

int CodePageToWide(const char* src, int srcLength, char16_t* dst, int dstLength) {
    return Convert(src, srcLength, dst, dstLength,
                   [](char b) { return ByteToWide(static_cast<unsigned char>(b)); });
}

int WideToCodePage(const char16_t* src, int srcLength, char* dst, int dstLength) {
    return Convert(src, srcLength, dst, dstLength, WideToByte);
}

}  // namespace plat
