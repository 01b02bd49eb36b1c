#include "link/link_client.h"
#include "link/password_send.h"
#include "model/control_store.h"
#include "tests/support/recorders.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace testing_support;

namespace {

ControlRecord Make(std::uint16_t type, std::uint32_t key, std::uint32_t flags = 0) {
    ControlRecord r;
    r.type = type;
    r.controlKey = key;
    r.flags = flags;
    return r;
}

class Store : public ::testing::Test {
protected:
    void TearDown() override { TearDownControls(); }
    void Load(std::vector<ControlRecord> records) { SwapInControls(std::move(records)); }
    MessageBoxRecorder boxes;
};

}  // namespace

TEST_F(Store, LookupsOnAnEmptyAndAFullStore) {
    EXPECT_EQ(0, ControlCount());
    EXPECT_EQ(-1, FindControlIndex(1));
    EXPECT_EQ(-1, GetControlType(1));
    EXPECT_EQ(u"", GetControlText(1));
    Load({Make(kTypeButton, 5), Make(kTypeSection, 6), Make(kTypeList, 5)});
    EXPECT_EQ(3, ControlCount());
    EXPECT_EQ(0, FindControlIndex(5)) << "the first match wins";
    EXPECT_EQ(kTypeButton, GetControlType(5));
    EXPECT_EQ(6u, ControlIdAt(1));
}

TEST_F(Store, SetAndGetByType) {
    ControlRecord text = Make(kTypeText, 1);
    text.maxLength = 4;
    text.text.Resize(8);
    ControlRecord blob = Make(kTypeBlob, 11);
    blob.data.assign(4, 0);
    blob.dataCapacity = 4;
    ControlRecord image = Make(kTypeImage, 14);
    image.data.assign(4, 0);
    Load({text, Make(kTypeButton, 2), Make(kTypeCheckBox, 3), Make(kTypeSection, 4),
          Make(kTypeDateTime, 5), Make(kTypeNumber, 6), Make(kTypeList, 9), blob, image,
          Make(kTypeFiles, 12), Make(kTypeUnknown, 13), Make(kTypeMessage, 10)});

    struct Case {
        std::uint32_t id;
        Bytes set;
        std::size_t need;   // size reported without a buffer
        Bytes got;          // what a large buffer receives
        std::uint8_t sendMark;
    } cases[] = {
        {1, {'h', 0, 'i', 0}, 6, {'h', 0, 'i', 0, 0, 0}, 1},
        {2, {255, 9}, 1, {255}, 1},
        {3, {1}, 1, {1}, 1},
        {4, {7}, 1, {7}, 1},
        {5, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 8, {1, 2, 3, 4, 5, 6, 7, 8}, 1},
        {6, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 4, {1, 2, 3, 4}, 1},  // 10 bytes store 4
        {9, {2, 0, 0, 0}, 4, {2, 0, 0, 0}, 1},
        {11, {1, 2, 3, 4, 5, 6}, 4, {1, 2, 3, 4}, 1},  // clamped to the capacity
        {14, {1, 2}, 2, {1, 2}, 1},
        {12, {1}, 0, {}, 1},
        {13, {1}, 99, {}, 0},  // nothing stored, size untouched
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        FindControl(c.id)->valueChanged = 1;
        ASSERT_EQ(0, SetControlValue(c.id, c.set.data(), c.set.size()));
        EXPECT_EQ(0, IsValueChanged(c.id)) << "set clears the device mark";
        EXPECT_EQ(c.sendMark, IsSendPending(c.id));
        FindControl(c.id)->valueChanged = 1;
        std::size_t size = 99;
        ASSERT_EQ(0, GetControlValue(c.id, nullptr, &size));
        EXPECT_EQ(c.need, size);
        EXPECT_EQ(0, IsValueChanged(c.id)) << "get clears the device mark";
        std::uint8_t buffer[32] = {};
        size = sizeof buffer;
        ASSERT_EQ(0, GetControlValue(c.id, buffer, &size));
        EXPECT_EQ(c.got, Bytes(buffer, buffer + c.got.size()));
    }
    std::uint8_t two[2] = {};
    std::size_t size = 2;
    GetControlValue(6, two, &size);
    EXPECT_EQ(Bytes({1, 2}), Bytes(two, two + 2)) << "getting with size 2 copies 2";
}

