// Texts as the link carries them. A record whose flag 0x4 is set carries UTF-16LE; any other
// record carries 8-bit text in the system code page. The device library takes and gives UTF-8.
#pragma once

#include "device/out_bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace dev {

// The bytes of one text, with a terminating zero unit when terminate is set.
Bytes TextBytes(std::string_view utf8, bool utf16, bool terminate = false);

// Texts one after another, each with its terminating zero (list items, series names, labels).
Bytes TextListBytes(const std::vector<std::string>& texts, bool utf16);

// A text the client sent, up to its first zero unit or the end of the bytes, as UTF-8.
// An odd trailing byte of UTF-16 is ignored.
std::string TextFromBytes(const std::uint8_t* data, std::size_t size, bool utf16);

}  // namespace dev
