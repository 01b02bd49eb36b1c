#include "panel/fast_keys.h"
#include "panel/row_plan.h"
#include "tests/panel/panel_fixture.h"

namespace {

using namespace panel_testing;

// (control id, key) of each planned row.
std::vector<std::pair<std::uint32_t, int>> Keys() {
    std::vector<std::pair<std::uint32_t, int>> keys;
    for (const PlannedRow& row : PlanControlRows()) keys.emplace_back(row.controlId, row.fastKey);
    return keys;
}

using RowPlan = PanelTest;

TEST_F(RowPlan, KeysByPositionStopAfterTwelveRowsUntilACustomKeySwitchesEveryRowToItsOwn) {
    SetControls(Buttons(14));
    auto keys = Keys();
    ASSERT_EQ(14u, keys.size());
    for (int r = 0; r < 14; ++r) EXPECT_EQ(r < 12 ? r + 1 : 0, keys[r].second) << r;

    std::vector<ControlRecord> records = Buttons(5);
    records[1].flags |= kFlagHidden;
    records.push_back(TextControl(6, u"M", u"hi", 0, kTypeMessage));  // no row either
    SetControls(records);
    SetLayout(2, kSettingLayoutFastKey, 4);
    using Keyed = std::vector<std::pair<std::uint32_t, int>>;
    EXPECT_EQ((Keyed{{1, 1}, {3, 2}, {4, 3}, {5, 4}}), Keys()) << "no row nor key when hidden";

    SetLayout(4, kSettingLayoutFastKey, 12);
    SetLayout(5, kSettingLayoutFastKey, 13);  // no such key
    SetLayout(1, kSettingLayoutFastKey, -2);
    EXPECT_EQ((Keyed{{1, 0}, {3, 0}, {4, 12}, {5, 0}}), Keys());
}

TEST_F(RowPlan, RecordingKeysLeavesUnassignedEntriesAsTheyWere) {
    SetControls(Buttons(3));
    SetLayout(3, kSettingLayoutFastKey, 9);
    FastKeyTable table;
    AssignFastKey(table, 1, 77, 5);
    AssignFastKey(table, 9, 78, 6);
    AssignFastKey(table, 13, 79, 7);
    RecordFastKeys(PlanControlRows(), table);
    EXPECT_EQ(77u, table.controlIds[0]);
    EXPECT_EQ(5, table.rows[0]);
    EXPECT_EQ(3u, table.controlIds[8]);
    EXPECT_EQ(2, table.rows[8]);
}
}  // namespace
