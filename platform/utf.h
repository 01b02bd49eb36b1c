// UTF-8 and UTF-16 conversions for logs, file names and command lines (not the wire).
#pragma once

#include <string>
#include <string_view>

namespace plat {

std::string Utf16ToUtf8(std::u16string_view text);  // unpaired surrogates become U+FFFD
std::u16string Utf8ToUtf16(std::string_view text);  // malformed bytes become U+FFFD

}  // namespace plat
