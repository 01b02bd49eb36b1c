#include "panel/datetime_text.h"

#include "platform/datetime_format.h"

namespace {

constexpr std::size_t kMaxRoom = 1024;

struct Token {
    std::u16string_view text;
    bool time;     // GetTimeFormatW's pictures, else GetDateFormatW's
    bool weekday;  // formatted from the weekday record
};

const Token kTokens[] = {
    {u"%yyyy%", false, false}, {u"%yy%", false, false},  {u"%MMMM%", false, false},
    {u"%MMM%", false, false},  {u"%MM%", false, false},  {u"%M%", false, false},
    {u"%dddd%", false, true},  {u"%ddd%", false, true},  {u"%dd%", false, false},
    {u"%d%", false, false},    {u"%hh%", true, false},   {u"%h%", true, false},
    {u"%HH%", true, false},    {u"%H%", true, false},    {u"%ss%", true, false},
    {u"%s%", true, false},     {u"%mm%", true, false},   {u"%m%", true, false},
    {u"%tt%", true, false},    {u"%t%", true, false},
};

plat::CalendarTime ValueRecord(const DateTimeValue& v) {
    plat::CalendarTime t;
    t.year = v.year;
    t.month = v.month;
    t.dayOfWeek = 1;
    t.day = v.day;
    t.hour = v.hour;
    t.minute = v.minute;
    t.second = static_cast<std::uint16_t>(v.second);  // a negative second stays invalid
    return t;
}

// 2 January 2000 was a Sunday, so day (weekday + 2) of that month falls on the weekday.
plat::CalendarTime WeekdayRecord(const DateTimeValue& v) {
    plat::CalendarTime t;
    t.year = 2000;
    t.month = 1;
    t.day = static_cast<std::uint16_t>(v.weekday + 2);
    t.dayOfWeek = v.weekday;
    t.hour = 12;
    return t;
}

}  // namespace

char16_t* ExpandDateTimeTemplate(char16_t* out, std::size_t room, const DateTimeValue& value,
                                 std::u16string_view pattern) {
    if (room == 0) return out;
    if (room > kMaxRoom) room = kMaxRoom;
    const plat::CalendarTime valueRecord = ValueRecord(value);
    const plat::CalendarTime weekdayRecord = WeekdayRecord(value);
    std::size_t length = 0;
    std::size_t at = 0;
    while (at < pattern.size() && pattern[at] != u'\0') {
        const Token* match = nullptr;
        for (const Token& token : kTokens) {
            if (pattern.substr(at, token.text.size()) == token.text) {
                match = &token;
                break;
            }
        }
        if (!match) {
            if (length + 1 >= room) break;
            out[length++] = pattern[at++];
            continue;
        }
        // The picture is the token without its two "%".
        std::u16string picture(match->text.substr(1, match->text.size() - 2));
        const plat::CalendarTime& record = match->weekday ? weekdayRecord : valueRecord;
        int space = static_cast<int>(room - length);
        int written = match->time
                          ? plat::FormatTimePicture(record, picture.c_str(), out + length, space)
                          : plat::FormatDatePicture(record, picture.c_str(), out + length, space);
        if (written > 0) length += static_cast<std::size_t>(written) - 1;
        at += match->text.size();
    }
    out[length] = u'\0';
    return out;
}
