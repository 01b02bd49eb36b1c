#include "panel/check_toggle.h"
#include "panel/layout_changes.h"
#include "tests/panel/panel_fixture.h"

namespace {

using namespace panel_testing;

ControlRecord Changed(ControlRecord r) {
    r.layoutChanged = 1;
    return r;
}

ControlRecord Message(std::uint32_t id, std::uint32_t flags = 0) {
    return TextControl(id, u"M", u"note", flags, kTypeMessage);
}

using LayoutChanges = PanelTest;

TEST_F(LayoutChanges, VisibilityThatNoLongerMatchesTheRowsRebuilds) {
    struct Case {
        std::uint32_t flags;
        bool hasRow;
        bool rebuild;
    };
    const Case cases[] = {
        {kFlagHidden, true, true},    // hidden but still shown
        {0, false, true},             // shown again
        {0, true, false},
        {kFlagHidden, false, false},
    };
    for (const Case& c : cases) {
        SetControls({Control(1, kTypeButton, u"A"), Changed(Control(2, kTypeButton, u"B", c.flags))});
        std::vector<std::uint32_t> rows = c.hasRow ? std::vector<std::uint32_t>{1, 2}
                                                   : std::vector<std::uint32_t>{1};
        LayoutChangePlan plan = PlanLayoutChanges(rows);
        EXPECT_EQ(c.rebuild, plan.rebuild) << c.flags << " " << c.hasRow;
        EXPECT_TRUE(plan.messageIds.empty());
        EXPECT_EQ(0, IsLayoutChanged(2)) << "the mark is consumed";
    }
}

TEST_F(LayoutChanges, OnlyMarkedControlsWithTheirFlagComeIntoView) {
    SetControls({Control(1, kTypeButton, u"A", kFlagBringIntoView),
                 Changed(Control(2, kTypeButton, u"B")),
                 Changed(Control(3, kTypeButton, u"C", kFlagBringIntoView)),
                 Changed(Control(4, kTypeButton, u"D", kFlagBringIntoView | kFlagHidden))});
    LayoutChangePlan plan = PlanLayoutChanges({1, 2, 3});
    EXPECT_EQ(std::vector<int>{2}, plan.rowsIntoView);
    EXPECT_FALSE(plan.rebuild);

    // A second update without marks changes nothing.
    plan = PlanLayoutChanges({1, 2, 3});
    EXPECT_TRUE(plan.rowsIntoView.empty());
}

TEST_F(LayoutChanges, MessageIsNotedAtThePositionOfTheRowCount) {
    // The last control, nothing before it hidden: the Message itself is announced.
    SetControls({Control(1, kTypeButton, u"A"), Control(2, kTypeButton, u"B"),
                 Changed(Message(3))});
    EXPECT_EQ(std::vector<std::uint32_t>{3}, PlanLayoutChanges({1, 2}).messageIds);

    // Standing first, the slot at the row count holds another control's id.
    SetControls({Changed(Message(3)), Control(1, kTypeButton, u"A"),
                 Control(2, kTypeButton, u"B")});
    EXPECT_EQ(std::vector<std::uint32_t>{2}, PlanLayoutChanges({1, 2}).messageIds);

    // Two Messages share one slot; a hidden Message is not noted.
    SetControls({Control(1, kTypeButton, u"A"), Changed(Message(3)), Changed(Message(4))});
    EXPECT_EQ(std::vector<std::uint32_t>{3}, PlanLayoutChanges({1}).messageIds);
    SetControls({Control(1, kTypeButton, u"A"), Changed(Message(3, kFlagHidden))});
    EXPECT_TRUE(PlanLayoutChanges({1}).messageIds.empty());
}

using CheckToggling = PanelTest;

TEST_F(CheckToggling, LoneGroupedAndFixedBoxes) {
    struct Case {
        ControlRecord box;
        std::uint8_t value;
        int image;
    };
    const Case cases[] = {
        {CheckControl(1, u"A", 0), 255, 3},
        {CheckControl(1, u"A", 7), 0, 4},
        {CheckControl(1, u"A", 0, 2), 255, 5},
        {CheckControl(1, u"A", 255, 2), 255, 5},  // a radio box stays on
        {CheckControl(1, u"A", 0, 0, kFlagVariant), 0, 4},
        {CheckControl(1, u"A", 255, 2, kFlagVariant), 0, 6},
    };
    for (const Case& c : cases) {
        SetControls({c.box});
        CheckToggle t = ToggleCheckControl(1);
        EXPECT_TRUE(t.done);
        EXPECT_EQ(c.value, t.value);
        EXPECT_EQ(c.value, Record(0).checkByte);
        EXPECT_EQ(c.image, t.image);
        EXPECT_EQ(c.box.group, t.group);
        EXPECT_EQ(1, IsSendPending(1));
    }
}

TEST_F(CheckToggling, ARadioBoxClearsTheRestOfItsGroupOnly) {
    SetControls({CheckControl(1, u"A", 255, 4), CheckControl(2, u"B", 0, 4),
                 CheckControl(3, u"C", 255, 5), CheckControl(4, u"D", 255, 4, kFlagVariant)});
    CheckToggle t = ToggleCheckControl(2);
    EXPECT_EQ(4u, t.group);
    EXPECT_EQ(0, Record(0).checkByte);
    EXPECT_EQ(255, Record(1).checkByte);
    EXPECT_EQ(255, Record(2).checkByte) << "another group";
    EXPECT_EQ(255, Record(3).checkByte) << "a fixed box is not cleared";
    EXPECT_EQ(0, IsSendPending(3));
}

TEST_F(CheckToggling, NothingForOtherControls) {
    SetControls({Control(1, kTypeButton, u"A")});
    EXPECT_FALSE(ToggleCheckControl(1).done);
    EXPECT_FALSE(ToggleCheckControl(9).done);
    EXPECT_EQ(0, IsSendPending(1));
}

}  // namespace
