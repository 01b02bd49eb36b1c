// Locale formatting of one date or time picture ("dd", "MMMM", "HH", "tt"...), with the
// contract of GetDateFormatW / GetTimeFormatW for the user's default locale and no flags.
//
// Both return the characters written including the terminator. With room 0 nothing is
// written and the size the text needs is returned. When the text does not fit in room, or the
// record is not a valid date (date pictures) or time (time pictures), 0 is returned and
// nothing is written. Letters a formatter does not know are copied as they stand.
#pragma once

#include <cstdint>

namespace plat {

// The fields of a SYSTEMTIME, in its order.
struct CalendarTime {
    std::uint16_t year = 0;
    std::uint16_t month = 0;      // 1 to 12
    std::uint16_t dayOfWeek = 0;  // 0 = Sunday
    std::uint16_t day = 0;
    std::uint16_t hour = 0;
    std::uint16_t minute = 0;
    std::uint16_t second = 0;
    std::uint16_t milliseconds = 0;
};

// Date pictures: d dd ddd dddd, M MM MMM MMMM, y yy yyyy.
int FormatDatePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room);
// Time pictures: h hh H HH, m mm, s ss, t tt.
int FormatTimePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room);

}  // namespace plat
