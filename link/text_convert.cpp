#include "link/text_convert.h"

#include "platform/codepage.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <vector>

namespace {
int AsInt(std::size_t n) { return n > INT_MAX ? INT_MAX : static_cast<int>(n); }
}  // namespace

std::u16string WireText(const std::uint8_t* data, std::size_t count, bool utf16) {
    if (count == 0) return {};
    if (utf16) {
        std::u16string text(count / 2, u'\0');
        std::memcpy(text.data(), data, (count / 2) * 2);
        return text;
    }
    const char* src = reinterpret_cast<const char*>(data);
    int units = plat::CodePageToWide(src, AsInt(count), nullptr, 0);
    if (units <= 0) return {};
    std::u16string text(static_cast<std::size_t>(units), u'\0');
    int written = plat::CodePageToWide(src, AsInt(count), text.data(), units);
    text.resize(static_cast<std::size_t>(std::max(written, 0)));
    return text;
}

std::size_t CodePageTextInto(const std::uint8_t* data, std::size_t count, char16_t* out,
                             std::size_t outUnits) {
    std::size_t length = 0;
    while (length < count && data[length] != 0) ++length;
    length = std::min(length, outUnits);
    if (length == 0) return 0;
    int written = plat::CodePageToWide(reinterpret_cast<const char*>(data), AsInt(length), out,
                                       AsInt(outUnits));
    return written > 0 ? static_cast<std::size_t>(written) : 0;
}

void ConvertToCodePage(const char16_t* source, std::size_t k, std::uint8_t* out,
                       std::size_t outSize, bool terminate) {
    if (outSize == 0) return;
    std::size_t limit = terminate ? outSize - 1 : outSize;
    char* dst = reinterpret_cast<char*>(out);
    int n = plat::WideToCodePage(source, AsInt(k), dst, AsInt(limit));
    while (n == 122 && k > 1) {
        --k;
        n = plat::WideToCodePage(source, AsInt(k), dst, AsInt(limit));
    }
    if (terminate) out[std::min(limit, k)] = 0;
}
