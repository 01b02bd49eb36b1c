#include "panel/row_text.h"
#include "tests/panel/panel_fixture.h"

#include <optional>

namespace {

using namespace panel_testing;

std::string Show(const char16_t* text) { return plat::Utf16ToUtf8(text); }

ControlRecord WithByte(ControlRecord r, std::uint8_t value) {
    r.sectionByte = value;
    r.loggedInByte = value;
    return r;
}

ControlRecord DateTimeControl(std::uint32_t id, std::u16string label, std::u16string pattern) {
    ControlRecord r = Control(id, kTypeDateTime, std::move(label));
    r.dateTime = DateTimeValue{0, 5, 14, 7, 1, 3, 2005};
    r.format = std::move(pattern);
    r.hasFormat = true;
    return r;
}

struct RowCase {
    ControlRecord record;
    std::optional<std::int32_t> titleLength;
    std::optional<std::int32_t> valueShow;
    std::optional<std::int32_t> style;
    const char16_t* text;
    int image;
};

using RowText = PanelTest;

TEST_F(RowText, EachTypeWithItsValuePartImageTitleLengthAndSeparator) {
    const std::u16string longTitle(600, u't');
    const std::u16string cut512 = u" " + std::u16string(512, u't');
    const RowCase cases[] = {
        {TextControl(1, u"Name", u"Bob"), 8, 4, {}, u" Name: Bob", 1},
        {TextControl(3, u"Pin", u"abc", kFlagMinimum), 8, 0, {}, u" Pin***", 1},
        {Control(4, kTypeButton, u"Go"), 8, 0, {}, u" GoGo", 2},
        {CheckControl(5, u"Lamp", 255), 8, 2, {}, u" Lamp Lamp", 3},
        {CheckControl(7, u"Red", 1, 3), 8, 1, {}, u" Red", 5},
        {WithByte(Control(10, kTypeSection, u"Run"), 9), 8, 1, {}, u" Run", 11},
        {DateTimeControl(11, u"At", u"%dd%/%MM% %HH%:%mm%"), 8, 4, {}, u" At: 07/03 14:05", 9},
        {NumberControl(12, u"V", 1234, u"%n V", 1, -2, 0x100000), 8, 4, {}, u" V: 12.3 V", 13},
        {NumberControl(13, u"T", 20, u"T=%f", 0, 0, kFlagVariant), 8, 2, 1, u" T T=20", 19},
        {Control(16, kTypeChart, u"Plot"), 8, 3, {}, u" Plot:Plot", 14},
        {WithByte(Control(18, kTypePassword, u"Key"), 1), 8, 1, {}, u" Key", 8},
        {ListControl(19, u"Mode", {u"Off", u"Low", u"High"}, 2), 8, 4, {}, u" Mode: High", 12},
        {ListControl(20, u"Mode", {u"Off", u"Low"}, 0), 8, 4, 2, u" Mode: Off", 20},
        {Control(22, kTypeBlob, u"B"), 8, 0, {}, u" BB", 15},
        {Control(24, kTypeUnknown, u"U"), 8, 0, {}, u" UU", 21},
        {Control(25, kTypeImage, u"I", kFlagVariant), 8, 0, {}, u" II", 2},
        {Control(28, 15, u"Bad"), 8, 0, {}, u"", 0},
        // An index outside the items empties the whole row, unless the value is hidden.
        {ListControl(29, u"Mode", {u"Off", u"On"}, -1), 8, 4, {}, u"", 12},
        {ListControl(32, u"Mode", {u"Off", u"On"}, 2), 8, 1, {}, u" Mode", 12},
        // The title length and the separators.
        {TextControl(33, u"Temperature", u"v"), 4, 3, {}, u" Temp:v", 1},
        {TextControl(34, u"Temperature", u"v"), 0, 4, {}, u" : v", 1},
        {TextControl(36, u"Te", u"v"), 30, 0, {}, u" Tev", 1},           // never padded
        {TextControl(38, longTitle, u""), -1, 1, {}, cut512.c_str(), 1},
    };
    std::vector<ControlRecord> records;
    for (const RowCase& c : cases) records.push_back(c.record);
    SetControls(records);
    for (const RowCase& c : cases) {
        const std::uint32_t id = c.record.controlKey;
        if (c.titleLength) SetLayout(id, kSettingLayoutTitleLength, *c.titleLength);
        if (c.valueShow) SetLayout(id, kSettingLayoutValueShow, *c.valueShow);
        if (c.style) SetLayout(id, kSettingLayoutStyle, *c.style);
        EXPECT_EQ(Show(c.text), Show(ComposeRowText(id))) << "control " << id;
        EXPECT_EQ(c.image, RowImage(id)) << "control " << id;
    }
}

TEST_F(RowText, LongValuesStayInsideTheRowBuffer) {
    ControlRecord text = TextControl(1, u"T", std::u16string(1100, u'a'));
    ControlRecord date = DateTimeControl(2, u"D", std::u16string(1100, u'b') + u"%yyyy%");
    ControlRecord number = NumberControl(3, u"N", 1, std::u16string(1100, u'c'), 0, 0);
    SetControls({text, date, number});
    for (std::uint32_t id : {1u, 2u, 3u}) SetLayout(id, kSettingLayoutTitleLength, 8);
    EXPECT_EQ(1021u, std::u16string(ComposeRowText(1)).size()) << "text part up to 1021";
    EXPECT_EQ(1023u, std::u16string(ComposeRowText(2)).size());
    EXPECT_EQ(1023u, std::u16string(ComposeRowText(3)).size());
}

TEST_F(RowText, ComposingReadsTheValueAndClearsItsChangedMark) {
    ControlRecord r = NumberControl(1, u"N", 5, u"%%", 0, 0);
    r.valueChanged = 1;
    SetControls({r});
    EXPECT_EQ(" 5", Show(ComposeRowText(1))) << "no title length set: no title";
    EXPECT_EQ(0, IsValueChanged(1));
    EXPECT_EQ("", Show(ComposeRowText(99)));
    EXPECT_EQ(-1, RowImage(99));
}

}  // namespace
