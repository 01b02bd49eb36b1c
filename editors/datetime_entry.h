// The date-time editor's rules: which fields it shows, and the value it stores from what the
// fields hold, each clamped into its range (the day into the length of the month).
#pragma once

#include "model/control_record.h"

#include <cstdint>
#include <string>

// Flag bits of a date-time control: which fields the editor offers.
inline constexpr std::uint32_t kDateTimeHour = 0x80000;
inline constexpr std::uint32_t kDateTimeMinute = 0x40000;
inline constexpr std::uint32_t kDateTimeSecond = 0x20000;
inline constexpr std::uint32_t kDateTimeDay = 0x200000;
inline constexpr std::uint32_t kDateTimeMonth = 0x400000;
inline constexpr std::uint32_t kDateTimeYear = 0x800000;
inline constexpr std::uint32_t kDateTimeWeekday = 0x100000;
inline constexpr std::uint32_t kDateTimeTimeBits =
    kDateTimeHour | kDateTimeMinute | kDateTimeSecond;
inline constexpr std::uint32_t kDateTimeDateBits = kDateTimeDay | kDateTimeMonth | kDateTimeYear;
inline constexpr std::uint8_t kNoWeekday = 7;
inline constexpr int kLatestYear = 32767;

// Days of the month in the Gregorian calendar; a month outside 1..12 counts 31.
int DaysInMonth(int month, int year);

// The leading decimal integer of a field's text, as the C library reads one: spaces, a sign,
// digits; 0 when there is none. Saturates far outside every field's range.
long FieldNumber(std::u16string_view text);

struct DateTimeFieldTexts {
    std::u16string second, minute, hour, day, month, year;
};

// The value "Done" stores: fields whose bit is clear keep the current value's; the weekday is
// the selected one when the weekday bit is set (none selected: 7), else 7 when any date field
// is offered.
DateTimeValue AcceptDateTimeFields(const DateTimeValue& current, std::uint32_t flags,
                                   const DateTimeFieldTexts& texts, int weekdaySelection);

// What the editor shows of each group.
struct DateTimeLayout {
    bool timeShown = false;    // hour, minute and second controls are shown
    bool dateShown = false;    // day, month and year controls are shown
    bool weekdayShown = false; // the weekday list
};
DateTimeLayout PlanDateTimeLayout(std::uint32_t flags);
