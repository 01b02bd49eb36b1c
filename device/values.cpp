#include "device/values.h"

#include "device/wire_text.h"

#include <algorithm>

namespace dev {

namespace {

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
    Bytes out;
    WriterInto(out).layout(layout.hidden, layout.bringIntoView, layout.icon,
                           layout.background.has_value(), layout.background.value_or(0));
    return out;
}

}  // namespace dev
