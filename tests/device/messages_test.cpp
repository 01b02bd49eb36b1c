// Frames and item data from the device against bytes written from the message tables.
#include "device/messages.h"
#include "device/values.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(DeviceMessages, FramesAndItemDataByteForByte) {
    const struct {
        const char* name;
        dev::Bytes actual;
        Bytes expected;
    } cases[] = {
        {"identity: UTF-16 name, pings allowed",
         dev::EncodeIdentity({"Pa", "S", true, true, true, false}),
         FrameHead(2, 0x0001) + U32(4) + Utf16(u"Pa") + U32(2) + Utf16(u"S")},
        {"identity: 8-bit name, no pings, stays open",
         dev::EncodeIdentity({"Pa", "S", false, false, true, true}),
         FrameHead(2, 0x0012) + U32(2) + Ascii("Pa") + U32(2) + Utf16(u"S")},
        {"identity: session flag B cleared",
         dev::EncodeIdentity({"Pa", "S", true, true, false, false}),
         FrameHead(2, 0x0005) + U32(4) + Utf16(u"Pa") + U32(2) + Utf16(u"S")},
        {"ping: the head alone", dev::EncodeBare(8), FrameHead(8, 0)},
        {"settings", dev::EncodeSettings({{0, 768, 5}, {9, 336, 3}}),
         FrameHead(19, 0) + U32(2) + U32(0) + U32(768) + U32(5) + U32(9) + U32(336) + U32(3)},
        {"value update with acknowledgement",
         dev::EncodeValueUpdates({{4, {255}}, {9, {1, 2, 3, 4}}}, true),
         FrameHead(9, 8) + U32(2) + U32(4) + U32(1) + U8({255}) + U32(9) + U32(4) +
             U8({1, 2, 3, 4})},
        {"layout update", dev::EncodeLayoutUpdates({{21, {1, 0, 0, 0}}}),
         FrameHead(16, 0) + U32(1) + U32(21) + U32(4) + U8({1, 0, 0, 0})},
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
        {"number", dev::Int32Value(-2), U32(0xFFFFFFFE)},
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
