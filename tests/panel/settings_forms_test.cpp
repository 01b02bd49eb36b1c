// The settings dialogs' fields and the names their lists offer.
#include "panel/control_styles.h"
#include "panel/settings_forms.h"
#include "model/control_record.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>

namespace {

TEST(SettingsForms, NumberFieldsReadLikePercentLd) {
    const struct {
        std::u16string text;
        std::int32_t value;
    } cases[] = {
        {u"abc", 0}, {u" \t42x9", 42}, {u"-5", -5}, {u"- 5", 0},
        {u"99999999999", std::numeric_limits<std::int32_t>::max()},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.value, ParseNumberField(c.text)) << std::string(c.text.begin(), c.text.end());
    }
    EXPECT_EQ(u"-12", NumberFieldText(-12));
}

TEST(SettingsForms, PingsShowThreeWhenOffAndStoreZeroWithoutANumber) {
    EXPECT_FALSE(PingsFormFor(0).enabled);
    EXPECT_EQ(u"3", PingsFormFor(0).seconds);
    EXPECT_EQ(0, PingSecondsFrom(false, u"9"));
    EXPECT_EQ(0, PingSecondsFrom(true, u""));
    EXPECT_EQ(12, PingSecondsFrom(true, u"12"));
}

TEST(ControlStyles, TheListsOfferTheirNames) {
    EXPECT_EQ(2u, StyleNames(kTypeNumber).size());
    EXPECT_EQ(std::u16string(u"List (No Spin)"), StyleNames(kTypeList)[kStyleListNoSpin]);
    ASSERT_EQ(13u, FastKeyNames().size());
    EXPECT_EQ(std::u16string(u"'#' key"), FastKeyNames()[12]);
    EXPECT_EQ(5u, ValueShowNames().size());
}

}  // namespace
