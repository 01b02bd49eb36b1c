#include "panel/number_text.h"
#include "platform/utf.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Show(const char16_t* text) { return plat::Utf16ToUtf8(text); }

TEST(NumberText, ScaledValuesInEachStyle) {
    const struct {
        std::int32_t value;
        int style;
        const char16_t* pattern;
        int decimals, exponent;
        bool minus;
        const char16_t* expected;
    } cases[] = {
        {1234, 2, u"%n V", 1, -2, false, u"12.3 V"},
        {1500, 1, u"%%", 0, 0, false, u"1500"},  // style 1 drops only zeros after the point
        {-5, 1, u"%%", 0, -1, false, u"-0.5"},
        {1, 1, u"%%", 0, -7, false, u"0"},       // prints as 0.000000
        {12, 2, u"%%", 0, 3, false, u"12000"},
        {-5, 3, u"%%", 2, -3, false, u"-5.00e-03"},
        {1234567, 4, u"%%", 3, 0, false, u"1.23e+06"},
        {2, 2, u"%%", -1, 0, false, u"2.000000"},  // negative decimals: as if none given
        {2, 7, u"%%", 3, 0, false, u"2"},          // unknown style: style 1
        // Templates: prefix, the placeholder's second character whatever it is, suffix.
        {12, 1, u"x=%v!", 0, 0, true, u"x=-12!"},
        {12, 1, u"Temp", 0, 0, false, u"Temp12"},  // no "%": nothing after the number
        {12, 1, u"a%1b%2c", 0, 0, false, u"a12b%2c"},
    };
    for (const auto& c : cases) {
        char16_t out[64];
        FormatScaledNumber(out, 64, c.value, c.style, c.pattern, c.decimals, c.exponent,
                           c.minus);
        EXPECT_EQ(Show(c.expected), Show(out)) << Show(c.pattern) << " " << c.value;
    }
    char16_t out[64];
    EXPECT_EQ("0.25 s", Show(FormatNumberText(out, 64, 0.25, 1, u"%v s", 0, false)));
}

TEST(NumberText, TheOutputStaysWithinTheRoomGiven) {
    char16_t out[8];
    for (char16_t& c : out) c = u'#';
    FormatScaledNumber(out, 5, 12345678, 1, u"%%", 0, 0, false);
    EXPECT_EQ("1234", Show(out));
    EXPECT_EQ(u'#', out[5]);
    char16_t row[1024];  // the largest value with many decimals still fits a row
    FormatNumberText(row, 1024, 1e308, 2, u"%%", 127, false);
    EXPECT_EQ(309u + 1u + 127u, std::u16string(row).size());
}

}  // namespace
