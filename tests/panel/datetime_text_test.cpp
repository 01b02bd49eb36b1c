// The same tables run natively and under Wine, so the system's formatters and the portable
// ones are held to one set of texts.
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

struct PictureCase {
    plat::CalendarTime time;
    bool isTime;
    const char16_t* picture;
    const char16_t* expected;  // nullptr: the formatter refuses (returns 0)
};

const plat::CalendarTime kAfternoon = Record(2005, 3, 7, 14, 5, 9);
const plat::CalendarTime kMidnight = Record(2009, 12, 25, 0, 0, 0);
const plat::CalendarTime kNoon = Record(2000, 1, 2, 12, 30, 59);

const PictureCase kPictures[] = {
    {kAfternoon, false, u"yyyy", u"2005"},   {kAfternoon, false, u"yy", u"05"},
    {kAfternoon, false, u"MMMM", u"March"},  {kAfternoon, false, u"MMM", u"Mar"},
    {kAfternoon, false, u"MM", u"03"},       {kAfternoon, false, u"M", u"3"},
    {kAfternoon, false, u"dddd", u"Monday"}, {kAfternoon, false, u"ddd", u"Mon"},
    {kAfternoon, false, u"dd", u"07"},       {kAfternoon, false, u"d", u"7"},
    {kAfternoon, true, u"hh", u"02"},        {kAfternoon, true, u"h", u"2"},
    {kAfternoon, true, u"HH", u"14"},        {kAfternoon, true, u"H", u"14"},
    {kAfternoon, true, u"ss", u"09"},        {kAfternoon, true, u"s", u"9"},
    {kAfternoon, true, u"mm", u"05"},        {kAfternoon, true, u"m", u"5"},
    {kAfternoon, true, u"tt", u"PM"},        {kAfternoon, true, u"t", u"P"},
    {kMidnight, true, u"hh", u"12"},         {kMidnight, true, u"h", u"12"},
    {kMidnight, true, u"HH", u"00"},         {kMidnight, true, u"H", u"0"},
    {kMidnight, true, u"tt", u"AM"},         {kMidnight, true, u"t", u"A"},
    {kMidnight, false, u"MMMM", u"December"}, {kMidnight, false, u"dddd", u"Friday"},
    {kMidnight, false, u"yy", u"09"},        {kNoon, true, u"h tt", u"12 PM"},
    {kNoon, false, u"dddd ddd", u"Sunday Sun"},
    {Record(2004, 2, 29, 9, 0, 0), false, u"d MMM yyyy", u"29 Feb 2004"},
    // What is not a valid date or time gives nothing.
    {Record(2005, 13, 7, 14, 5, 9), false, u"dd", nullptr},
    {Record(2005, 0, 7, 14, 5, 9), false, u"dd", nullptr},
    {Record(2005, 3, 0, 14, 5, 9), false, u"dd", nullptr},
    {Record(2005, 4, 31, 14, 5, 9), false, u"dd", nullptr},
    {Record(1600, 3, 7, 14, 5, 9), false, u"yyyy", nullptr},
    {Record(2005, 3, 7, 24, 5, 9), true, u"HH", nullptr},
    {Record(2005, 3, 7, 14, 60, 9), true, u"mm", nullptr},
    {Record(2005, 3, 7, 14, 5, 65535), true, u"ss", nullptr},
    // Each formatter reads only its own half of the record.
    {Record(2005, 13, 7, 14, 5, 9), true, u"HH", u"14"},
    {Record(2005, 3, 7, 25, 5, 9), false, u"dd", u"07"},
};

