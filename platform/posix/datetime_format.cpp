// Date and time pictures without the Windows API: the pictures of GetDateFormatW and
// GetTimeFormatW with the names and AM/PM designators of English (United States).
#include "platform/datetime_format.h"

#include <string>

namespace plat {

namespace {

const char16_t* const kMonthNames[12] = {u"January", u"February", u"March",     u"April",
                                         u"May",     u"June",     u"July",      u"August",
                                         u"September", u"October", u"November", u"December"};
const char16_t* const kMonthShort[12] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                         u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
const char16_t* const kDayNames[7] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                      u"Thursday", u"Friday", u"Saturday"};
const char16_t* const kDayShort[7] = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
    static const int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// The range of dates the Windows formatters accept.
bool IsValidDate(const CalendarTime& t) {
    return t.year >= 1601 && t.year <= 30827 && t.month >= 1 && t.month <= 12 && t.day >= 1 &&
           t.day <= DaysInMonth(t.year, t.month);
}

bool IsValidTime(const CalendarTime& t) {
    return t.hour < 24 && t.minute < 60 && t.second < 60 && t.milliseconds < 1000;
}

// Day of the week from the date (Sakamoto's method); the record's own field is not trusted.
int WeekdayOf(int year, int month, int day) {
    static const int kOffsets[12] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3) year -= 1;
    return (year + year / 4 - year / 100 + year / 400 + kOffsets[month - 1] + day) % 7;
}

void AppendNumber(std::u16string& out, unsigned value, bool twoDigits) {
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value);
    if (twoDigits && digits.size() < 2) digits.insert(digits.begin(), u'0');
    out += digits;
}

// Expands one run of a picture letter; false when the letter is not a field here.
using FieldWriter = bool (*)(const CalendarTime& t, char16_t letter, int count,
                             std::u16string& out);

bool WriteDateField(const CalendarTime& t, char16_t letter, int count, std::u16string& out) {
    switch (letter) {
    case u'd':
        if (count <= 2) {
            AppendNumber(out, t.day, count == 2);
        } else {
            int weekday = WeekdayOf(t.year, t.month, t.day);
            out += count == 3 ? kDayShort[weekday] : kDayNames[weekday];
        }
        return true;
    case u'M':
        if (count <= 2) {
            AppendNumber(out, t.month, count == 2);
        } else {
            out += count == 3 ? kMonthShort[t.month - 1] : kMonthNames[t.month - 1];
        }
        return true;
    case u'y':
        if (count <= 2) {
            AppendNumber(out, t.year % 100, count == 2);
        } else {
            AppendNumber(out, t.year, false);
        }
        return true;
    default:
        return false;
    }
}

bool WriteTimeField(const CalendarTime& t, char16_t letter, int count, std::u16string& out) {
    switch (letter) {
    case u'h':
        AppendNumber(out, t.hour % 12 == 0 ? 12 : t.hour % 12, count >= 2);
        return true;
    case u'H':
        AppendNumber(out, t.hour, count >= 2);
        return true;
    case u'm':
        AppendNumber(out, t.minute, count >= 2);
        return true;
    case u's':
        AppendNumber(out, t.second, count >= 2);
        return true;
    case u't':
        out += t.hour < 12 ? (count >= 2 ? u"AM" : u"A") : (count >= 2 ? u"PM" : u"P");
        return true;
    default:
        return false;
    }
}

int Format(const CalendarTime& t, const char16_t* picture, char16_t* out, int room, bool valid,
           FieldWriter writeField) {
    if (!valid || !picture || room < 0) return 0;
    std::u16string text;
    for (const char16_t* p = picture; *p;) {
        int count = 1;
        while (p[count] == *p) ++count;
        if (!writeField(t, *p, count, text)) text.append(p, static_cast<std::size_t>(count));
        p += count;
    }
    int needed = static_cast<int>(text.size()) + 1;
    if (room == 0) return needed;
    if (!out || needed > room) return 0;
    text.copy(out, text.size());
    out[text.size()] = u'\0';
    return needed;
}

}  // namespace

int FormatDatePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room) {
    return Format(time, picture, out, room, IsValidDate(time), &WriteDateField);
}

int FormatTimePicture(const CalendarTime& time, const char16_t* picture, char16_t* out,
                      int room) {
    return Format(time, picture, out, room, IsValidTime(time), &WriteTimeField);
}

}  // namespace plat
