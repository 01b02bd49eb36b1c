// Run natively and under Wine, so the system's formatters and the portable ones agree.
#include "panel/datetime_text.h"
#include "platform/datetime_format.h"
#include "platform/utf.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Show(const std::u16string& text) { return plat::Utf16ToUtf8(text); }

plat::CalendarTime Record(int year, int month, int day, int hour, int minute, int second) {
    const auto u = [](int v) { return static_cast<std::uint16_t>(v); };
    return {u(year), u(month), 0, u(day), u(hour), u(minute), u(second), 0};
}

const plat::CalendarTime kAfternoon = Record(2005, 3, 7, 14, 5, 9);
const plat::CalendarTime kMidnight = Record(2009, 12, 25, 0, 0, 0);

TEST(DateTimePictures, SystemAndPortableFormattersAgree) {
    const struct {
        plat::CalendarTime time;
        bool isTime;
        const char16_t* picture;
        const char16_t* expected;  // nullptr: the formatter refuses (returns 0)
    } cases[] = {
        {kAfternoon, false, u"yyyy yy MMMM MMM MM M", u"2005 05 March Mar 03 3"},
        {kAfternoon, false, u"dddd ddd dd d", u"Monday Mon 07 7"},
        {kAfternoon, true, u"hh h HH H ss s mm m tt t", u"02 2 14 14 09 9 05 5 PM P"},
        {kMidnight, true, u"hh h HH H tt t", u"12 12 00 0 AM A"},
        {Record(2004, 2, 29, 9, 0, 0), false, u"d MMM yyyy", u"29 Feb 2004"},
        // What is not a valid date or time gives nothing.
        {Record(2005, 13, 7, 14, 5, 9), false, u"dd", nullptr},
        {Record(2005, 4, 31, 14, 5, 9), false, u"dd", nullptr},
        {Record(1600, 3, 7, 14, 5, 9), false, u"yyyy", nullptr},
        {Record(2005, 3, 7, 24, 5, 9), true, u"HH", nullptr},
        // Each formatter reads only its own half of the record.
        {Record(2005, 13, 7, 14, 5, 9), true, u"HH", u"14"},
    };
    for (const auto& c : cases) {
        char16_t out[64] = {};
        int n = c.isTime ? plat::FormatTimePicture(c.time, c.picture, out, 64)
                         : plat::FormatDatePicture(c.time, c.picture, out, 64);
        if (!c.expected) {
            EXPECT_EQ(0, n) << Show(c.picture) << " " << c.time.year << "-" << c.time.month;
            continue;
        }
        EXPECT_EQ(Show(c.expected), Show(out)) << Show(c.picture);
        EXPECT_EQ(static_cast<int>(std::u16string(c.expected).size()) + 1, n);
    }
}

TEST(DateTimePictures, RoomTooSmallWritesNothingAndRoomZeroAsksTheSize) {
    char16_t out[16] = {u'#'};
    EXPECT_EQ(0, plat::FormatDatePicture(kAfternoon, u"MMMM", out, 5));  // "March" needs six
    EXPECT_EQ(u'#', out[0]);
    EXPECT_EQ(3, plat::FormatTimePicture(kAfternoon, u"HH", out, 0));
    EXPECT_EQ(u'#', out[0]);
}

DateTimeValue Value(int weekday, int month, int hour, int second) {
    const auto u = [](int v) { return static_cast<std::uint8_t>(v); };
    return {static_cast<std::int8_t>(second), 5, u(hour), 7, u(weekday), u(month), 2005};
}

TEST(DateTimeTemplate, TokensAndPlainText) {
    const DateTimeValue march7 = Value(1, 3, 14, 9);
    const struct {
        DateTimeValue value;
        const char16_t* pattern;
        const char16_t* expected;
    } cases[] = {
        {march7, u"%dd%/%MM%/%yyyy% %HH%:%mm%", u"07/03/2005 14:05"},
        {march7, u"%dddd% %d% %MMMM% %yy%", u"Monday 7 March 05"},
        {march7, u"at%h%%t%. %ss%", u"at2P. 09"},
        {march7, u"%%d%% %yyy% %x% 100% %ss", u"%7% %yyy% %x% 100% %ss"},  // unknown tokens stay
        {Value(5, 3, 14, 9), u"%dddd%/%ddd% %dd%", u"Friday/Fri 07"},  // the weekday as sent
        {Value(30, 3, 14, 9), u"[%dddd%]", u"[]"},
        // An invalid half of the value empties only its own tokens.
        {Value(1, 13, 14, 9), u"%dd%.%HH%", u".14"},
        {Value(1, 3, 14, -1), u"%mm%:%ss%", u":"},
    };
    for (const auto& c : cases) {
        char16_t out[1024];
        ExpandDateTimeTemplate(out, 1024, c.value, c.pattern);
        EXPECT_EQ(Show(c.expected), Show(out)) << "template " << Show(c.pattern);
    }
}

TEST(DateTimeTemplate, EachTokenGetsOnlyTheRoomLeft) {
    char16_t out[10];
    ExpandDateTimeTemplate(out, 10, Value(1, 3, 14, 9), u"%MMMM% %yyyy%");
    EXPECT_EQ("March ", Show(out));
    ExpandDateTimeTemplate(out, 10, Value(1, 3, 14, 9), u"12345%MMMM%!");
    EXPECT_EQ("12345!", Show(out)) << "five left: March does not fit with its terminator";
}

}  // namespace
