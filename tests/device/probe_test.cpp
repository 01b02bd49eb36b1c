// panel-probe's command line and the values it stores, by control type.
#include "device/probe/probe_options.h"
#include "device/probe/probe_print.h"
#include "device/probe/probe_set.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace testing_support;

TEST(PanelProbe, CommandLines) {
    const auto parse = [](std::vector<const char*> args, probe::ProbeOptions* o, std::string* e) {
        args.insert(args.begin(), "panel-probe");
        return probe::ParseProbeOptions(static_cast<int>(args.size()), args.data(), o, e);
    };
    using Sets = std::vector<std::pair<std::uint32_t, std::string>>;
    const struct {
        std::vector<const char*> args;
        const char* host;
        std::uint16_t port;
        Sets sets;
        bool watch;
        double timeout;
    } accepted[] = {
        {{"localhost:7700"}, "localhost", 7700, {}, false, 10},
        {{"127.0.0.1:1", "--watch"}, "127.0.0.1", 1, {}, true, 0},
        {{"--watch", "--timeout", "2.5", "h:0x10"}, "h", 16, {}, true, 2.5},
        {{"h:9", "--set", "0x20=a=b", "--set", "5="}, "h", 9, {{0x20, "a=b"}, {5, ""}}, false, 10},
    };
    for (const auto& c : accepted) {
        probe::ProbeOptions o;
        std::string error;
        ASSERT_TRUE(parse(c.args, &o, &error)) << c.args[0] << " " << error;
        EXPECT_EQ(c.host, o.host);
        EXPECT_EQ(c.port, o.port);
        Sets sets;
        for (const probe::ProbeSet& set : o.sets) sets.emplace_back(set.key, set.value);
        EXPECT_EQ(c.sets, sets);
        EXPECT_EQ(c.watch, o.watch);
        EXPECT_EQ(c.timeout, o.timeoutSeconds);
    }
    probe::ProbeOptions change;
    std::string changeError;
    ASSERT_TRUE(parse({"h:9", "--change", "20", "1234", ""}, &change, &changeError)) << changeError;
    ASSERT_EQ(1u, change.changes.size());
    EXPECT_EQ(20u, change.changes[0].key);
    EXPECT_EQ("1234", change.changes[0].oldPassword);
    EXPECT_EQ("", change.changes[0].newPassword);
    const std::vector<std::vector<const char*>> refused = {
        {}, {"h"}, {"h:0"}, {"h:70000"}, {"h:9", "--set", "x=1"}, {"h:9", "--set"},
        {"h:9", "--change", "20", "old"}, {"h:9", "--change", "k", "a", "b"},
        {"h:9", "--timeout", "-1"}, {"h:9", "--bogus"}};
    for (const auto& args : refused) {
        probe::ProbeOptions o;
        std::string error;
        EXPECT_FALSE(parse(args, &o, &error)) << (args.empty() ? "(none)" : args.back());
        EXPECT_FALSE(error.empty());
    }
}

TEST(PanelProbe, ValuesByControlType) {
    struct Case {
        std::uint16_t type;
        std::int8_t exponent;
        const char* value;
        bool ok;
        Bytes bytes;
    } cases[] = {
        {kTypeText, 0, "Hi", true, Utf16(u"Hi") + U8({0, 0})},
        {kTypeText, 0, "", true, U8({0, 0})},
        {kTypeButton, 0, "", true, U8({255})},
        {kTypeButton, 0, "7", true, U8({7})},
        {kTypeCheckBox, 0, "on", true, U8({255})},
        {kTypeSection, 0, "off", true, U8({0})},
        {kTypeCheckBox, 0, "256", false, {}},
        {kTypeNumber, -1, "21.5", true, U32(215)},
        {kTypeNumber, -1, "-0.04", true, U32(0)},
        {kTypeNumber, 2, "1250", true, U32(13)},
        {kTypeNumber, 0, "1e12", false, {}},
        {kTypeNumber, 0, "12a", false, {}},
        {kTypeDateTime, 0, "2005-03-07 14:05", true, U8({0, 5, 14, 7, 1, 3}) + U16(2005)},
        {kTypeDateTime, 0, "2005-03-07 14:05:09", true, U8({9, 5, 14, 7, 1, 3}) + U16(2005)},
        {kTypeDateTime, 0, "2005-13-07 14:05", false, {}},
        {kTypeDateTime, 0, "2005-03-07 14:05 and more", false, {}},
        {kTypeList, 0, "-1", true, U32(0xFFFFFFFF)},
        {kTypeBlob, 0, "hex:0aff", true, U8({0x0A, 0xFF})},
        {kTypeBlob, 0, "hex:0g", false, {}},
        {kTypeBlob, 0, "u", true, Utf16(u"u") + U8({0, 0})},
        {kTypeFiles, 0, "whatever", true, {}},
    };
    for (const Case& c : cases) {
        ControlRecord r;
        r.controlKey = 5;
        r.type = c.type;
        r.exponent = c.exponent;
        std::vector<std::uint8_t> bytes;
        std::string error;
        ASSERT_EQ(c.ok, probe::ProbeValueBytes(r, c.value, &bytes, &error)) << c.value;
        if (c.ok) EXPECT_EQ(Hex(c.bytes), Hex(bytes)) << c.value;
        else EXPECT_NE(std::string::npos, error.find(c.value)) << error;
    }
}

TEST(PanelProbe, ControlLinesSplitTextListsAndShowBuffersAsHex) {
    ControlRecord list;
    list.controlKey = 12;
    list.type = kTypeList;
    list.label = u"Mode \"x\"";
    list.items = std::u16string(u"Off\0Eco\0", 8);
    list.itemCount = 2;
    list.selectedIndex = 1;
    EXPECT_EQ("{\"key\":12,\"type\":9,\"typeName\":\"Looping List\",\"flags\":0,\"background\":0,"
              "\"label\":\"Mode \\\"x\\\"\",\"valueChanged\":0,\"layoutChanged\":0,"
              "\"sendPending\":0,\"selected\":1,\"itemCount\":2,\"items\":[\"Off\",\"Eco\"]}",
              probe::ControlJson(list));
    ControlRecord text;
    text.type = kTypeText;
    text.text.Resize(8);
    std::memcpy(text.text.Data(), u"a\0c", 6);
    EXPECT_NE(std::string::npos, probe::ControlJson(text).find("\"textHex\":\"6100000063000000\""))
        << probe::ControlJson(text);
    ControlRecord image;
    image.type = kTypeImage;
    image.data = {0xAB, 0x01};
    image.dataLength = 2;
    EXPECT_NE(std::string::npos, probe::ControlJson(image).find("\"dataLength\":2,\"data\":\"ab01\""));
}
