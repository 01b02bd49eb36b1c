#include "editors/datetime_entry.h"

#include <algorithm>

namespace {

bool IsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// min(parsed, maximum), raised to the minimum when below it.
int Clamp(long parsed, int minimum, int maximum) {
    long v = std::min(parsed, static_cast<long>(maximum));
    return static_cast<int>(std::max(v, static_cast<long>(minimum)));
}

} // namespace

int DaysInMonth(int month, int year) {
    switch (month) {
    case 2:
        return IsLeapYear(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

long FieldNumber(std::u16string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == u' ' || (text[i] >= u'\t' && text[i] <= u'\r'))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
    long value = 0;
    constexpr long kCeiling = 1000000000L;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        value = std::min(value * 10 + (text[i] - u'0'), kCeiling);
    }
    return negative ? -value : value;
}

DateTimeValue AcceptDateTimeFields(const DateTimeValue& current, std::uint32_t flags,
                                   const DateTimeFieldTexts& texts, int weekdaySelection) {
    DateTimeValue v = current;
    if (flags & kDateTimeSecond)
        v.second = static_cast<std::int8_t>(Clamp(FieldNumber(texts.second), 0, 59));
    if (flags & kDateTimeMinute)
        v.minute = static_cast<std::uint8_t>(Clamp(FieldNumber(texts.minute), 0, 59));
    if (flags & kDateTimeHour)
        v.hour = static_cast<std::uint8_t>(Clamp(FieldNumber(texts.hour), 0, 23));
    if (flags & kDateTimeYear) {
        v.year = static_cast<std::uint16_t>(Clamp(FieldNumber(texts.year), 0, kLatestYear));
    }
    if (flags & kDateTimeMonth)
        v.month = static_cast<std::uint8_t>(Clamp(FieldNumber(texts.month), 1, 12));
    if (flags & kDateTimeDay) {
        // The month and year as just stored, so a day past the month's end is its last day.
        const int last = DaysInMonth(v.month, v.year);
        v.day = static_cast<std::uint8_t>(Clamp(FieldNumber(texts.day), 1, last));
    }
    if (flags & kDateTimeWeekday) {
        // No selection is "no weekday" rather than a byte the device cannot read.
        v.weekday = weekdaySelection >= 0 && weekdaySelection < kNoWeekday
                        ? static_cast<std::uint8_t>(weekdaySelection)
                        : kNoWeekday;
    } else if (flags & kDateTimeDateBits) {
        v.weekday = kNoWeekday;
    }
    return v;
}

DateTimeLayout PlanDateTimeLayout(std::uint32_t flags) {
    DateTimeLayout layout;
    layout.timeShown = (flags & kDateTimeTimeBits) != 0;
    layout.dateShown = (flags & kDateTimeDateBits) != 0;
    layout.weekdayShown = !layout.dateShown && (flags & kDateTimeWeekday) != 0;
    return layout;
}
