#include "editors/datetime_entry.h"
#include "editors/list_selection.h"
#include "editors/number_entry.h"
#include "editors/password_entry.h"
#include "editors/text_entry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

TEST(NumberEntry, KeypadTextScaledTruncatedAndClamped) {
    constexpr std::uint32_t kMin = 0x20000, kMax = 0x40000;
    constexpr std::int32_t kBig = std::numeric_limits<std::int32_t>::max();
    struct Case {
        const char16_t* typed;
        int exponent;
        std::uint32_t flags;
        std::int32_t minimum, maximum;
        bool store;
        std::int32_t value;
    } cases[] = {
        {u"12*5", -1, 0, 0, 0, true, 125}, // "*" is the decimal point
        {u"#3", -1, 0, 0, 0, true, -30},   // "#" the minus sign
        {u"#1299", 2, 0, 0, 0, true, -12}, // integer division truncates toward zero
        {u"0.29", -2, 0, 0, 0, true, 28},  // 0.29 / 0.01 is just below 29
        {u"12*9", 0, 0, 0, 0, true, 12},   // an integer read stops at the point
        {u"", 0, 0, 0, 0, true, 0},        // empty stores 0
        {u"  ", -1, kMin, 5, 0, true, 5},  // ... raised to the minimum
        {u"abc", 0, 0, 0, 0, false, 0},    // not a number: nothing
        {u"500", 0, kMax, 0, 100, true, 100}, // the maximum only with its flag
        {u"500", 0, kMin, 0, 100, true, 500},
        {u"99999999999", 0, 0, 0, 0, true, kBig}, // saturates instead of overflowing
        {u"7", 40, 0, 0, 0, true, 0}, // huge exponents divide to 0
    };
    for (const Case& c : cases) {
        NumberEntry e = ConvertNumberEntry(c.typed, c.exponent, {c.flags, c.minimum, c.maximum});
        const std::u16string typed = c.typed;
        SCOPED_TRACE(std::string(typed.begin(), typed.end()) + " e=" + std::to_string(c.exponent));
        EXPECT_EQ(c.store, e.store);
        EXPECT_EQ(c.store ? c.value : 0, e.value);
    }
}

TEST(NumberEntry, EditableShowsTheBareNumberReadOnlyTheRowsText) {
    NumberLook look{0x100000, u"T=%f C", 1, -1}; // style 2 with one decimal
    EXPECT_EQ(u"12.5", NumberEditorText(125, look, true));
    EXPECT_EQ(u"T=12.5 C", NumberEditorText(125, look, false));
    // What is shown reads back as the same value.
    EXPECT_EQ(-125, ConvertNumberEntry(NumberEditorText(-125, look, true), -1, {}).value);
}

TEST(DateTimeEntry, FieldsClampIntoTheirRangesAndTheMonth) {
    const DateTimeValue start{1, 2, 3, 4, 5, 6, 2005};
    const std::uint32_t all = kDateTimeTimeBits | kDateTimeDateBits;
    struct Case {
        DateTimeFieldTexts texts;
        std::uint32_t flags;
        DateTimeValue expected;
    } cases[] = {
        {{u"59", u"0", u"23", u"31", u"2", u"2024"}, all, {59, 0, 23, 29, 7, 2, 2024}},
        {{u"0", u"0", u"0", u"31", u"2", u"2023"}, all, {0, 0, 0, 28, 7, 2, 2023}},
        {{u"99", u"-4", u"24", u"0", u"0", u"40000"}, all, {59, 0, 23, 1, 7, 1, 32767}},
        {{u"x", u"", u" 7", u"", u"", u""}, kDateTimeTimeBits, {0, 0, 7, 4, 5, 6, 2005}},
        // Only the day offered: it is fitted into the stored month; weekday becomes none.
        {{u"", u"", u"", u"31", u"", u""}, kDateTimeDay, {1, 2, 3, 30, 7, 6, 2005}},
    };
    for (const Case& c : cases) {
        DateTimeValue v = AcceptDateTimeFields(start, c.flags, c.texts, 3);
        EXPECT_EQ(0, std::memcmp(&c.expected, &v, sizeof v))
            << int(v.second) << ' ' << int(v.minute) << ' ' << int(v.hour) << ' ' << int(v.day)
            << ' ' << int(v.weekday) << ' ' << int(v.month) << ' ' << v.year;
    }
}

TEST(DateTimeEntry, WeekdayFromTheListOrNone) {
    const DateTimeValue start{0, 0, 0, 1, 2, 1, 2000};
    const DateTimeFieldTexts none;
    EXPECT_EQ(6, AcceptDateTimeFields(start, kDateTimeWeekday, none, 6).weekday);
    EXPECT_EQ(kNoWeekday, AcceptDateTimeFields(start, kDateTimeWeekday, none, -1).weekday);
    EXPECT_EQ(2, AcceptDateTimeFields(start, kDateTimeHour, none, 6).weekday); // untouched
    const struct {
        std::uint32_t flags;
        bool time, date, weekday;
    } layouts[] = {
        {kDateTimeHour, true, false, false},
        {kDateTimeWeekday, false, false, true},
        {0, false, false, false},
    };
    for (const auto& l : layouts) {
        DateTimeLayout got = PlanDateTimeLayout(l.flags);
        EXPECT_EQ(l.time, got.timeShown) << l.flags;
        EXPECT_EQ(l.date, got.dateShown) << l.flags;
        EXPECT_EQ(l.weekday, got.weekdayShown) << l.flags;
    }
}

TEST(PasswordEntry, CutAndAction) {
    const std::u16string twenty = u"abcdefghijklmnopqrst";
    EXPECT_EQ(u"abcdefghijklmnop", CutPassword(twenty, kPasswordShort));
    EXPECT_EQ(twenty, CutPassword(twenty, 0));
    EXPECT_EQ(33u, CutPassword(twenty + twenty, 0).size());
    EXPECT_EQ(PasswordAction::kLogIn, PlanPasswordAction(0, kPasswordChangeable));
    EXPECT_EQ(PasswordAction::kLogOutNow, PlanPasswordAction(1, 0));
    EXPECT_EQ(PasswordAction::kChange, PlanPasswordAction(255, kPasswordChangeable));
}

TEST(TextEntry, CapacityDialogAndStoredUnits) {
    EXPECT_EQ(9u, TextTypingLimit(TextCapacityChars(20, 0x4)));
    EXPECT_EQ(19u, TextTypingLimit(TextCapacityChars(20, 0)));
    EXPECT_EQ(TextDialogKind::kReadOnly, PlanTextDialog(0x20000));
    EXPECT_EQ(TextDialogKind::kPlain, PlanTextDialog(0x10000));
    EXPECT_EQ(TextDialogKind::kMasked, PlanTextDialog(0x30000));
    EXPECT_EQ((std::vector<char16_t>{u'a', u'b', 0}), TextUnitsToStore(u"abcd", 3));
    EXPECT_TRUE(TextUnitsToStore(u"a", 0).empty());
}

TEST(ListSelection, OutsideTheItemsSelectsNothing) {
    const std::pair<std::int32_t, int> cases[] = {{0, 0}, {2, 2}, {3, -1}, {-1, -1}, {-7, -1}};
    for (auto [value, row] : cases) EXPECT_EQ(row, ListSelectionFor(value, 3)) << value;
    EXPECT_EQ(-1, ListSelectionFor(0, 0));
}
