#include "link/decoders.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "tests/link/record_fields.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

// A store of one control of each kind, keyed by its type code.
std::vector<ControlRecord> OneOfEach() {
    std::vector<ControlRecord> records;
    for (std::uint16_t type = 1; type <= 14; ++type) {
        ControlRecord r;
        r.type = type;
        r.controlKey = type;
        records.push_back(r);
    }
    ControlRecord& text = records[kTypeText - 1];
    text.maxLength = 4;
    text.text.Resize(8);  // 8-bit: m characters
    ControlRecord& message = records[kTypeMessage - 1];
    message.maxLength = 3;
    message.text.Resize(6);
    ControlRecord& blob = records[kTypeBlob - 1];
    blob.data.assign(6, 0xEE);
    blob.dataLength = blob.dataCapacity = 6;
    ControlRecord& chart = records[kTypeChart - 1];
    chart.chart.table.assign(4, 0);
    chart.chart.textPart.assign(2, 0);
    return records;
}

Bytes Item(std::uint32_t key, const Bytes& data) {
    return U32(key) + U32(static_cast<std::uint32_t>(data.size())) + data;
}

class Updates : public ::testing::Test {
protected:
    void SetUp() override {
        LinkInit();
        SwapInControls(OneOfEach());
    }
    void TearDown() override { LinkShutdown(); }
    ControlRecord& Record(std::uint32_t key) { return *FindControl(key); }
    DecodeStatus Values(const std::vector<Bytes>& items) { return Run(DecodeValueUpdates, items); }
    DecodeStatus Layouts(const std::vector<Bytes>& items) {
        return Run(DecodeLayoutUpdates, items);
    }
    DecodeStatus Run(DecodeStatus (*decode)(ReceiveSource&), const std::vector<Bytes>& items) {
        payload_ = U32(static_cast<std::uint32_t>(items.size()));
        for (const auto& i : items) payload_ = payload_ + i;
        MemoryInput input{payload_.data(), payload_.size()};
        ReceiveSource source = MemoryReceiveSource(&input);
        return decode(source);
    }
    MessageBoxRecorder boxes;
    Bytes payload_;
};

}  // namespace

TEST_F(Updates, ValuesByType) {
    const struct {
        const char* name;
        std::uint32_t key;
        Bytes data;
        std::string fields;
    } cases[] = {
        {"8-bit text is converted up to its zero", kTypeText, Ascii(std::string("ab\0zz", 5)),
         "type=1 key=1 m=4 text=ab bytes=8"},
        {"8-bit text longer than m is cut", kTypeText, Ascii("abcdefgh"),
         "type=1 key=1 m=4 text=abcd bytes=8"},
        {"button byte", kTypeButton, U8({255, 1}), "type=2 key=2 press=255"},
        {"check box with n = 0 keeps its value", kTypeCheckBox, {}, "type=3 key=3"},
        {"date time takes 8 of 12 bytes", kTypeDateTime,
         U8({1, 2, 3, 4, 5, 6, 0xD5, 0x07, 9, 9, 9, 9}), "type=5 key=5 when=2005-6-4 3:2:1 w5"},
        {"number with n = 2 changes the low bytes", kTypeNumber, U8({0x34, 0x12}),
         "type=6 key=6 raw=286331444"},  // 0x11111234
        {"list index", kTypeList, U32(2), "type=9 key=9 selected=2"},
        {"password state", kTypePassword, U8({1}), "type=8 key=8 in=1"},
        {"8-bit message takes m bytes", kTypeMessage, Ascii("Hey you"),
         "type=10 key=10 m=3 text=Hey bytes=6"},
        {"blob copy stops at its buffer, length kept", kTypeBlob, U8({1, 2, 3, 4, 5, 6, 7, 8}),
         "type=11 key=11 data=[01 02 03 04 05 06] length=6 capacity=6"},
        {"chart: table, sample part, then the row counter", kTypeChart,
         U8({1, 2, 3, 4}) + U8({5, 6}) + U8({7, 8}),
         "type=7 counter=11110807 key=7 table=[01 02 03 04] samples=[05 06]"},
        {"chart: a short update only touches the table", kTypeChart, U8({9}),
         "type=7 counter=11111111 key=7 table=[09 00 00 00] samples=[00 00]"},
    };
    for (const auto& c : cases) {
        SetUp();
        Record(kTypeNumber).rawValue = 0x11111111;
        Record(kTypeChart).chart.trailingWord = 0x11111111;
        ASSERT_EQ(DecodeStatus::kOk, Values({Item(c.key, c.data)})) << c.name;
        EXPECT_EQ(1, IsValueChanged(c.key)) << c.name;
        EXPECT_EQ(c.fields, Fields(Record(c.key))) << c.name;
        TearDown();
    }
}

