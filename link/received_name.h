// Where a file the device sends may be written. The device gives a full path; only its last
// component is used, and only when it is a plain file name on every system we run on.
#pragma once

#include <string>
#include <string_view>

// The last component of the sent path, or empty when it must not be written: empty, "." or
// "..", a reserved device name (CON, NUL, COM1...), a control character or one of <>:"/\|?*,
// a trailing dot or space, or longer than 255 characters.
std::u16string ReceivedFileName(std::u16string_view sentPath);
