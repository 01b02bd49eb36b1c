#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/record_decoder.h"
#include "model/control_store.h"
#include "tests/link/record_fields.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

// One record body, the decoded record's fields, and the fault box it raises if any.
struct RecordCase {
    const char* name;
    Bytes body;
    std::string fields;
    long faultLine = 0;
};

void ExpectDecoded(const std::vector<RecordCase>& cases) {
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MessageBoxRecorder boxes;
        ControlRecord r;
        ASSERT_EQ(DecodeStatus::kOk, DecodeRecord(c.body.data(), c.body.size(), r));
        EXPECT_EQ(c.fields, Fields(r));
        if (c.faultLine) {
            EXPECT_TRUE(boxes.HasFaultLine(c.faultLine));
        } else {
            EXPECT_EQ(0u, boxes.Count());
        }
    }
}

const std::uint32_t kMinus1 = 0xFFFFFFFF;

}  // namespace

TEST(RecordDecoding, TextMessageAndOneByteControls) {
    ExpectDecoded({
        {"8-bit text, buffer of m characters",
         CommonPart('T', 0, 7) + U32(3) + Ascii("abc") +
             AttributeBlock({{'Z', Ascii("Title")}, {'m', U32(10)}}),
         "type=1 bg=ffffff key=7 label=Title m=10 text=abc bytes=20"},
        {"UTF-16 text, buffer of m bytes (not doubled)",
         CommonPart('T', 4, 8) + U32(6) + Utf16(u"abc") +
             AttributeBlock({{'Z', Utf16(u"\u00C9t\u00E9")}, {'m', U32(8)}}),
         "type=1 flags=4 bg=ffffff key=8 label=\xC3\x89t\xC3\xA9 m=8 text=abc bytes=8"},
        {"m smaller than the initial text cuts it",
         CommonPart('T', 4, 8) + U32(10) + Utf16(u"hello") + AttributeBlock({{'m', U32(4)}}),
         "type=1 flags=4 bg=ffffff key=8 m=4 text=he bytes=4"},
        {"without m the fault box, the text stays",
         CommonPart('T', 0, 9) + U32(2) + Ascii("hi") + AttributeBlock({{'c', U32(0x123456)}}),
         "type=1 bg=123456 key=9 text=hi bytes=4", 1078},
        {"a message has no default background",
         CommonPart('X', 0, 2) + U32(5) + Ascii("Hello") + AttributeBlock({{'m', U32(16)}}),
         "type=10 key=2 m=16 text=Hello bytes=32"},
        {"button",
         CommonPart('B', 0, 3) + U32(1) + U8({255}) + AttributeBlock({{'Z', Ascii("Go")}}),
         "type=2 bg=c0c0c0 key=3 label=Go press=255"},
        {"check box in a group",
         CommonPart('G', 0, 4) + U32(1) + U8({1}) + AttributeBlock({{'r', U32(3)}}),
         "type=3 bg=c0c0c0 key=4 check=1 group=3"},
        {"check box, nothing after the byte", CommonPart('G', 0, 4) + U32(1) + U8({0}),
         "type=3 bg=c0c0c0 key=4"},
        {"password",
         CommonPart('P', 0, 6) + U32(1) + U8({1}) + AttributeBlock({{'Z', Ascii("PIN")}}),
         "type=8 bg=ffffff key=6 label=PIN in=1"},
        {"password of the wrong size ends at the common part",
         CommonPart('P', 0, 6) + U32(2) + U8({1, 1}) + AttributeBlock({{'Z', Ascii("PIN")}}),
         "type=8 key=6", 1641},
    });
}

