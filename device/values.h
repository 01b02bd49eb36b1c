// The data of one item of a value update (type 9) or a layout update (type 16). Each value has
// the form the client reads for the control's type; a value update item is the control's key,
// a byte count and these bytes (messages.h).
#pragma once

#include "device/date_time.h"
#include "device/out_bytes.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace dev {

// Text: exactly maxLength bytes, the text cut to leave room for its terminator and padded with
// zeros (the client copies m bytes whatever the count says).
Bytes TextValue(std::string_view utf8, std::uint32_t maxLength, bool utf16);
// Message: as Text, but a UTF-16 message is read as 2 x maxLength bytes.
Bytes MessageValue(std::string_view utf8, std::uint32_t maxLength, bool utf16);
// Button, check box (255 ticked), section (255 open), password (non-zero logged in), and the
// answer byte of a message.
Bytes ByteValue(std::uint8_t value);
// Number, list index.
Bytes Int32Value(std::int32_t value);
Bytes DateTimeValue(const DateTime& value);

// Layout update data: hidden and bring-into-view bits, a message's icon (0, 2 stop,
// 3 exclamation, 4 question) and, when given, a new background colour.
struct Layout {
    bool hidden = false;
    bool bringIntoView = false;
    std::uint8_t icon = 0;
    std::optional<std::uint32_t> background{};
};
Bytes LayoutValue(const Layout& layout);

}  // namespace dev
