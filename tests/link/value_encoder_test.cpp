#include "link/value_encoder.h"
#include "model/control_store.h"
#include "tests/support/link_fixture.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace testing_support;

namespace {

class Encoding : public LinkTest {
protected:
    void SetUp() override {
        LinkTest::SetUp();
        ASSERT_EQ(0, LinkStart(pair.client, kWindow, kResultMessage));
        ASSERT_EQ(FrameHead(1, 2), ReadPeer(pair.device, 20));
        Controls().records.reserve(32);  // Add hands out references
    }
    ControlRecord& Add(std::uint16_t type, std::uint32_t key, std::uint32_t flags = 0) {
        ControlsHold hold;
        ControlRecord r;
        r.type = type;
        r.controlKey = key;
        r.flags = flags;
        r.sendPending = 1;
        Controls().records.push_back(r);
        return Controls().records.back();
    }
    void Clear() {
        ControlsHold hold;
        Controls().records.clear();
    }
    // What the device receives for one value message.
    Bytes Sent() { return DrainPeer(pair.device); }
};

Bytes Head(std::uint32_t count) { return FrameHead(7, 2) + U32(count); }
Bytes Item(std::uint32_t key, const Bytes& value) {
    return U32(key) + U32(static_cast<std::uint32_t>(value.size())) + value;
}

}  // namespace

TEST_F(Encoding, OneItemPerMarkedRecordInStoreOrder) {
    Add(kTypeButton, 2).pressByte = 255;
    Add(kTypeCheckBox, 3).checkByte = 1;
    Add(kTypeSection, 4).sendPending = 0;  // not marked
    Add(kTypeDateTime, 5).dateTime = {5, 4, 14, 7, 1, 3, 2005};
    Add(kTypeNumber, 6).rawValue = -2;
    Add(kTypeList, 9).selectedIndex = 1;
    Add(kTypeMessage, 10).answerByte = 1;
    Add(kTypeFiles, 12);
    Add(kTypeImage, 14, kFlagVariant);
    EXPECT_EQ(0, LinkSendPendingValues());
    EXPECT_EQ(Head(8) + Item(2, {255}) + Item(3, {1}) + Item(5, U8({5, 4, 14, 7, 1, 3}) + U16(2005)) +
                  Item(6, U32(0xFFFFFFFE)) + Item(9, U32(1)) + Item(10, {1}) + Item(12, {}) +
                  Item(14, {}),
              Sent());
    EXPECT_EQ(0, IsSendPending(6)) << "marks are cleared";
    EXPECT_EQ(0, FindControl(2)->pressByte) << "a press is sent once";
    FindControl(2)->sendPending = 1;
    EXPECT_EQ(0, LinkSendPendingValues());
    EXPECT_EQ(Head(1) + Item(2, {0}), Sent());
}

TEST_F(Encoding, Texts) {
    ControlRecord& wide = Add(kTypeText, 1, kFlagUtf16);
    wide.maxLength = 6;
    wide.text.Resize(6);
    std::memcpy(wide.text.Data(), u"ab", 4);
    ControlRecord& narrow = Add(kTypeText, 2);
    narrow.maxLength = 4;
    narrow.text.Resize(8);
    std::memcpy(narrow.text.Data(), u"\u00E9tude", 8);  // four units fill the buffer
    ControlRecord& empty = Add(kTypeText, 3);
    empty.maxLength = 0;
    EXPECT_EQ(0, LinkSendPendingValues());
    EXPECT_EQ(Head(3) + Item(1, Utf16(u"ab") + U8({0, 0})) + Item(2, U8({0xE9, 't', 'u', 0})) +
                  Item(3, {}),
              Sent())
        << "8-bit texts are cut to m - 1 bytes and terminated";
}

TEST_F(Encoding, PasswordFields) {
    ControlRecord& narrow = Add(kTypePassword, 8);
    narrow.outPassword1 = u"1234";
    narrow.outPassword2 = u"";
    ControlRecord& wide = Add(kTypePassword, 9, kFlagUtf16);
    wide.outPassword1 = u"old";
    wide.outPassword2 = u"a-very-long-password-indeed";
    EXPECT_EQ(0, LinkSendPendingValues());
    Bytes field1 = Ascii("1234") + Bytes(30, 0), field2(34, 0);
    Bytes wide1 = Utf16(u"old") + Bytes(28, 0);
    Bytes wide2 = Utf16(u"a-very-long-passw");  // 17 units, no room for a terminator
    EXPECT_EQ(Head(2) + Item(8, field1 + field2) + Item(9, wide1 + wide2), Sent());
    narrow.sendPending = 1;
    narrow.outPassword1 = u"0123456789012345678901234567890123456789";
    EXPECT_EQ(0, LinkSendPendingValues());
    Bytes cut = Ascii("012345678901234567890123456789012") + U8({0});
    EXPECT_EQ(Head(1) + Item(8, cut + field2), Sent()) << "33 characters and a terminator";
}

TEST_F(Encoding, BlobsGiveASecondEmptyItemOutsideTheCount) {
    ControlRecord& raw = Add(kTypeBlob, 11);
    raw.data = {1, 2, 3, 4};
    raw.dataLength = 3;
    raw.dataCapacity = 4;
    ControlRecord& text = Add(kTypeBlob, 12, kFlagVariant);
    text.data = Utf16(u"hi") + Bytes(4, 0);
    text.dataLength = 4;
    text.dataCapacity = 8;
    EXPECT_EQ(0, LinkSendPendingValues());
    EXPECT_EQ(Head(2) + Item(11, {1, 2, 3}) + Item(11, {}) + Item(12, Ascii("hi") + U8({0, 0})) +
                  Item(12, {}),
              Sent())
        << "text data is sent as C/2 bytes";
}

TEST_F(Encoding, UnsendableRecordsEndTheMessage) {
    Add(kTypeButton, 1);
    Add(kTypeChart, 7);
    Add(kTypeSection, 4);
    EXPECT_EQ(kWrongType, LinkSendPendingValues());
    EXPECT_TRUE(boxes.HasFault(3402, "tmqbthppcvcomclt", 7));
    EXPECT_EQ(Head(3) + Item(1, {0}), Sent());
    EXPECT_EQ(0, IsSendPending(7)) << "the chart's own mark is cleared";
    EXPECT_EQ(1, IsSendPending(4)) << "later records keep theirs";

    Clear();
    Add(kTypeImage, 14);
    EXPECT_EQ(kImageNotPressable, LinkSendPendingValues());
    EXPECT_TRUE(boxes.HasFault(3460, "tmqbthppcvcomclt", 888));
    Clear();
    Add(kTypeUnknown, 13);
    EXPECT_EQ(kWrongType, LinkSendPendingValues());
    EXPECT_TRUE(boxes.HasFault(3424, "tmqbthppcvcomclt", 13));
    Clear();
}

TEST_F(Encoding, TheAcknowledgeSwitchAddsFlag8) {
    Link().acknowledgeValues = 1;
    EXPECT_EQ(0, LinkSendPendingValues());
    EXPECT_EQ(FrameHead(7, 0x000A) + U32(0), Sent());
    Link().acknowledgeValues = 0;
}

TEST_F(Encoding, AFailedSendReturnsItsStatus) {
    Add(kTypeButton, 1);
    plat::SocketClose(pair.client);
    EXPECT_EQ(kLinkSendFailed, LinkSendPendingValues());
    EXPECT_EQ(1, IsSendPending(1)) << "nothing was sent, the mark stays";
}