TEST(RecordDecoding, DateTimeAndNumber) {
    Bytes when = U8({5, 4, 14, 7, 1, 3}) + U16(2005);  // 14:04:05, Monday 7 March 2005
    ExpectDecoded({
        {"date time with its template",
         CommonPart('D', 0, 10) + U32(8) + when + AttributeBlock({{'f', Ascii("%HH%:%mm%")}}),
         "type=5 bg=ffffff key=10 when=2005-3-7 14:4:5 w1 f=%HH%:%mm%"},
        {"date time without template", CommonPart('D', 0, 10) + U32(8) + when + AttributeBlock({}),
         "type=5 bg=ffffff key=10 when=2005-3-7 14:4:5 w1", 1270},
        {"date time of the wrong size keeps only the common part",
         CommonPart('D', 0, 10) + U32(12) + when + U32(0) + AttributeBlock({{'Z', Ascii("T")}}),
         "type=5 key=10", 1238},
        {"number with every attribute",
         CommonPart('N', 0x70000, 11) + U32(4) + U32(static_cast<std::uint32_t>(-125)) +
             AttributeBlock({{'f', Ascii("%n V")},
                             {'n', U32(static_cast<std::uint32_t>(-500))},
                             {'x', U32(500)},
                             {'d', U8({1})},
                             {'m', U8({0xFF})}}),
         "type=6 flags=70000 bg=c0c0c0 key=11 f=%n V raw=-125 min=-500 max=500 d=1 e=-1"},
        {"read-only number is white, absent attributes are zero",
         CommonPart('N', 0, 12) + U32(4) + U32(42) + AttributeBlock({}),
         "type=6 bg=ffffff key=12 raw=42"},
        {"number of another size raises the fault and goes on",
         CommonPart('N', 0, 12) + U32(2) + U32(42) + AttributeBlock({{'Z', Ascii("n")}}),
         "type=6 bg=ffffff key=12 label=n raw=42", 1314},
    });
}

TEST(RecordDecoding, ListBlobFilesImageUnknown) {
    ExpectDecoded({
        {"list",
         CommonPart('L', 0, 20) + U32(4) + U32(2) +
             AttributeBlock({{'I', Ascii(std::string("a\0bb\0ccc\0", 9))}, {'n', U32(3)}}),
         "type=9 bg=ffffff key=20 selected=2 items=a|bb|ccc| count=3"},
        {"list of another value size",
         CommonPart('L', 0, 20) + U32(8) + U32(1) + U32(0) + AttributeBlock({{'n', U32(2)}}),
         "type=9 bg=ffffff key=20 selected=1 count=2", 1704},
        {"8-bit blob is widened",
         CommonPart('O', 0x00110000, 21) + U32(4) + Ascii("http") +
             AttributeBlock({{'n', U32(5)}, {'m', U32(6)}}),
         "type=11 flags=110000 bg=c0c0c0 key=21 data=[68 00 74 00 74 00 70 00] length=8 capacity=8 "
         "n=5 bm=6"},
        {"UTF-16 blob is copied",
         CommonPart('O', 4, 21) + U32(3) + U8({1, 2, 3}) + AttributeBlock({}),
         "type=11 flags=4 bg=c0c0c0 key=21 data=[01 02 03] length=3 capacity=3"},
        {"files skip their fixed bytes",
         CommonPart('F', 0, 22) + U32(3) + U8({9, 9, 9}) + AttributeBlock({{'Z', Ascii("Report")}}),
         "type=12 bg=c0c0c0 key=22 label=Report"},
        {"image",
         CommonPart('I', 0x10000, 23) + U32(4) + U8({0x42, 0x4D, 0, 0}) + AttributeBlock({}),
         "type=14 flags=10000 bg=c0c0c0 key=23 data=[42 4D 00 00] length=4 capacity=4"},
        {"image of 16 MiB or more counts as none: attributes start at 14",
         CommonPart('I', 0, 23) + U32(0x1000000) + AttributeBlock({{'Z', Ascii("pic")}}),
         "type=14 bg=c0c0c0 key=23 label=pic"},
        {"unknown tag", CommonPart('Q', 0x1234, 24) + U8({1, 2, 3}), "type=13 flags=1234 key=24"},
    });
}

