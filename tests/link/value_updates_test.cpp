#include "link/decoders.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "tests/support/records.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

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
    std::int32_t Values(const std::vector<Bytes>& items) { return Run(DecodeValueUpdates, items); }
    std::int32_t Layouts(const std::vector<Bytes>& items) { return Run(DecodeLayoutUpdates, items); }
    std::int32_t Run(std::int32_t (*decode)(ReceiveSource&), const std::vector<Bytes>& items) {
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
    struct Case {
        const char* name;
        std::uint32_t key;
        Bytes data;
        std::function<void(const ControlRecord&)> check;
    } cases[] = {
        {"8-bit text is converted up to its zero", kTypeText, Ascii(std::string("ab\0zz", 5)),
         [](const ControlRecord& r) { EXPECT_EQ(u"ab", r.text.Text()); }},
        {"8-bit text longer than m is cut", kTypeText, Ascii("abcdefgh"),
         [](const ControlRecord& r) { EXPECT_EQ(u"abcd", r.text.Text()); }},
        {"button byte", kTypeButton, U8({255, 1}), [](const ControlRecord& r) { EXPECT_EQ(255, r.pressByte); }},
        {"check box with n = 0 keeps its value", kTypeCheckBox, {},
         [](const ControlRecord& r) { EXPECT_EQ(0, r.checkByte); }},
        {"section byte", kTypeSection, U8({1}), [](const ControlRecord& r) { EXPECT_EQ(1, r.sectionByte); }},
        {"date time takes 8 of 12 bytes", kTypeDateTime, U8({1, 2, 3, 4, 5, 6, 0xD5, 0x07, 9, 9, 9, 9}),
         [](const ControlRecord& r) {
             EXPECT_EQ(3, r.dateTime.hour);
             EXPECT_EQ(2005, r.dateTime.year);
         }},
        {"number with n = 2 changes the low bytes", kTypeNumber, U8({0x34, 0x12}),
         [](const ControlRecord& r) { EXPECT_EQ(0x11111234, r.rawValue); }},
        {"list index", kTypeList, U32(2), [](const ControlRecord& r) { EXPECT_EQ(2, r.selectedIndex); }},
        {"password state", kTypePassword, U8({1}), [](const ControlRecord& r) { EXPECT_EQ(1, r.loggedInByte); }},
        {"8-bit message takes m bytes", kTypeMessage, Ascii("Hey you"),
         [](const ControlRecord& r) { EXPECT_EQ(u"Hey", r.text.Text()); }},
        {"blob copy stops at its buffer, length kept", kTypeBlob, U8({1, 2, 3, 4, 5, 6, 7, 8}),
         [](const ControlRecord& r) {
             EXPECT_EQ(Bytes({1, 2, 3, 4, 5, 6}), r.data);
             EXPECT_EQ(6u, r.dataLength);
         }},
        {"chart: table, sample part, then the row counter", kTypeChart,
         U8({1, 2, 3, 4}) + U8({5, 6}) + U8({7, 8}),
         [](const ControlRecord& r) {
             EXPECT_EQ(Bytes({1, 2, 3, 4}), r.chart.table);
             EXPECT_EQ(Bytes({5, 6}), r.chart.textPart);
             EXPECT_EQ(0x11110807u, r.chart.trailingWord);
         }},
        {"chart: a short update only touches the table", kTypeChart, U8({9}),
         [](const ControlRecord& r) {
             EXPECT_EQ(Bytes({9, 0, 0, 0}), r.chart.table);
             EXPECT_EQ(0x11111111u, r.chart.trailingWord);
         }},
    };
    for (const auto& c : cases) {
        SetUp();
        Record(kTypeNumber).rawValue = 0x11111111;
        Record(kTypeChart).chart.trailingWord = 0x11111111;
        ASSERT_EQ(0, Values({Item(c.key, c.data)})) << c.name;
        EXPECT_EQ(1, IsValueChanged(c.key)) << c.name;
        SCOPED_TRACE(c.name);
        c.check(Record(c.key));
        TearDown();
    }
}

TEST_F(Updates, Utf16TextTakesExactlyMBytes) {
    ControlRecord& text = Record(kTypeText);
    text.flags = kFlagUtf16;
    text.maxLength = 6;
    text.text.Resize(6);
    ASSERT_EQ(0, Values({Item(kTypeText, Utf16(u"abcdef"))}));
    EXPECT_EQ(u"abc", Record(kTypeText).text.Text());
    ASSERT_EQ(0, Values({Item(kTypeText, Utf16(u"x"))}));
    EXPECT_EQ(u"x", Record(kTypeText).text.Text()) << "what was not sent reads as zeros";
}

