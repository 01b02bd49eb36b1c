#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/record_decoder.h"
#include "model/control_store.h"
#include "tests/support/records.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

using namespace testing_support;

namespace {

constexpr const char* kFile = "tmqbthppcvcomclt";

struct RecordCase {
    const char* name;
    Bytes body;
    std::function<void(const ControlRecord&)> check;
    long faultLine = 0;  // the fault box the record raises, if any
};

std::u16string TextOf(const ControlRecord& r) { return r.text.Text(); }

std::u16string Utf16Of(const std::vector<std::uint8_t>& bytes) {
    std::u16string s(bytes.size() / 2, u'\0');
    std::memcpy(s.data(), bytes.data(), s.size() * 2);
    return s;
}

class RecordDecoding : public ::testing::Test {
protected:
    void Run(const std::vector<RecordCase>& cases) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            MessageBoxRecorder boxes;
            ControlRecord r;
            ASSERT_EQ(0, DecodeRecord(c.body.data(), c.body.size(), r));
            c.check(r);
            if (c.faultLine) {
                EXPECT_TRUE(boxes.HasFaultLine(c.faultLine));
            } else {
                EXPECT_EQ(0u, boxes.Count());
            }
        }
    }
};

}  // namespace

TEST_F(RecordDecoding, TextAndMessage) {
    Run({
        {"8-bit text, buffer of m characters",
         CommonPart('T', 0, 7) + U32(3) + Ascii("abc") +
             AttributeBlock({{'Z', Ascii("Title")}, {'m', U32(10)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeText, r.type);
             EXPECT_EQ(u"Title", r.label);
             EXPECT_EQ(u"abc", TextOf(r));
             EXPECT_EQ(20u, r.text.Bytes());
             EXPECT_EQ(0xFFFFFFu, r.background);
         }},
        {"UTF-16 text, buffer of m bytes (not doubled)",
         CommonPart('T', 4, 8) + U32(6) + Utf16(u"abc") +
             AttributeBlock({{'Z', Utf16(u"\u00C9t\u00E9")}, {'m', U32(8)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(u"\u00C9t\u00E9", r.label);
             EXPECT_EQ(u"abc", TextOf(r));
             EXPECT_EQ(8u, r.text.Bytes());
         }},
        {"m smaller than the initial text cuts it",
         CommonPart('T', 4, 8) + U32(10) + Utf16(u"hello") + AttributeBlock({{'m', U32(4)}}),
         [](const ControlRecord& r) { EXPECT_EQ(u"he", TextOf(r)); }},
        {"without m the fault box, the text stays",
         CommonPart('T', 0, 9) + U32(2) + Ascii("hi") + AttributeBlock({{'c', U32(0x123456)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(u"hi", TextOf(r));
             EXPECT_EQ(0x123456u, r.background);
         },
         1078},
        {"the later of two labels wins",
         CommonPart('T', 0, 1) + U32(0) +
             AttributeBlock({{'Z', Ascii("first")}, {'m', U32(1)}, {'Z', Ascii("second")}}),
         [](const ControlRecord& r) { EXPECT_EQ(u"second", r.label); }},
        {"a message has no default background",
         CommonPart('X', 0, 2) + U32(5) + Ascii("Hello") + AttributeBlock({{'m', U32(16)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeMessage, r.type);
             EXPECT_EQ(u"Hello", TextOf(r));
             EXPECT_EQ(0u, r.background);
         }},
    });
}

TEST_F(RecordDecoding, OneByteControls) {
    Run({
        {"button", CommonPart('B', 0, 3) + U32(1) + U8({255}) + AttributeBlock({{'Z', Ascii("Go")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeButton, r.type);
             EXPECT_EQ(255, r.pressByte);
             EXPECT_EQ(0xC0C0C0u, r.background);
         }},
        {"check box in a group",
         CommonPart('G', 0, 4) + U32(1) + U8({1}) + AttributeBlock({{'r', U32(3)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeCheckBox, r.type);
             EXPECT_EQ(1, r.checkByte);
             EXPECT_EQ(3u, r.group);
         }},
        {"check box without group, nothing after the byte",
         CommonPart('G', 0, 4) + U32(1) + U8({0}),
         [](const ControlRecord& r) {
             EXPECT_EQ(0u, r.group);
             EXPECT_EQ(u"", r.label);
         }},
        {"section", CommonPart('S', 0, 5) + U32(1) + U8({7}) + AttributeBlock({}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeSection, r.type);
             EXPECT_EQ(7, r.sectionByte);
         }},
        {"password", CommonPart('P', 0, 6) + U32(1) + U8({1}) + AttributeBlock({{'Z', Ascii("PIN")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypePassword, r.type);
             EXPECT_EQ(1, r.loggedInByte);
             EXPECT_EQ(0xFFFFFFu, r.background);
         }},
        {"password of the wrong size ends at the common part",
         CommonPart('P', 0, 6) + U32(2) + U8({1, 1}) + AttributeBlock({{'Z', Ascii("PIN")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypePassword, r.type);
             EXPECT_EQ(u"", r.label);
             EXPECT_EQ(0, r.loggedInByte);
         },
         1641},
    });
}

TEST_F(RecordDecoding, DateTimeAndNumber) {
    Bytes when = U8({5, 4, 14, 7, 1, 3}) + U16(2005);  // 14:04:05, Monday 7 March 2005
    Run({
        {"date time with its template",
         CommonPart('D', 0, 10) + U32(8) + when + AttributeBlock({{'f', Ascii("%HH%:%mm%")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeDateTime, r.type);
             EXPECT_EQ(14, r.dateTime.hour);
             EXPECT_EQ(2005, r.dateTime.year);
             EXPECT_TRUE(r.hasFormat);
             EXPECT_EQ(u"%HH%:%mm%", r.format);
             EXPECT_EQ(0xFFFFFFu, r.background);
         }},
        {"writable date time is grey",
         CommonPart('D', 0x10000, 10) + U32(8) + when + AttributeBlock({{'f', Ascii("x")}}),
         [](const ControlRecord& r) { EXPECT_EQ(0xC0C0C0u, r.background); }},
        {"date time without template", CommonPart('D', 0, 10) + U32(8) + when + AttributeBlock({}),
         [](const ControlRecord& r) { EXPECT_FALSE(r.hasFormat); }, 1270},
        {"date time of the wrong size keeps only the common part",
         CommonPart('D', 0, 10) + U32(12) + when + U32(0) + AttributeBlock({{'Z', Ascii("T")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeDateTime, r.type);
             EXPECT_EQ(u"", r.label);
             EXPECT_EQ(0, r.dateTime.year);
         },
         1238},
        {"number with every attribute",
         CommonPart('N', 0x70000, 11) + U32(4) + U32(static_cast<std::uint32_t>(-125)) +
             AttributeBlock({{'f', Ascii("%n V")}, {'n', U32(static_cast<std::uint32_t>(-500))},
                             {'x', U32(500)}, {'d', U8({1})}, {'m', U8({0xFF})}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeNumber, r.type);
             EXPECT_EQ(-125, r.rawValue);
             EXPECT_EQ(-500, r.minimum);
             EXPECT_EQ(500, r.maximum);
             EXPECT_EQ(1, r.decimals);
             EXPECT_EQ(-1, r.exponent);
             EXPECT_EQ(0xC0C0C0u, r.background);
         }},
        {"read-only number is white, absent attributes are zero",
         CommonPart('N', 0, 12) + U32(4) + U32(42) + AttributeBlock({}),
         [](const ControlRecord& r) {
             EXPECT_EQ(42, r.rawValue);
             EXPECT_EQ(0xFFFFFFu, r.background);
             EXPECT_FALSE(r.hasFormat);
         }},
        {"number of another size raises the fault and goes on",
         CommonPart('N', 0, 12) + U32(2) + U32(42) + AttributeBlock({{'Z', Ascii("n")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(42, r.rawValue);
             EXPECT_EQ(u"n", r.label);
         },
         1314},
    });
}

TEST_F(RecordDecoding, ListBlobFilesImageUnknown) {
    Run({
        {"list",
         CommonPart('L', 0, 20) + U32(4) + U32(2) +
             AttributeBlock({{'I', Ascii(std::string("a\0bb\0ccc\0", 9))}, {'n', U32(3)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeList, r.type);
             EXPECT_EQ(2, r.selectedIndex);
             EXPECT_EQ(3u, r.itemCount);
             EXPECT_EQ(std::u16string(u"a\0bb\0ccc\0", 9), r.items);
         }},
        {"list of another value size",
         CommonPart('L', 0, 20) + U32(8) + U32(1) + U32(0) + AttributeBlock({{'n', U32(2)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(1, r.selectedIndex);
             EXPECT_EQ(2u, r.itemCount);
         },
         1704},
        {"8-bit blob is widened",
         CommonPart('O', 0x00110000, 21) + U32(4) + Ascii("http") +
             AttributeBlock({{'n', U32(5)}, {'m', U32(6)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeBlob, r.type);
             EXPECT_EQ(8u, r.dataLength);
             EXPECT_EQ(8u, r.dataCapacity);
             EXPECT_EQ(u"http", Utf16Of(r.data));
             EXPECT_EQ(5u, r.blobN);
         }},
        {"UTF-16 blob is copied", CommonPart('O', 4, 21) + U32(3) + U8({1, 2, 3}) + AttributeBlock({}),
         [](const ControlRecord& r) {
             EXPECT_EQ(3u, r.dataLength);
             EXPECT_EQ(Bytes({1, 2, 3}), r.data);
         }},
        {"files skip their fixed bytes",
         CommonPart('F', 0, 22) + U32(3) + U8({9, 9, 9}) + AttributeBlock({{'Z', Ascii("Report")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeFiles, r.type);
             EXPECT_EQ(u"Report", r.label);
             EXPECT_FALSE(r.hasReceivedPath);
         }},
        {"image", CommonPart('I', 0x10000, 23) + U32(4) + U8({0x42, 0x4D, 0, 0}) + AttributeBlock({}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeImage, r.type);
             EXPECT_EQ(4u, r.dataLength);
             EXPECT_EQ(0xC0C0C0u, r.background);
         }},
        {"image of 16 MiB or more counts as none: attributes start at 14",
         CommonPart('I', 0, 23) + U32(0x1000000) + AttributeBlock({{'Z', Ascii("pic")}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(0u, r.dataLength);
             EXPECT_EQ(u"pic", r.label);
         }},
        {"unknown tag", CommonPart('Q', 0x1234, 24) + U8({1, 2, 3}),
         [](const ControlRecord& r) {
             EXPECT_EQ(kTypeUnknown, r.type);
             EXPECT_EQ(0x1234u, r.flags);
             EXPECT_EQ(24u, r.controlKey);
             EXPECT_EQ(0u, r.background);
         }},
    });
}

TEST_F(RecordDecoding, ChartDataBlockSplits) {
    // Two series of three rows, 16-bit values, numeric 32-bit samples.
    Bytes table = U16(1) + U16(2) + U16(3) + U16(10) + U16(20) + U16(30);
    Bytes samples = U32(100) + U32(200) + U32(300);
    Bytes block = table + samples + U32(static_cast<std::uint32_t>(-1));
    Run({
        {"numeric samples",
         CommonPart('M', 0x110000, 30) + U32(static_cast<std::uint32_t>(block.size())) + block +
             AttributeBlock({{'n', U32(3)}, {'N', U32(2)}, {'A', Ascii(std::string("a\0b\0", 4))},
                             {'a', Ascii("t")}, {'D', U8({2})}, {'M', U8({0xFE})}}),
         [&](const ControlRecord& r) {
             EXPECT_EQ(kTypeChart, r.type);
             EXPECT_EQ(table, r.chart.table);
             EXPECT_EQ(samples, r.chart.textPart);
             EXPECT_EQ(0xFFFFFFFFu, r.chart.trailingWord);
             EXPECT_EQ(3u, r.chart.rowCapacity);
             EXPECT_EQ(2u, r.chart.seriesCount);
             EXPECT_EQ(-2, r.chart.dataExponent);
             EXPECT_EQ(0xC0C0C0u, r.background);
         }},
        {"8-bit labels are widened",
         CommonPart('M', 0x220000, 31) + U32(1 + 4 + 4) + U8({7}) + Ascii(std::string("ab\0\0", 4)) +
             U32(1) + AttributeBlock({{'n', U32(1)}, {'N', U32(1)}}),
         [](const ControlRecord& r) {
             EXPECT_EQ(Bytes({7}), r.chart.table);
             EXPECT_EQ(std::u16string(u"ab\0\0", 4), Utf16Of(r.chart.textPart));
             EXPECT_EQ(1u, r.chart.trailingWord);
         }},
        {"width code 3 has no table",
         CommonPart('M', 0x300000, 32) + U32(6) + U8({1, 2}) + U32(5) +
             AttributeBlock({{'n', U32(100)}, {'N', U32(100)}}),
         [](const ControlRecord& r) {
             EXPECT_TRUE(r.chart.table.empty());
             EXPECT_EQ(Bytes({1, 2}), r.chart.textPart);
             EXPECT_EQ(5u, r.chart.trailingWord);
         }},
    });
}

TEST(RecordDecodingFailures, BodiesThatContradictThemselves) {
    struct Case {
        const char* name;
        Bytes body;
    } cases[] = {
        {"shorter than the common part", U8({'T', 0, 0, 0})},
        {"text longer than the body", CommonPart('T', 0, 1) + U32(50) + Ascii("abc")},
        {"attribute count beyond the body", CommonPart('B', 0, 1) + U32(1) + U8({1}) + U32(5)},
        {"attribute value beyond the body",
         CommonPart('B', 0, 1) + U32(1) + U8({1}) + U32(1) + U8({'Z'}) + U32(100) + Ascii("ab")},
        {"half an attribute count", CommonPart('B', 0, 1) + U32(1) + U8({1}) + U8({1, 0})},
        {"too many attributes", CommonPart('S', 0, 1) + U32(1) + U8({1}) + U32(100000)},
        {"text maximum over the ceiling",
         CommonPart('T', 0, 1) + U32(0) + AttributeBlock({{'m', U32(0x7FFFFFFF)}})},
        {"chart table larger than its block",
         CommonPart('M', 0, 1) + U32(8) + U32(0) + U32(0) + AttributeBlock({{'n', U32(10)}, {'N', U32(10)}})},
        {"chart block without its row counter", CommonPart('M', 0, 1) + U32(2) + U8({0, 0}) + AttributeBlock({})},
        {"chart table over the ceiling",
         CommonPart('M', 0, 1) + U32(4) + U32(0) +
             AttributeBlock({{'n', U32(0xFFFFFFFF)}, {'N', U32(0xFFFFFFFF)}})},
        {"number without its value", CommonPart('N', 0, 1) + U32(4) + U8({1})},
        {"blob longer than the body", CommonPart('O', 0, 1) + U32(0xFFFFFFF0)},
        {"button without its byte", CommonPart('B', 0, 1) + U32(1)},
    };
    for (const auto& c : cases) {
        ControlRecord r;
        EXPECT_EQ(kDecodeMalformed, DecodeRecord(c.body.data(), c.body.size(), r)) << c.name;
    }
}

namespace {

class PanelDecoding : public ::testing::Test {
protected:
    void SetUp() override { LinkInit(); }
    void TearDown() override { LinkShutdown(); }
    std::int32_t Decode(const Bytes& payload) {
        MemoryInput input{payload.data(), payload.size()};
        ReceiveSource source = MemoryReceiveSource(&input);
        return DecodePanel(source);
    }
    MessageBoxRecorder boxes;
};

Bytes Button(std::uint32_t key) { return CommonPart('B', 0, key) + U32(1) + U8({0}) + AttributeBlock({}); }

}  // namespace

TEST_F(PanelDecoding, ReplacesTheStoreWhole) {
    ASSERT_EQ(0, Decode(U32(2) + Counted(Button(1)) + Counted(Button(2))));
    ASSERT_EQ(2, ControlCount());
    EXPECT_EQ(2u, ControlIdAt(1));
    ASSERT_EQ(0, Decode(U32(1) + Counted(CommonPart('Q', 0, 9))));
    EXPECT_EQ(1, ControlCount());
    EXPECT_EQ(kTypeUnknown, GetControlType(9));
    EXPECT_EQ(-1, FindControlIndex(1));
    ASSERT_EQ(0, Decode(U32(0)));
    EXPECT_EQ(0, ControlCount());
}

TEST_F(PanelDecoding, AFailedPanelLeavesTheOldOne) {
    ASSERT_EQ(0, Decode(U32(1) + Counted(Button(5))));
    struct Case {
        const char* name;
        Bytes payload;
        std::int32_t code;
    } cases[] = {
        {"link closes inside a body", U32(2) + Counted(Button(1)) + U32(40) + U8({1, 2}), kLinkClosed},
        {"link closes before the count", U8({1, 0}), kLinkClosed},
        {"too many records", U32(limits::kMaxRecords + 1), kDecodeMalformed},
        {"a body over the ceiling", U32(1) + U32(limits::kMaxRecordBytes + 1), kDecodeMalformed},
        {"a malformed body", U32(1) + Counted(U8({'B', 0})), kDecodeMalformed},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.code, Decode(c.payload)) << c.name;
        EXPECT_EQ(1, ControlCount()) << c.name;
        EXPECT_EQ(0, FindControlIndex(5)) << c.name;
    }
}