TEST(RecordDecoding, ChartDataBlockSplits) {
    // Two series of three rows, 16-bit values, numeric 32-bit samples.
    Bytes block = U16(1) + U16(2) + U16(3) + U16(10) + U16(20) + U16(30) + U32(100) + U32(200) +
                  U32(300) + U32(kMinus1);
    ExpectDecoded({
        {"numeric samples",
         CommonPart('M', 0x110000, 30) + U32(static_cast<std::uint32_t>(block.size())) + block +
             AttributeBlock({{'n', U32(3)},
                             {'N', U32(2)},
                             {'A', Ascii(std::string("a\0b\0", 4))},
                             {'a', Ascii("t")},
                             {'D', U8({2})},
                             {'M', U8({0xFE})}}),
         "type=7 flags=110000 bg=c0c0c0 counter=ffffffff key=30 table=[01 00 02 00 03 00 0A 00 14 "
         "00 1E 00] samples=[64 00 00 00 C8 00 00 00 2C 01 00 00] rows=3 series=2 names=a|b| "
         "axis=t dd=2 de=-2"},
        {"8-bit labels are widened",
         CommonPart('M', 0x220000, 31) + U32(1 + 4 + 4) + U8({7}) +
             Ascii(std::string("ab\0\0", 4)) + U32(1) +
             AttributeBlock({{'n', U32(1)}, {'N', U32(1)}}),
         "type=7 flags=220000 bg=c0c0c0 counter=1 key=31 table=[07] samples=[61 00 62 00 00 00 00 "
         "00] rows=1 series=1"},
        {"width code 3 has no table",
         CommonPart('M', 0x300000, 32) + U32(6) + U8({1, 2}) + U32(5) +
             AttributeBlock({{'n', U32(100)}, {'N', U32(100)}}),
         "type=7 flags=300000 bg=c0c0c0 counter=5 key=32 samples=[01 02] rows=100 series=100"},
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
        {"chart table larger than its block", CommonPart('M', 0, 1) + U32(8) + U32(0) + U32(0) +
                                                  AttributeBlock({{'n', U32(10)}, {'N', U32(10)}})},
        {"chart block without its row counter",
         CommonPart('M', 0, 1) + U32(2) + U8({0, 0}) + AttributeBlock({})},
        {"chart table over the ceiling",
         CommonPart('M', 0, 1) + U32(4) + U32(0) +
             AttributeBlock({{'n', U32(0xFFFFFFFF)}, {'N', U32(0xFFFFFFFF)}})},
        {"number without its value", CommonPart('N', 0, 1) + U32(4) + U8({1})},
        {"blob longer than the body", CommonPart('O', 0, 1) + U32(0xFFFFFFF0)},
        {"button without its byte", CommonPart('B', 0, 1) + U32(1)},
    };
    for (const auto& c : cases) {
        ControlRecord r;
        EXPECT_EQ(DecodeStatus::kMalformed, DecodeRecord(c.body.data(), c.body.size(), r)) << c.name;
    }
}

namespace {

class PanelDecoding : public ::testing::Test {
protected:
    void SetUp() override { LinkInit(); }
    void TearDown() override { LinkShutdown(); }
    DecodeStatus Decode(const Bytes& payload) {
        MemoryInput input{payload.data(), payload.size()};
        ReceiveSource source = MemoryReceiveSource(&input);
        return DecodePanel(source);
    }
    MessageBoxRecorder boxes;
};

Bytes Button(std::uint32_t key) {
    return CommonPart('B', 0, key) + U32(1) + U8({0}) + AttributeBlock({});
}

}  // namespace

TEST_F(PanelDecoding, ReplacesTheStoreWhole) {
    ASSERT_EQ(DecodeStatus::kOk, Decode(U32(2) + Counted(Button(1)) + Counted(Button(2))));
    ASSERT_EQ(2, ControlCount());
    EXPECT_EQ(2u, ControlIdAt(1));
    ASSERT_EQ(DecodeStatus::kOk, Decode(U32(1) + Counted(CommonPart('Q', 0, 9))));
    EXPECT_EQ(1, ControlCount());
    EXPECT_EQ(kTypeUnknown, GetControlType(9));
    EXPECT_EQ(-1, FindControlIndex(1));
    ASSERT_EQ(DecodeStatus::kOk, Decode(U32(0)));
    EXPECT_EQ(0, ControlCount());
}

TEST_F(PanelDecoding, AFailedPanelLeavesTheOldOne) {
    ASSERT_EQ(DecodeStatus::kOk, Decode(U32(1) + Counted(Button(5))));
    struct Case {
        const char* name;
        Bytes payload;
        DecodeStatus code;
    } cases[] = {
        {"link closes inside a body", U32(2) + Counted(Button(1)) + U32(40) + U8({1, 2}),
         DecodeStatus::kClosed},
        {"link closes before the count", U8({1, 0}), DecodeStatus::kClosed},
        {"too many records", U32(limits::kMaxRecords + 1), DecodeStatus::kMalformed},
        {"a body over the ceiling", U32(1) + U32(limits::kMaxRecordBytes + 1), DecodeStatus::kMalformed},
        {"a malformed body", U32(1) + Counted(U8({'B', 0})), DecodeStatus::kMalformed},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.code, Decode(c.payload)) << c.name;
        EXPECT_EQ(1, ControlCount()) << c.name;
        EXPECT_EQ(0, FindControlIndex(5)) << c.name;
    }
}