TEST(DateTimePictures, SystemAndPortableFormattersAgree) {
    for (const PictureCase& c : kPictures) {
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
    char16_t out[16];
    for (int room = 1; room <= 6; ++room) {  // "March" and its terminator need six
        std::fill(std::begin(out), std::end(out), u'#');
        const int n = plat::FormatDatePicture(kAfternoon, u"MMMM", out, room);
        EXPECT_EQ(room < 6 ? 0 : 6, n) << room;
        EXPECT_TRUE(room == 6 || out[0] == u'#') << room;
    }
    EXPECT_EQ("March", Show(out));
    std::fill(std::begin(out), std::end(out), u'#');
    EXPECT_EQ(3, plat::FormatTimePicture(kAfternoon, u"HH", out, 0));
    EXPECT_EQ(u'#', out[0]);
}

DateTimeValue Value(int year, int month, int day, int weekday, int hour, int minute,
                    int second) {
    const auto u = [](int v) { return static_cast<std::uint8_t>(v); };
    return {static_cast<std::int8_t>(second), u(minute), u(hour), u(day),
            u(weekday), u(month), static_cast<std::uint16_t>(year)};
}

struct TemplateCase {
    DateTimeValue value;
    const char16_t* pattern;
    const char16_t* expected;
};

const DateTimeValue kMarch7 = Value(2005, 3, 7, 1, 14, 5, 9);

const TemplateCase kTemplates[] = {
    {kMarch7, u"%dd%/%MM%/%yyyy% %HH%:%mm%", u"07/03/2005 14:05"},
    {kMarch7, u"%dddd% %d% %MMMM%", u"Monday 7 March"},
    {kMarch7, u"%yyyy%%yy%", u"200505"},
    {kMarch7, u"at%h%%t%.", u"at2P."},
    {kMarch7, u"%hh%:%m%:%s% %tt%", u"02:5:9 PM"},
    {kMarch7, u"%ddd%, %M%/%H%", u"Mon, 3/14"},
    {kMarch7, u"%%d%%", u"%7%"},
    {kMarch7, u"%yyy% %x% 100%", u"%yyy% %x% 100%"},  // unknown tokens stay as they are
    {kMarch7, u"%", u"%"},
    {kMarch7, u"%ss", u"%ss"},
    {kMarch7, u"", u""},
    // The weekday is shown as sent, even against the date.
    {Value(2005, 3, 7, 5, 14, 5, 9), u"%dddd%/%ddd% %dd%", u"Friday/Fri 07"},
    {Value(2005, 3, 7, 7, 14, 5, 9), u"%dddd%", u"Sunday"},  // 9 January 2000
    {Value(2005, 3, 7, 30, 14, 5, 9), u"[%dddd%]", u"[]"},
    // An invalid half of the value empties only its own tokens.
    {Value(2005, 13, 7, 1, 14, 5, 9), u"%dd%.%HH%", u".14"},
    {Value(2005, 3, 7, 1, 25, 5, 9), u"%dd%.%HH%", u"07."},
    {Value(2005, 3, 7, 1, 14, 5, -1), u"%mm%:%ss%", u":"},
};

TEST(DateTimeTemplate, TokensAndPlainText) {
    for (const TemplateCase& c : kTemplates) {
        char16_t out[1024];
        ExpandDateTimeTemplate(out, 1024, c.value, c.pattern);
        EXPECT_EQ(Show(c.expected), Show(out)) << "template " << Show(c.pattern);
    }
}

TEST(DateTimeTemplate, EachTokenGetsOnlyTheRoomLeft) {
    struct Case {
        std::size_t padding;
        const char16_t* token;
        const char16_t* tail;  // what follows the padding
    };
    const Case cases[] = {
        {1018, u"%MMMM%", u"March"},  // six left: just fits with its terminator
        {1019, u"%MMMM%", u""},       // five left: nothing
        {1019, u"%MM%!", u"03!"},     // a shorter token still fits, then plain text
        {1022, u"%MM%", u""},
        {1100, u"", u""},             // plain text alone stops at 1023 characters
    };
    for (const Case& c : cases) {
        std::u16string pattern(c.padding, u'x');
        pattern += c.token;
        char16_t out[1024];
        ExpandDateTimeTemplate(out, 1024, kMarch7, pattern);
        std::u16string text(out);
        std::size_t kept = c.padding < 1023 ? c.padding : 1023;
        ASSERT_LE(text.size(), 1023u);
        EXPECT_EQ(std::u16string(kept, u'x'), text.substr(0, kept)) << c.padding;
        EXPECT_EQ(Show(c.tail), Show(text.substr(kept))) << c.padding << Show(c.token);
    }
    // A smaller buffer (a row text's remainder) bounds the tokens the same way.
    char16_t out[10];
    ExpandDateTimeTemplate(out, 10, kMarch7, u"%MMMM% %yyyy%");
    EXPECT_EQ("March ", Show(out));
}

}  // namespace
