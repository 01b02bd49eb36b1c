// Left and right on number and list rows.
#include "panel/control_styles.h"
#include "panel/value_step.h"
#include "tests/panel/panel_fixture.h"

namespace panel_testing {
namespace {

TEST(ValueStep, NumbersHoldAtAppliedLimitsListsLoopOrStop) {
    constexpr std::uint32_t kMin = kFlagMinimum, kMax = kFlagMaximum;
    const struct {
        std::int32_t value;
        int d;
        std::uint32_t flags;
        std::int32_t expected;
    } numbers[] = {
        {10, 1, kMax, 10},
        {0, -1, kMin, 0},
        {12, -1, kMax, 10}, // already above: lowered to the maximum
        {std::numeric_limits<std::int32_t>::max(), 1, 0, std::numeric_limits<std::int32_t>::max()},
    };
    for (const auto& n : numbers) {
        EXPECT_EQ(n.expected, StepNumber(n.value, n.d, n.flags, 0, 10)) << n.value << n.d;
    }
    const struct {
        std::int32_t index;
        int d;
        std::int32_t style;
        std::int32_t expected;
    } lists[] = {
        {2, 1, 0, 0},
        {0, -1, 0, 2},
        {2, 1, kStyleListNoLoop, 2},
        {9, -1, kStyleListNoLoop, 2}, // out of range comes back inside
    };
    for (const auto& l : lists) {
        EXPECT_EQ(l.expected, StepListIndex(l.index, l.d, 3, l.style)) << l.index << l.d;
    }
}

TEST_F(PanelTest, StepsStoreAndMarkOnlyStepableControlsThatChange) {
    SetControls({NumberControl(1, u"N", 10, u"%", 0, 0, kFlagVariant | kFlagMaximum),
                 NumberControl(2, u"R", 5, u"%", 0, 0), // read-only
                 NumberControl(3, u"S", 5, u"%", 0, 0, kFlagVariant),
                 ListControl(4, u"L", {u"a", u"b", u"c"}, 2), ListControl(5, u"E", {}, 0)});
    Record(0).maximum = 10;
    SetLayout(3, kSettingLayoutStyle, kStyleNumberNoSpin);
    const struct {
        std::uint32_t id;
        bool up, changed;
    } steps[] = {{1, true, false}, {1, false, true}, {2, true, false},
                 {3, true, false}, {4, true, true},  {5, true, false}};
    for (const auto& s : steps) {
        EXPECT_EQ(s.changed, StepControlValue(s.id, s.up).changed) << s.id;
        EXPECT_EQ(s.changed, IsSendPending(s.id) != 0) << s.id;
    }
    EXPECT_EQ(9, Record(0).rawValue);
    EXPECT_EQ(0, Record(3).selectedIndex);
}

} // namespace
} // namespace panel_testing
