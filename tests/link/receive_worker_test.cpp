#include "link/link_client.h"
#include "model/device_settings.h"
#include "tests/support/link_fixture.h"
#include "tests/support/records.h"

#include "platform/files.h"
#include "platform/utf.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace testing_support;

namespace {

constexpr const char* kFile = "tmqbthppcvcomclt";

class Worker : public LinkTest {
protected:
    void SetUp() override {
        LinkTest::SetUp();
        StartLink();
    }
    // Delivers a frame, checks its result and what the client sent back, restarts the worker.
    void Expect(const Bytes& frame, std::int32_t result, const Bytes& reply, const char* name) {
        SCOPED_TRACE(name);
        EXPECT_EQ(result, Deliver(frame));
        EXPECT_EQ(reply, DrainPeer(pair.device));
        Restart();
    }
    // True when the worker ended without posting anything.
    bool EndedSilently() {
        bool ended = WaitUntil([] { return Link().workerRunning == 0; });
        return ended && posts.Pending() == 0;
    }
};

}  // namespace

TEST_F(Worker, ResultsRepliesAndAcknowledgements) {
    Bytes ack = FrameHead(14, 2);
    struct Case {
        const char* name;
        Bytes frame;
        std::int32_t result;
        Bytes reply;
    } cases[] = {
        {"type 5 with the ack flag", FrameHead(5, 8), 3, {}},
        {"device ping", FrameHead(8, 0), 4, FrameHead(12, 2)},
        {"ping reply", FrameHead(11, 0), 5, {}},
        {"type 13", FrameHead(13, 8), 6, {}},
        {"type 15", FrameHead(15, 0), 8, {}},
        {"settings, none", FrameHead(19, 8) + U32(0), 11, {}},
        {"settings, negative count", FrameHead(19, 0) + U32(0xFFFFFFFF), 11, {}},
        {"empty panel, ack wanted", FrameHead(6, 8) + U32(0), 2, ack},
        {"values, ack wanted", FrameHead(9, 8) + U32(0), 7, ack},
        {"layout, ack wanted", FrameHead(16, 0x0F) + U32(0), 9, ack},
        {"files, none, ack wanted", FrameHead(17, 8) + U32(1) + U32(0), 10, ack},
    };
    for (const auto& c : cases) Expect(c.frame, c.result, c.reply, c.name);
}

TEST_F(Worker, GarbageAndPartialMarkersBeforeAFrameAreSkipped) {
    for (const Bytes& noise :
         {U8({0x00, 0xFF, 0x48, 0x48, 0xEF, 0xF0, 0x48, 0xEF, 0xF0, 0x74, 0x72, 0xEF}),
          U8({0x48, 0xEF, 0xF0})}) {  // the hunt restarts at the next 48
        Expect(noise + FrameHead(8, 0), 4, FrameHead(12, 2), "noise, then a ping");
    }
}

TEST_F(Worker, AnUnknownTypeIsReportedAndLeftUnread) {
    EXPECT_EQ(-1, Deliver(FrameHead(7, 0) + U32(5)));
    auto shown = boxes.Boxes();
    ASSERT_EQ(2u, shown.size());
    EXPECT_EQ(u"Message = 7", shown[0].text);
    EXPECT_EQ(u"Tremolanth", shown[0].caption);
    EXPECT_EQ(u"At 547 file tmqbthppcvcomclt, val=-1", shown[1].text);
    EXPECT_EQ(u"", shown[1].caption);
    EXPECT_EQ(0u, shown[1].flags);
    Restart();
    EXPECT_EQ(4, Deliver(FrameHead(8, 0))) << "the next worker hunts through the payload";
}

