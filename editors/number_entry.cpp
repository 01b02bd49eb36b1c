#include "editors/number_entry.h"

#include "panel/number_text.h"

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace {

constexpr std::int32_t kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax32 = std::numeric_limits<std::int32_t>::max();

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The text as narrow characters for the C conversions; anything beyond ASCII ends it, since
// no number goes on past such a character.
std::string Narrow(std::u16string_view text) {
    std::string out;
    for (char16_t c : text) {
        if (c == 0 || c > 0x7F) break;
        out.push_back(static_cast<char>(c));
    }
    return out;
}

std::int32_t Saturate(double v) {
    if (v <= static_cast<double>(kMin32)) return kMin32;
    if (v >= static_cast<double>(kMax32)) return kMax32;
    return static_cast<std::int32_t>(v); // truncates toward zero
}

std::int32_t Saturate(long long v) {
    if (v < kMin32) return kMin32;
    if (v > kMax32) return kMax32;
    return static_cast<std::int32_t>(v);
}

// 10^n for 0 <= n <= 22, exact in a double.
double PowerOfTen(int n) {
    double p = 1.0;
    for (int i = 0; i < n; ++i) p *= 10.0;
    return p;
}

} // namespace

std::u16string KeypadNumberText(std::u16string_view typed) {
    std::u16string out(typed);
    for (char16_t& c : out) {
        if (c == u'*')
            c = u'.';
        else if (c == u'#')
            c = u'-';
    }
    return out;
}

NumberEntry ConvertNumberEntry(std::u16string_view typed, int exponent,
                               const NumberLimits& limits) {
    const std::string text = Narrow(KeypadNumberText(typed));
    const char* start = text.c_str();
    while (IsSpace(*start)) ++start;
    NumberEntry entry;
    if (*start == '\0') {
        entry.store = true; // nothing typed stores 0
    } else if (exponent < 0) {
        char* end = nullptr;
        const double typedValue = std::strtod(start, &end);
        if (end == start || std::isnan(typedValue)) return entry;
        // Divided by 10^exponent as typed: 0.29 at exponent -2 is just below 29 and stays 28.
        const double scale =
            exponent < -22 ? std::pow(10.0, exponent) : 1.0 / PowerOfTen(-exponent);
        entry.store = true;
        entry.value = Saturate(typedValue / scale);
    } else {
        char* end = nullptr;
        long long typedValue = std::strtoll(start, &end, 10);
        if (end == start) return entry;
        // Above 10^18 every 32-bit value divides to 0.
        if (exponent > 18)
            typedValue = 0;
        else
            typedValue /= static_cast<long long>(PowerOfTen(exponent));
        entry.store = true;
        entry.value = Saturate(typedValue);
    }
    if ((limits.flags & 0x20000) && entry.value < limits.minimum) entry.value = limits.minimum;
    if ((limits.flags & 0x40000) && entry.value > limits.maximum) entry.value = limits.maximum;
    return entry;
}

std::u16string NumberEditorText(std::int32_t value, const NumberLook& look, bool editable) {
    char16_t text[1024] = {};
    if (editable) {
        FormatScaledNumber(text, std::size(text), value, 1, u"%%", 0, look.exponent, false);
    } else {
        FormatScaledNumber(text, std::size(text), value, NumberStyleFromFlags(look.flags),
                           look.pattern, look.decimals, look.exponent, false);
    }
    return text;
}
