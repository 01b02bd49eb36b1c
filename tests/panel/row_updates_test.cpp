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
    return Changed(TextControl(id, u"M", u"note", flags, kTypeMessage));
}

using RowUpdates = PanelTest;

TEST_F(RowUpdates, LayoutMarksAreConsumedAndMessagesNotedAtTheRowCount) {
    const ControlRecord a = Control(1, kTypeButton, u"A"), b = Control(2, kTypeButton, u"B");
    struct Case {
        std::vector<ControlRecord> records;
        std::vector<std::uint32_t> rows;
        std::vector<std::uint32_t> noted;
    };
    const Case cases[] = {
        {{a, b, Message(3)}, {1, 2}, {3}},                 // last, nothing hidden before it
        {{Message(3), a, b}, {1, 2}, {2}},                 // first: another control is noted
        {{a, Message(3), Message(4)}, {1}, {3}},           // two Messages share the slot
        {{a, Message(3, kFlagHidden)}, {1}, {}},
        {{a, Changed(Control(2, kTypeButton, u"B", kFlagBringIntoView))}, {1, 2}, {}},
    };
    for (const Case& c : cases) {
        SetControls(c.records);
        EXPECT_EQ(c.noted, PlanLayoutChanges(c.rows).messageIds);
        LayoutChangePlan again = PlanLayoutChanges(c.rows);
        EXPECT_TRUE(again.messageIds.empty() && again.rowsIntoView.empty())
            << "a second update without marks changes nothing";
    }
}

TEST_F(RowUpdates, CheckBoxesToggleByGroupAndVariant) {
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
        SetControls({c.box, CheckControl(2, u"B", 255, 2)});
        CheckToggle t = ToggleCheckControl(1);
        EXPECT_TRUE(t.done);
        EXPECT_EQ(c.value, t.value);
        EXPECT_EQ(c.value, Record(0).checkByte);
        EXPECT_EQ(c.image, t.image);
        EXPECT_EQ(c.box.group == 2 ? 0 : 255, Record(1).checkByte) << "the rest of the group";
        EXPECT_EQ(1, IsSendPending(1));
    }
    SetControls({Control(1, kTypeButton, u"A")});
    EXPECT_FALSE(ToggleCheckControl(1).done);
    EXPECT_FALSE(ToggleCheckControl(9).done);
    EXPECT_EQ(0, IsSendPending(1));
}

}  // namespace
