#include "device/wire_text.h"

#include "platform/codepage.h"
#include "platform/utf.h"

#include <climits>

namespace dev {

Bytes TextBytes(std::string_view utf8, bool utf16, bool terminate) {
    std::u16string units = plat::Utf8ToUtf16(utf8);
    if (terminate) units.push_back(u'\0');
    Bytes out;
    if (utf16) {
        for (char16_t c : units) Put16(out, static_cast<std::uint16_t>(c));
        return out;
    }
    if (units.empty() || units.size() > INT_MAX) return out;
    const int length = static_cast<int>(units.size());
    const int needed = plat::WideToCodePage(units.data(), length, nullptr, 0);
    if (needed <= 0) return out;
    out.resize(static_cast<std::size_t>(needed));
    const int written = plat::WideToCodePage(units.data(), length,
                                             reinterpret_cast<char*>(out.data()), needed);
    out.resize(written > 0 ? static_cast<std::size_t>(written) : 0);
    return out;
}

Bytes TextListBytes(const std::vector<std::string>& texts, bool utf16) {
    Bytes out;
    for (const std::string& text : texts) PutBytes(out, TextBytes(text, utf16, true));
    return out;
}

std::string TextFromBytes(const std::uint8_t* data, std::size_t size, bool utf16) {
    std::u16string units;
    if (utf16) {
        for (std::size_t i = 0; i + 1 < size; i += 2) {
            char16_t c = static_cast<char16_t>(Read16(data + i));
            if (c == 0) break;
            units.push_back(c);
        }
        return plat::Utf16ToUtf8(units);
    }
    std::size_t length = 0;
    while (length < size && data[length] != 0) ++length;
    if (length == 0 || length > INT_MAX) return {};
    const char* text = reinterpret_cast<const char*>(data);
    const int n = static_cast<int>(length);
    const int needed = plat::CodePageToWide(text, n, nullptr, 0);
    if (needed <= 0) return {};
    units.resize(static_cast<std::size_t>(needed));
    const int written = plat::CodePageToWide(text, n, units.data(), needed);
    units.resize(written > 0 ? static_cast<std::size_t>(written) : 0);
    return plat::Utf16ToUtf8(units);
}

}  // namespace dev
