// Record bodies of the panel description against bytes written from the record tables:
// tag, flags, key, the type's fixed part, then K letters and K counted values.
#include "device/control_flags.h"
#include "device/messages.h"
#include "device/records.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

dev::ControlHead Head(std::uint32_t key, std::uint32_t flags, const char* label) {
    return {key, flags, label, std::nullopt};
}

}  // namespace

TEST(DeviceRecords, EveryTypeByteForByte) {
    dev::ControlHead coloured = Head(3, 0, "C");
    coloured.background = 0x00112233;
    const dev::NumberParams number{-5, -10, 10, 1, -1, "%f V"}, bare{7, {}, {}};
    const dev::ChartParams chart{2, 1, "s", "d", "a", {"x"}, 1, -2, 3, -4};
    const Bytes block = U8({5, 0}) + U32(1);  // passed through as the chart's data

    const struct {
        const char* name;
        dev::Record record;
        Bytes expected;
    } cases[] = {
        {"8-bit text: initial text with its zero, then Z and m",
         dev::TextRecord(Head(7, 0x10000, "Hi"), "ab", 16),
         CommonPart('T', 0x10000, 7) + Counted(Ascii("ab") + U8({0})) + U32(2) + U8({'Z', 'm'}) +
             Counted(Ascii("Hi")) + Counted(U32(16))},
        {"UTF-16 text: every text in UTF-16LE", dev::TextRecord(Head(7, 0x4, "Hi"), "ab", 16),
         CommonPart('T', 0x4, 7) + Counted(Utf16(u"ab") + U8({0, 0})) + U32(2) + U8({'Z', 'm'}) +
             Counted(Utf16(u"Hi")) + Counted(U32(16))},
        {"8-bit text in the code page", dev::TextRecord(Head(1, 0, "5 \u00B0C"), "\u20AC", 4),
         CommonPart('T', 0, 1) + Counted(U8({0x80, 0})) + U32(2) + U8({'Z', 'm'}) +
             Counted(U8({'5', ' ', 0xB0, 'C'})) + Counted(U32(4))},
        {"message", dev::MessageRecord(Head(100, 1, ""), "", 8),
         CommonPart('X', 1, 100) + Counted(U8({0})) + U32(2) + U8({'Z', 'm'}) + Counted({}) +
             Counted(U32(8))},
        {"button: size word 1, one byte, then attributes from offset 15",
         dev::ButtonRecord(Head(2, 0, "Go")),
         CommonPart('B', 0, 2) + U32(1) + U8({0}) + U32(1) + U8({'Z'}) + Counted(Ascii("Go"))},
        {"check box with colour and group", dev::CheckBoxRecord(coloured, true, 4),
         CommonPart('G', 0, 3) + U32(1) + U8({255}) + U32(3) + U8({'Z', 'c', 'r'}) +
             Counted(Ascii("C")) + Counted(U32(0x00112233)) + Counted(U32(4))},
        {"open section", dev::SectionRecord(Head(4, 0, ""), true),
         CommonPart('S', 0, 4) + U32(1) + U8({255}) + U32(1) + U8({'Z'}) + Counted({})},
        {"date-time: size 8, the value, then Z and f",
         dev::DateTimeRecord(Head(5, 0, ""), dev::DateTime{9, 8, 7, 6, 5, 4, 2005}, "%HH%"),
         CommonPart('D', 0, 5) + U32(8) + U8({9, 8, 7, 6, 5, 4}) + U16(2005) + U32(2) +
             U8({'Z', 'f'}) + Counted({}) + Counted(Ascii("%HH%"))},
        {"number with limits", dev::NumberRecord(Head(6, 0x70000, ""), number),
         CommonPart('N', 0x70000, 6) + U32(4) + U32(0xFFFFFFFB) + U32(6) +
             U8({'Z', 'f', 'n', 'x', 'd', 'm'}) + Counted({}) + Counted(Ascii("%f V")) +
             Counted(U32(0xFFFFFFF6)) + Counted(U32(10)) + Counted(U8({1})) + Counted(U8({0xFF}))},
        {"number without limits leaves n and x out", dev::NumberRecord(Head(6, 0, ""), bare),
         CommonPart('N', 0, 6) + U32(4) + U32(7) + U32(4) + U8({'Z', 'f', 'd', 'm'}) +
             Counted({}) + Counted(Ascii("%f")) + Counted(U8({0})) + Counted(U8({0}))},
        {"password: size 1, logged-in byte", dev::PasswordRecord(Head(8, 0x10000, "P"), true),
         CommonPart('P', 0x10000, 8) + U32(1) + U8({1}) + U32(1) + U8({'Z'}) +
             Counted(Ascii("P"))},
        {"list: size 4, index, items each terminated, count",
         dev::ListRecord(Head(9, 0, ""), {"a", "bc"}, 1),
         CommonPart('L', 0, 9) + U32(4) + U32(1) + U32(3) + U8({'Z', 'I', 'n'}) + Counted({}) +
             Counted(Ascii("a") + U8({0}) + Ascii("bc") + U8({0})) + Counted(U32(2))},
        {"text blob for the browser", dev::BlobTextRecord(Head(11, 0x00110000, ""), "http://x"),
         CommonPart('O', 0x00110000, 11) + Counted(Ascii("http://x") + U8({0})) + U32(1) +
             U8({'Z'}) + Counted({})},
        {"files: no data", dev::FilesRecord(Head(12, 0x00100000, "F")),
         CommonPart('F', 0x00100000, 12) + U32(0) + U32(1) + U8({'Z'}) + Counted(Ascii("F"))},
        {"chart: its block, then every attribute",
         dev::ChartRecord(Head(13, dev::kDataWidth8, "C"), chart, block),
         CommonPart('M', dev::kDataWidth8, 13) + Counted(block) + U32(11) +
             U8({'Z', 'n', 'N', 'f', 'F', 'a', 'A', 'd', 'm', 'D', 'M'}) + Counted(Ascii("C")) +
             Counted(U32(2)) + Counted(U32(1)) + Counted(Ascii("s")) + Counted(Ascii("d")) +
             Counted(Ascii("a")) + Counted(Ascii("x") + U8({0})) + Counted(U8({1})) +
             Counted(U8({0xFE})) + Counted(U8({3})) + Counted(U8({0xFC}))},
        {"image", dev::ImageRecord(Head(14, 0x10000, ""), {1, 2, 3}),
         CommonPart('I', 0x10000, 14) + Counted(U8({1, 2, 3})) + U32(1) + U8({'Z'}) + Counted({})},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Hex(c.expected), Hex(dev::EncodeRecord(c.record))) << c.name;
    }
}

TEST(DeviceRecords, PanelCountsItsRecordsAndPrefixesEachBody) {
    const Bytes button = CommonPart('B', 0, 1) + U32(1) + U8({0}) + U32(1) + U8({'Z'}) + U32(0);
    const Bytes files = CommonPart('F', 0, 2) + U32(0) + U32(1) + U8({'Z'}) + U32(0);
    EXPECT_EQ(Hex(FrameHead(6, 8) + U32(2) + Counted(button) + Counted(files)),
              Hex(dev::EncodePanel({dev::ButtonRecord(Head(1, 0, "")),
                                    dev::FilesRecord(Head(2, 0, ""))}, true)));
    EXPECT_EQ(Hex(FrameHead(6, 0) + U32(0)), Hex(dev::EncodePanel({})));
}
