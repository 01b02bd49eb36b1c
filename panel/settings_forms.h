// What the Control Layout and Pings dialogs show and store: the settings read into the
// dialogs' fields, and the fields read back into settings. Both dialogs keep a number in a
// digits-only edit box of 6 characters, read back as a C library "%ld" would.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Leading blanks, an optional sign, then digits; 0 when there is no number. A number too
// large for 32 bits stops at the limit (a pasted text may be longer than the box allows).
std::int32_t ParseNumberField(std::u16string_view text);
std::u16string NumberFieldText(std::int32_t value);

// The four layout choices of one control (settings 336, 480, 464, 448; absent ones are 0).
struct LayoutChoice {
    std::int32_t style = 0;
    std::int32_t fastKey = 0;
    std::int32_t valueShow = 0;
    std::int32_t titleLength = 0;
};
LayoutChoice ReadLayoutChoice(std::uint32_t controlId);
void SaveLayoutChoice(std::uint32_t controlId, const LayoutChoice& choice);
// A list selection to store: no selection (negative) stores 0.
std::int32_t ChosenIndex(int selection);

// The Pings dialog's fields for a stored interval: 0 (no pings) shows the box cleared and 3.
struct PingsForm {
    bool enabled = true;
    std::u16string seconds;
};
inline constexpr std::int32_t kDefaultPingSeconds = 3;
PingsForm PingsFormFor(std::int32_t storedSeconds);
// The interval to store: 0 unless enabled, else the box's number (0 when it holds none).
std::int32_t PingSecondsFrom(bool enabled, std::u16string_view seconds);