TEST_F(Updates, FilesAndImagesRaiseTheirFaultUnknownKeysAreSkippedAndTheMessageGoesOn) {
    ASSERT_EQ(DecodeStatus::kOk, Values({Item(kTypeFiles, U8({1})), Item(kTypeImage, U8({1})),
                         Item(999, U8({1, 2, 3})), Item(kTypeUnknown, U8({1})),
                         Item(kTypeSection, U8({4}))}));
    EXPECT_TRUE(boxes.HasFault(2195, "tmqbthppcvcomclt", 12));
    EXPECT_TRUE(boxes.HasFault(2301, "tmqbthppcvcomclt", 777));
    EXPECT_EQ(2u, boxes.Count());
    EXPECT_EQ(4, Record(kTypeSection).sectionByte);
    EXPECT_EQ(0, IsValueChanged(kTypeImage));
}

TEST_F(Updates, AnInvalidTypeEndsTheMessage) {
    Record(kTypeUnknown).type = 0;
    EXPECT_EQ(DecodeStatus::kMalformed, Values({Item(kTypeUnknown, U8({1})), Item(kTypeSection, U8({4}))}));
    EXPECT_TRUE(boxes.HasFault(2198, "tmqbthppcvcomclt", 0));
    EXPECT_EQ(0, Record(kTypeSection).sectionByte) << "items after it stay unread";
    Record(kTypeUnknown).type = kTypeUnknown;
}

TEST_F(Updates, LayoutWords) {
    Record(kTypeNumber).flags = 0x10000 | kFlagBringIntoView;
    Record(kTypeNumber).background = 0xFFFFFF;
    ASSERT_EQ(DecodeStatus::kOk, Layouts({Item(kTypeNumber, U16(0x0041) + U8({7, 0}) + U32(0x00123456))}));
    EXPECT_EQ(0x10000u | kFlagHidden, Record(kTypeNumber).flags)
        << "hidden set, bring-into-view cleared";
    EXPECT_EQ(0x123456u, Record(kTypeNumber).background);
    EXPECT_EQ(1, IsLayoutChanged(kTypeNumber));
    EXPECT_EQ(0, IsValueChanged(kTypeNumber));

    ASSERT_EQ(DecodeStatus::kOk, Layouts({Item(kTypeNumber, U16(0x0010) + U8({0, 0}) + U32(0xABCDEF))}));
    EXPECT_EQ(0x10000u | kFlagBringIntoView, Record(kTypeNumber).flags);
    EXPECT_EQ(0x123456u, Record(kTypeNumber).background) << "colour only with bit 0x40";

    Record(kTypeMessage).flags = kFlagHidden | 0x20000;
    ASSERT_EQ(DecodeStatus::kOk, Layouts({Item(kTypeMessage, U16(0) + U8({3, 0}))}));
    EXPECT_EQ(0x30000u, Record(kTypeMessage).flags) << "the icon comes from byte 2";

    Record(kTypeButton).flags = 0x70000;
    ASSERT_EQ(DecodeStatus::kOk, Layouts({Item(kTypeButton, U16(1) + U8({2}))}));
    EXPECT_EQ(0x70000u | kFlagHidden, Record(kTypeButton).flags) << "only messages take the icon";

    ASSERT_EQ(DecodeStatus::kOk, Layouts({Item(kTypeUnknown, U16(1)), Item(kTypeFiles, {})}));
    EXPECT_EQ(0, IsLayoutChanged(kTypeUnknown));
    EXPECT_EQ(1, IsLayoutChanged(kTypeFiles)) << "a short item reads as zeros";
}
