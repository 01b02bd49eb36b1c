#include "panel/number_text.h"

#include "model/control_record.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr std::size_t kWorkSize = 1024;

// The printf picture of a style. Narrow printf gives the same digits on every platform
// (mingw builds use the C99-conforming printf), so the text is widened afterwards.
std::string Picture(int style, int decimals) {
    if (style < 2 || style > 4) return "%lf";
    const char* conversion = style == 3 ? "le" : style == 4 ? "lg" : "lf";
    if (decimals < 0) return std::string("%") + conversion;
    char picture[32];
    std::snprintf(picture, sizeof picture, "%%.%ld%s", static_cast<long>(decimals), conversion);
    return picture;
}

void DropTrailingZeros(std::string& number) {
    while (number.size() >= 2 && number.back() == '0') number.pop_back();
    if (!number.empty() && number.back() == '.') number.pop_back();
}

}  // namespace

int NumberStyleFromFlags(std::uint32_t flags) {
    return static_cast<int>((flags & kMaskDataWidth) >> 20) + 1;
}

char16_t* FormatNumberText(char16_t* out, std::size_t room, double value, int style,
                           std::u16string_view pattern, int decimals, bool minusSign) {
    if (room == 0) return out;
    char work[kWorkSize];
    std::snprintf(work, sizeof work, Picture(style, decimals).c_str(), value);
    std::string number(work);
    if (style < 2 || style > 4) DropTrailingZeros(number);

    std::size_t p = pattern.find(u'%');
    if (p == std::u16string_view::npos) p = pattern.size();
    std::u16string text(pattern.substr(0, p));
    if (minusSign) text += u'-';
    text.append(number.begin(), number.end());
    if (p + 2 < pattern.size()) text.append(pattern.substr(p + 2));

    std::size_t length = text.size() < room ? text.size() : room - 1;
    text.copy(out, length);
    out[length] = u'\0';
    return out;
}

char16_t* FormatScaledNumber(char16_t* out, std::size_t room, std::int32_t value, int style,
                             std::u16string_view pattern, int decimals, int exponent,
                             bool minusSign) {
    double scaled = static_cast<double>(value) * std::pow(10.0, exponent);
    return FormatNumberText(out, room, scaled, style, pattern, decimals, minusSign);
}
