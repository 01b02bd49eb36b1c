#include "device/values.h"

#include "device/wire_text.h"

#include <algorithm>

namespace dev {

namespace {

constexpr std::uint16_t kLayoutHidden = 0x0001;
constexpr std::uint16_t kLayoutBringIntoView = 0x0010;
constexpr std::uint16_t kLayoutBackground = 0x0040;

// The text in exactly size bytes: cut on a unit boundary before its terminator, zero-padded.
Bytes FixedText(std::string_view utf8, std::size_t size, bool utf16) {
    Bytes text = TextBytes(utf8, utf16);
    const std::size_t unit = utf16 ? 2 : 1;
    std::size_t room = size >= unit ? size - unit : 0;
    room -= room % unit;
    text.resize(std::min(text.size(), room));
    text.resize(size, 0);
    return text;
}

}  // namespace

Bytes TextValue(std::string_view utf8, std::uint32_t maxLength, bool utf16) {
    return FixedText(utf8, maxLength, utf16);
}

Bytes MessageValue(std::string_view utf8, std::uint32_t maxLength, bool utf16) {
    return FixedText(utf8, utf16 ? 2u * maxLength : maxLength, utf16);
}

Bytes ByteValue(std::uint8_t value) { return Bytes{value}; }

Bytes Int32Value(std::int32_t value) {
    Bytes out;
    Put32(out, static_cast<std::uint32_t>(value));
    return out;
}

Bytes DateTimeValue(const DateTime& value) { return EncodeDateTime(value); }

Bytes LayoutValue(const Layout& layout) {
    std::uint16_t word = 0;
    if (layout.hidden) word |= kLayoutHidden;
    if (layout.bringIntoView) word |= kLayoutBringIntoView;
    if (layout.background) word |= kLayoutBackground;
    Bytes out;
    Put16(out, word);
    Put8(out, layout.icon);
    Put8(out, 0);
    if (layout.background) Put32(out, *layout.background);
    return out;
}

}  // namespace dev
