#include "panel/fast_keys.h"
#include "panel/row_plan.h"
#include "tests/panel/panel_fixture.h"

namespace {

using namespace panel_testing;

std::vector<ControlRecord> Buttons(std::uint32_t count) {
    std::vector<ControlRecord> records;
    for (std::uint32_t i = 1; i <= count; ++i) records.push_back(Control(i, kTypeButton, u"B"));
    return records;
}

std::vector<std::uint32_t> Ids(const std::vector<PlannedRow>& rows) {
    std::vector<std::uint32_t> ids;
    for (const PlannedRow& row : rows) ids.push_back(row.controlId);
    return ids;
}

using RowPlan = PanelTest;

TEST_F(RowPlan, HiddenAndMessageControlsGetNoRow) {
    SetControls({Control(1, kTypeButton, u"A"), Control(2, kTypeButton, u"B", kFlagHidden),
                 TextControl(3, u"M", u"hi", 0, kTypeMessage), Control(4, kTypeSection, u"C"),
                 TextControl(5, u"M", u"hi", kFlagHidden, kTypeMessage)});
    std::vector<PlannedRow> rows = PlanControlRows();
    EXPECT_EQ((std::vector<std::uint32_t>{1, 4}), Ids(rows));
    EXPECT_EQ(u" A", rows[0].text) << "the title as the value part";
    EXPECT_EQ(10, rows[1].image);
}

TEST_F(RowPlan, APanelOfOnlyHiddenOrMessageControlsHasNoRows) {
    SetControls({Control(1, kTypeButton, u"A", kFlagHidden),
                 TextControl(2, u"M", u"hi", 0, kTypeMessage)});
    EXPECT_TRUE(PlanControlRows().empty());
    SetControls({});
    EXPECT_TRUE(PlanControlRows().empty());
}

TEST_F(RowPlan, KeysByPositionStopAfterTwelveRows) {
    SetControls(Buttons(14));
    std::vector<PlannedRow> rows = PlanControlRows();
    ASSERT_EQ(14u, rows.size());
    for (int r = 0; r < 14; ++r) EXPECT_EQ(r < 12 ? r + 1 : 0, rows[r].fastKey) << r;

    FastKeyTable table;
    RecordFastKeys(rows, table);
    EXPECT_EQ(12u, table.controlIds[11]);
    EXPECT_EQ(11, table.rows[11]);
    EXPECT_EQ(1u, table.controlIds[0]);
    EXPECT_EQ(0, table.rows[0]);
}

TEST_F(RowPlan, OneCustomKeySwitchesEveryRowToItsOwnSetting) {
    std::vector<ControlRecord> records = Buttons(5);
    records[1].flags |= kFlagHidden;  // a hidden control's key does not count
    SetControls(records);
    SetLayout(2, kSettingLayoutFastKey, 4);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), [&] {
        std::vector<int> keys;
        for (const PlannedRow& row : PlanControlRows()) keys.push_back(row.fastKey);
        return keys;
    }()) << "a hidden control's key leaves keys by position";

    SetLayout(4, kSettingLayoutFastKey, 12);
    SetLayout(5, kSettingLayoutFastKey, 13);  // no such key
    SetLayout(1, kSettingLayoutFastKey, -2);
    std::vector<PlannedRow> rows = PlanControlRows();
    ASSERT_EQ((std::vector<std::uint32_t>{1, 3, 4, 5}), Ids(rows));
    EXPECT_EQ(0, rows[0].fastKey);
    EXPECT_EQ(0, rows[1].fastKey);
    EXPECT_EQ(12, rows[2].fastKey);
    EXPECT_EQ(0, rows[3].fastKey);
}

TEST_F(RowPlan, RecordingKeysLeavesUnassignedEntriesAsTheyWere) {
    SetControls(Buttons(3));
    SetLayout(3, kSettingLayoutFastKey, 9);
    FastKeyTable table;
    AssignFastKey(table, 1, 77, 5);
    AssignFastKey(table, 9, 78, 6);
    RecordFastKeys(PlanControlRows(), table);
    EXPECT_EQ(77u, table.controlIds[0]) << "key 1 is not assigned by custom keys";
    EXPECT_EQ(5, table.rows[0]);
    EXPECT_EQ(3u, table.controlIds[8]);
    EXPECT_EQ(2, table.rows[8]);

    ClearFastKeys(table);
    EXPECT_EQ(0u, table.controlIds[0]);
    EXPECT_EQ(0, table.rows[8]);
}

TEST(FastKeys, LabelsAndOutOfRangeKeys) {
    const char16_t* expected[] = {u"", u"1", u"2", u"3", u"4", u"5", u"6", u"7",
                                  u"8", u"9", u"*", u"0", u"#", u""};
    for (int key = 0; key <= 13; ++key) {
        EXPECT_EQ(std::u16string(expected[key]), FastKeyLabel(key)) << key;
    }
    EXPECT_EQ(u"", std::u16string(FastKeyLabel(-1)));
    FastKeyTable table;
    AssignFastKey(table, 0, 5, 5);
    AssignFastKey(table, 13, 5, 5);
    for (int i = 0; i < kFastKeyCount; ++i) EXPECT_EQ(0u, table.controlIds[i]);
}

TEST(FirstColumn, NarrowerWhenAScrollBarShows) {
    EXPECT_EQ(162, FirstColumnWidth(176, 9));
    EXPECT_EQ(156, FirstColumnWidth(176, 10));
    EXPECT_EQ(162, FirstColumnWidth(176, 0));
}

}  // namespace
