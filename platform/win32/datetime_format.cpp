// Date and time pictures through the system's own formatters, default locale, no flags.
#include "platform/datetime_format.h"

#include <windows.h>

namespace plat {

namespace {

using SystemFormatter = int(WINAPI*)(LCID, DWORD, const SYSTEMTIME*, LPCWSTR, LPWSTR, int);

// The system formatter may leave part of a text that does not fit; formatting into scratch
// space first keeps the caller's buffer untouched then.
int Format(SystemFormatter format, const CalendarTime& t, const char16_t* picture,
           char16_t* out, int room) {
    if (!picture || room < 0) return 0;
    SYSTEMTIME time{t.year, t.month, t.dayOfWeek, t.day, t.hour, t.minute, t.second,
                    t.milliseconds};
    auto* wide = reinterpret_cast<LPCWSTR>(picture);
    int needed = format(LOCALE_USER_DEFAULT, 0, &time, wide, nullptr, 0);
    if (needed <= 0) return 0;
    if (room == 0) return needed;
    if (!out || needed > room) return 0;
    return format(LOCALE_USER_DEFAULT, 0, &time, wide, reinterpret_cast<LPWSTR>(out), room);
}

}  // namespace

int FormatDatePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room) {
    return Format(&GetDateFormatW, time, picture, out, room);
}

int FormatTimePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room) {
    return Format(&GetTimeFormatW, time, picture, out, room);
}

}  // namespace plat