TEST_F(Worker, IdentityTexts) {
    struct Case {
        const char* name;
        std::uint16_t flags;
        Bytes first;
        std::u16string panel;
        std::uint8_t a, b, c;
    } cases[] = {
        {"8-bit name, pings allowed", 0x0000, Ascii("Caf\xE9"), u"Caf\u00E9", 1, 1, 0},
        {"UTF-16 name, no pings", 0x0003, Utf16(u"Pump \u03A9"), u"Pump \u03A9", 0, 1, 0},
        {"flag B off, stay open", 0x0014, Ascii("Lab"), u"Lab", 1, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Bytes frame = FrameHead(2, c.flags) + U32(static_cast<std::uint32_t>(c.first.size())) +
                      c.first + U32(10) + Utf16(u"v2.1!");
        EXPECT_EQ(1, Deliver(frame));
        EXPECT_EQ(c.panel, LinkPanelId());
        EXPECT_EQ(u"v2.1!", LinkServerText());
        EXPECT_EQ(c.a, Link().sessionFlagA.load());
        EXPECT_EQ(c.b, Link().sessionFlagB.load());
        EXPECT_EQ(c.c, Link().sessionFlagC.load());
        Restart();
    }
}

// A broken identity keeps the last good name: settings then still land under it, not under
// an empty key that the next good connection would never read.
TEST_F(Worker, SettingsRecordsAreWrittenUnderTheLastGoodPanelName) {
    Bytes identity = FrameHead(2, 1) + U32(8) + Utf16(u"Oven") + U32(6) + Utf16(u"1.0");
    EXPECT_EQ(1, Deliver(identity));
    Restart();
    EXPECT_EQ(1, Deliver(FrameHead(2, 1) + U32(0x7FFFFFFF)));  // a name over the ceiling
    Restart();
    EXPECT_EQ(u"Oven", LinkPanelId());
    EXPECT_EQ(u"1.0", LinkServerText());
    Bytes settings =
        FrameHead(19, 0) + U32(2) + U32(0) + U32(768) + U32(10) + U32(42) + U32(336) + U32(2);
    EXPECT_EQ(11, Deliver(settings));
    EXPECT_EQ(u"Oven", SettingsPanelName());
    EXPECT_EQ(10, ReadDeviceSetting(0, 768, 3));
    EXPECT_EQ(2, ReadDeviceSetting(42, 336, 0));
    EXPECT_EQ(0u, boxes.Count());
}

TEST_F(Worker, DecoderFailuresRaiseTheirFault) {
    struct Case {
        const char* name;
        Bytes frame;
        long line;
        long value;
    } cases[] = {
        {"malformed panel", FrameHead(6, 8) + U32(1) + U32(2) + U8({'B', 0}), 447, -1},
        {"value item over the ceiling", FrameHead(9, 8) + U32(1) + U32(1) + U32(0x7FFFFFFF), 470,
         -1},
        {"layout item over the ceiling", FrameHead(16, 8) + U32(1) + U32(1) + U32(0x7FFFFFFF), 493,
         -1},
        {"file name that may not be written",
         FrameHead(17, 8) + U32(1) + U32(1) + U32(4) + Ascii(std::string("..\0\0", 4)) + U32(0),
         527, -10},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        boxes.Clear();
        EXPECT_EQ(-1, Deliver(c.frame));
        EXPECT_TRUE(boxes.HasFault(c.line, kFile, c.value));
        EXPECT_TRUE(DrainPeer(pair.device).empty()) << "no acknowledgement after a failure";
        Restart();
    }
}

TEST_F(Worker, NothingIsPostedWhenTheLinkClosesMidMessage) {
    ASSERT_TRUE(SendPeer(pair.device, FrameHead(9, 8) + U32(3) + U32(1)));
    pair.CloseClient();
    EXPECT_TRUE(EndedSilently());
    EXPECT_EQ(0u, boxes.Count());
}

TEST_F(Worker, AFileCutOffByTheLinkReportsItWithoutAResult) {
    ASSERT_TRUE(SendPeer(pair.device, FrameHead(17, 8) + U32(1) + U32(1) + U32(4) +
                                          Ascii(std::string("a.t\0", 4)) + U32(100) + U8({1, 2})));
    // Close only once the worker is inside the transfer: the file exists then.
    std::filesystem::path file(
        plat::Utf16ToUtf8(plat::JoinPath(plat::ReceivedFilesFolder(), u"a.t")));
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(file); }));
    pair.CloseClient();
    EXPECT_TRUE(EndedSilently());
    EXPECT_TRUE(boxes.HasFault(520, kFile, 6));
}
