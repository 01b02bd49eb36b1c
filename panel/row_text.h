// What one row of the panel list shows for a control: its text and its image.
//
// The row text is " " + up to LayoutTitleLength characters of the title (512 when the setting
// is outside 0..512), then, unless LayoutValueShow is 1, its separator (0 none, 2 " ", 3 ":",
// 4 ": ") and the value part: the text (masked with "*" under flag 0x20000), the date-time or
// number text, the selected list item, or for types without value text the title again.
// Reading a value through the store clears its device-changed mark.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr std::size_t kRowTextSize = 1024;

// Composes the row text under the store's lock into one shared buffer, overwritten by the next
// call; copy it before composing again. An empty string when the control is absent, is a
// Message, or is a list whose selected index is outside its items.
const char16_t* ComposeRowText(std::uint32_t controlId);

// The row's index into the panel's row image list (locked); -1 when the control is absent,
// 0 for a type that never has a row.
int RowImage(std::uint32_t controlId);
