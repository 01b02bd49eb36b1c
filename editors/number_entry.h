// The number editor's arithmetic: the text it shows for a value, and the value it stores for
// what the user typed on the keypad ("*" is the decimal point, "#" the minus sign).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct NumberLimits {
    std::uint32_t flags = 0; // 0x20000: the minimum applies; 0x40000: the maximum applies
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
};

struct NumberEntry {
    bool store = false; // false: the text is not a number, nothing is stored
    std::int32_t value = 0;
};

// The typed text with the keypad's "*" as "." and "#" as "-".
std::u16string KeypadNumberText(std::u16string_view typed);

// Converts typed text to the control's scaled integer (value x 10^exponent is what was typed),
// truncating toward zero, then clamps it by the limits that apply. An empty entry is 0.
NumberEntry ConvertNumberEntry(std::u16string_view typed, int exponent, const NumberLimits& limits);

// What the editor shows: an editable number as the bare scaled number the user would type, a
// read-only one as its row shows it.
struct NumberLook {
    std::uint32_t flags = 0;
    std::u16string pattern;
    int decimals = 0;
    int exponent = 0;
};
std::u16string NumberEditorText(std::int32_t value, const NumberLook& look, bool editable);
