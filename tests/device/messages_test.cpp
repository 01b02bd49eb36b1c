// What the device sends that the loopback client does not read back: 8-bit identities, files,
// text values cut or padded at their edges, text in the code page, attributes left out and
// every chart attribute in order.
#include "device/control_flags.h"
#include "device/messages.h"
#include "device/records.h"
#include "device/values.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(DeviceMessages, FramesAndItemDataByteForByte) {
    const struct {
        const char* name;
        dev::Bytes actual;
        Bytes expected;
    } cases[] = {
        {"identity: 8-bit name, no pings, stays open",
         dev::EncodeIdentity({"Pa", "S", false, false, true, true}),
         FrameHead(2, 0x0012) + U32(2) + Ascii("Pa") + U32(2) + Utf16(u"S")},
        {"identity: session flag B cleared",
         dev::EncodeIdentity({"Pa", "S", true, true, false, false}),
         FrameHead(2, 0x0005) + U32(4) + Utf16(u"Pa") + U32(2) + Utf16(u"S")},
        {"two files, 8-bit names with their zero",
         dev::EncodeFiles(32, {{"a.htm", {'x'}}, {"b", {}}}, false, true),
         FrameHead(17, 8) + U32(32) + U32(2) + U32(6) + Ascii("a.htm") + U8({0}) + U32(1) +
             Ascii("x") + U32(2) + Ascii("b") + U8({0}) + U32(0)},
        {"a file with a UTF-16 name", dev::EncodeFiles(32, {{"r", {7}}}, true),
         FrameHead(17, 0) + U32(32) + U32(1) + U32(4) + Utf16(u"r") + U8({0, 0}) + U32(1) +
             U8({7})},
        // Item data, in the form the client reads.
        {"8-bit text padded to m", dev::TextValue("abc", 6, false), Ascii("abc") + U8({0, 0, 0})},
        {"8-bit text cut before its terminator", dev::TextValue("abcdefgh", 4, false),
         Ascii("abc") + U8({0})},
        {"UTF-16 text in m bytes", dev::TextValue("abc", 6, true), Utf16(u"ab") + U8({0, 0})},
        {"UTF-16 text with an odd m keeps whole units", dev::TextValue("abc", 5, true),
         Utf16(u"a") + U8({0, 0, 0})},
        {"capacity 0: no bytes", dev::TextValue("abc", 0, false), {}},
        {"8-bit message in m bytes", dev::MessageValue("hi", 4, false), Ascii("hi") + U8({0, 0})},
        {"UTF-16 message in 2m bytes", dev::MessageValue("hi", 4, true),
         Utf16(u"hi") + U8({0, 0, 0, 0})},
        {"date-time", dev::DateTimeValue({59, 58, 23, 31, 6, 12, 2099}),
         U8({59, 58, 23, 31, 6, 12}) + U16(2099)},
        {"layout: hidden", dev::LayoutValue({true}), U16(0x0001) + U8({0, 0})},
        {"layout: shown, into view, exclamation icon", dev::LayoutValue({false, true, 3}),
         U16(0x0010) + U8({3, 0})},
        {"layout: background", dev::LayoutValue({true, false, 0, 0x123456}),
         U16(0x0041) + U8({0, 0}) + U32(0x123456)},
    };
    for (const auto& c : cases) EXPECT_EQ(Hex(c.expected), Hex(c.actual)) << c.name;
}

namespace {

dev::ControlHead Head(std::uint32_t key, std::uint32_t flags, const char* label) {
    return {key, flags, label, std::nullopt};
}

}  // namespace

TEST(DeviceRecords, WhatTheDemoPanelLeavesUnseenByteForByte) {
    const dev::NumberParams bare{7, {}, {}};
    const dev::ChartParams chart{2, 1, "s", "d", "a", {"x"}, 1, -2, 3, -4};
    const Bytes block = U8({5, 0}) + U32(1);  // passed through as the chart's data

    const struct {
        const char* name;
        dev::Record record;
        Bytes expected;
    } cases[] = {
        {"8-bit text in the code page", dev::TextRecord(Head(1, 0, "5 \u00B0C"), "\u20AC", 4),
         CommonPart('T', 0, 1) + Counted(U8({0x80, 0})) + U32(2) + U8({'Z', 'm'}) +
             Counted(U8({'5', ' ', 0xB0, 'C'})) + Counted(U32(4))},
        {"number without limits leaves n and x out", dev::NumberRecord(Head(6, 0, ""), bare),
         CommonPart('N', 0, 6) + U32(4) + U32(7) + U32(4) + U8({'Z', 'f', 'd', 'm'}) +
             Counted({}) + Counted(Ascii("%f")) + Counted(U8({0})) + Counted(U8({0}))},
        {"chart: its block, then every attribute",
         dev::ChartRecord(Head(13, dev::kDataWidth8, "C"), chart, block),
         CommonPart('M', dev::kDataWidth8, 13) + Counted(block) + U32(11) +
             U8({'Z', 'n', 'N', 'f', 'F', 'a', 'A', 'd', 'm', 'D', 'M'}) + Counted(Ascii("C")) +
             Counted(U32(2)) + Counted(U32(1)) + Counted(Ascii("s")) + Counted(Ascii("d")) +
             Counted(Ascii("a")) + Counted(Ascii("x") + U8({0})) + Counted(U8({1})) +
             Counted(U8({0xFE})) + Counted(U8({3})) + Counted(U8({0xFC}))},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Hex(c.expected), Hex(dev::EncodeRecord(c.record))) << c.name;
    }
}