TEST_F(Updates, UnknownKeysAreSkippedAndTheNextItemIsRead) {
    ASSERT_EQ(0, Values({Item(999, U8({1, 2, 3})), Item(kTypeSection, U8({9}))}));
    EXPECT_EQ(9, Record(kTypeSection).sectionByte);
    EXPECT_EQ(0u, boxes.Count());
}

TEST_F(Updates, FilesAndImagesRaiseTheirFaultAndTheMessageGoesOn) {
    ASSERT_EQ(0, Values({Item(kTypeFiles, U8({1})), Item(kTypeImage, U8({1})),
                         Item(kTypeUnknown, U8({1})), Item(kTypeSection, U8({4}))}));
    EXPECT_TRUE(boxes.HasFault(2195, "tmqbthppcvcomclt", 12));
    EXPECT_TRUE(boxes.HasFault(2301, "tmqbthppcvcomclt", 777));
    EXPECT_EQ(2u, boxes.Count());
    EXPECT_EQ(4, Record(kTypeSection).sectionByte);
    EXPECT_EQ(0, IsValueChanged(kTypeImage));
}

TEST_F(Updates, AnInvalidTypeEndsTheMessage) {
    Record(kTypeUnknown).type = 0;
    EXPECT_EQ(-1, Values({Item(kTypeUnknown, U8({1})), Item(kTypeSection, U8({4}))}));
    EXPECT_TRUE(boxes.HasFault(2198, "tmqbthppcvcomclt", 0));
    EXPECT_EQ(0, Record(kTypeSection).sectionByte) << "items after it stay unread";
    Record(kTypeUnknown).type = kTypeUnknown;
}

TEST_F(Updates, AReadFailureIsPassedUp) {
    payload_ = U32(2) + Item(kTypeSection, U8({4})) + U32(kTypeButton) + U32(10) + U8({1});
    MemoryInput input{payload_.data(), payload_.size()};
    ReceiveSource source = MemoryReceiveSource(&input);
    EXPECT_EQ(kLinkClosed, DecodeValueUpdates(source));
    EXPECT_EQ(4, Record(kTypeSection).sectionByte);
}

TEST_F(Updates, LayoutWords) {
    Record(kTypeNumber).flags = 0x10000 | kFlagBringIntoView;
    Record(kTypeNumber).background = 0xFFFFFF;
    ASSERT_EQ(0, Layouts({Item(kTypeNumber, U16(0x0041) + U8({7, 0}) + U32(0x00123456))}));
    EXPECT_EQ(0x10000u | kFlagHidden, Record(kTypeNumber).flags) << "hidden set, bring-into-view cleared";
    EXPECT_EQ(0x123456u, Record(kTypeNumber).background);
    EXPECT_EQ(1, IsLayoutChanged(kTypeNumber));
    EXPECT_EQ(0, IsValueChanged(kTypeNumber));

    ASSERT_EQ(0, Layouts({Item(kTypeNumber, U16(0x0010) + U8({0, 0}) + U32(0xABCDEF))}));
    EXPECT_EQ(0x10000u | kFlagBringIntoView, Record(kTypeNumber).flags);
    EXPECT_EQ(0x123456u, Record(kTypeNumber).background) << "colour only with bit 0x40";

    Record(kTypeMessage).flags = kFlagHidden | 0x20000;
    ASSERT_EQ(0, Layouts({Item(kTypeMessage, U16(0) + U8({3, 0}))}));
    EXPECT_EQ(0x30000u, Record(kTypeMessage).flags) << "the icon comes from byte 2";

    Record(kTypeButton).flags = 0x70000;
    ASSERT_EQ(0, Layouts({Item(kTypeButton, U16(1) + U8({2}))}));
    EXPECT_EQ(0x70000u | kFlagHidden, Record(kTypeButton).flags) << "only messages take the icon";

    ASSERT_EQ(0, Layouts({Item(kTypeUnknown, U16(1)), Item(kTypeFiles, {})}));
    EXPECT_EQ(0, IsLayoutChanged(kTypeUnknown));
    EXPECT_EQ(1, IsLayoutChanged(kTypeFiles)) << "a short item reads as zeros";
}