TEST_F(Store, TextAndRefusedTypes) {
    ControlRecord text = Make(kTypeText, 1);
    text.text.Resize(0);
    ControlRecord pressable = Make(kTypeImage, 14, kFlagVariant);
    pressable.data.assign(4, 0);
    Load({text, Make(kTypeChart, 7), Make(kTypePassword, 8), pressable});
    std::size_t size = 0;
    GetControlValue(1, nullptr, &size);
    EXPECT_EQ(2u, size) << "an empty text still needs its terminator";
    std::uint8_t b = 1;
    EXPECT_EQ(kWrongType, SetControlValue(7, &b, 1));
    EXPECT_EQ(kWrongType, GetControlValue(7, &b, &size));
    EXPECT_EQ(kWrongType, SetControlValue(8, &b, 1));
    EXPECT_EQ(0, IsSendPending(7));
    size = 1;
    EXPECT_EQ(0, GetControlValue(8, &b, &size));
    EXPECT_EQ(0, SetControlValue(14, &b, 1));
    EXPECT_EQ(0, FindControl(14)->dataLength) << "a pressable image stores nothing";
    EXPECT_EQ(1, IsSendPending(14)) << "but is still sent";
    EXPECT_EQ(0, SetControlValue(999, &b, 1)) << "unknown ids are ignored";
}

TEST_F(Store, InvalidTypesRaiseTheirFault) {
    Load({Make(0, 1), Make(15, 2)});
    std::uint8_t b = 0;
    std::size_t size = 1;
    EXPECT_EQ(0, SetControlValue(1, &b, 1));
    EXPECT_TRUE(boxes.HasFault(2963, "tmqbthppcvcomclt", 0));
    EXPECT_EQ(0, GetControlValue(2, &b, &size));
    EXPECT_TRUE(boxes.HasFault(3226, "tmqbthppcvcomclt", 15));
    std::uint32_t flags = 0, style = 0;
    EXPECT_EQ(0, GetControlFlags(2, &flags, &style));
    EXPECT_TRUE(boxes.HasFault(3298, "tmqbthppcvcomclt", 15));
    boxes.Clear();
    LinkClose();
    EXPECT_TRUE(boxes.Has(u"Data transmission error."));
    EXPECT_EQ(2, ControlCount()) << "a corrupt store is left as it is";
    Controls().records.clear();
}

TEST_F(Store, FlagsAndTripleClearTheirMarks) {
    ControlRecord chart = Make(kTypeChart, 7, 0x30000);
    chart.chart.rowCapacity = 10;
    chart.chart.seriesCount = 2;
    chart.chart.trailingWord = 0xFFFFFFFE;
    chart.background = 0xC0C0C0;
    chart.layoutChanged = chart.valueChanged = 1;
    Load({chart, Make(kTypeButton, 2)});
    std::uint32_t flags = 0, style = 0, a = 0, b = 0, c = 0;
    EXPECT_EQ(0, GetControlFlags(7, &flags, &style));
    EXPECT_EQ(0x30000u, flags);
    EXPECT_EQ(0xC0C0C0u, style);
    EXPECT_EQ(0, IsLayoutChanged(7));
    EXPECT_EQ(0, GetTripleValue(7, &a, &b, &c));
    EXPECT_EQ(10u, a);
    EXPECT_EQ(2u, b);
    EXPECT_EQ(0xFFFFFFFEu, c);
    EXPECT_EQ(0, IsValueChanged(7));
    FindControl(2)->valueChanged = 1;
    EXPECT_EQ(kWrongType, GetTripleValue(2, &a, &b, &c));
    EXPECT_EQ(0, IsValueChanged(2)) << "cleared either way";
}

TEST_F(Store, ClearRadioGroupLeavesOtherGroupsAndVariants) {
    ControlRecord a = Make(kTypeCheckBox, 1), b = Make(kTypeCheckBox, 2),
                  other = Make(kTypeCheckBox, 3), variant = Make(kTypeCheckBox, 4, kFlagVariant);
    a.group = b.group = variant.group = 5;
    other.group = 6;
    for (auto* r : {&a, &b, &other, &variant}) r->checkByte = 255;
    Load({a, b, other, variant});
    EXPECT_EQ(0, ClearRadioGroup(5));
    EXPECT_EQ(0, FindControl(1)->checkByte);
    EXPECT_EQ(0, FindControl(2)->checkByte);
    EXPECT_EQ(1, IsSendPending(2));
    EXPECT_EQ(255, FindControl(3)->checkByte);
    EXPECT_EQ(255, FindControl(4)->checkByte);
    EXPECT_EQ(0, IsSendPending(4));
}

TEST_F(Store, PasswordOperationsCheckBeforeSending) {
    Load({Make(kTypePassword, 8), Make(kTypeButton, 2)});
    EXPECT_EQ(kWrongType, ChangePassword(8, u"old", u""));
    EXPECT_EQ(0, IsSendPending(8));
    EXPECT_EQ(kWrongType, SubmitPassword(2, u"x"));
    EXPECT_EQ(0, SubmitPassword(99, u"x"));
    EXPECT_EQ(0, SubmitPassword(8, u"1234")) << "no link: the send fails quietly";
    EXPECT_EQ(nullptr, FindControl(8)->outPassword1) << "the texts are detached afterwards";
    EXPECT_EQ(0, LogOut(8));
}
