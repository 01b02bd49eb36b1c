#include "link/link_client.h"
#include "link/wire.h"
#include "model/control_store.h"
#include "tests/support/link_fixture.h"

#include <gtest/gtest.h>

#include <vector>

using namespace testing_support;

namespace {

class LinkClientTest : public LinkTest {};

// A source that serves scripted reads and counts the pauses between them.
struct Script {
    std::vector<Bytes> reads;  // an empty entry is a read of 0 bytes
    std::size_t next = 0;
    int pauses = 0;
    int calls = 0;
};

ReceiveSource ScriptSource(Script* script) {
    ReceiveSource s;
    s.context = script;
    s.receive = [](void* c, void* data, int length) -> int {
        auto* sc = static_cast<Script*>(c);
        ++sc->calls;
        if (sc->next >= sc->reads.size()) return plat::kSocketError;
        Bytes& chunk = sc->reads[sc->next];
        int n = std::min<int>(length, static_cast<int>(chunk.size()));
        std::copy(chunk.begin(), chunk.begin() + n, static_cast<std::uint8_t*>(data));
        chunk.erase(chunk.begin(), chunk.begin() + n);
        if (chunk.empty()) ++sc->next;
        return n;
    };
    s.pause = [](void* c) { ++static_cast<Script*>(c)->pauses; };
    return s;
}

}  // namespace

TEST_F(LinkClientTest, StatusCodesWithoutALinkOrBeforeInit) {
    std::uint8_t byte = 0;
    EXPECT_EQ(kLinkNoSocket, LinkSend(&byte, 1));
    EXPECT_EQ(kLinkNoSocket, LinkStartReceiver(kWindow, kResultMessage));
    EXPECT_EQ(kLinkNoSocket, LinkDisconnect(1));
    EXPECT_EQ(kLinkNoSocket, LinkRequestPanel());
    EXPECT_EQ(kLinkNoSocket, LinkSendDefaultLayout(0x300));
    LinkShutdown();
    EXPECT_EQ(kLinkNotInitialised, LinkStart(pair.client, kWindow, kResultMessage));
    EXPECT_FALSE(LinkIsOpen());
    LinkInit();
    EXPECT_TRUE(DrainPeer(pair.device).empty()) << "nothing may be sent without a link";
}

TEST_F(LinkClientTest, StartSendsThePanelRequestAndASecondStartChangesNothing) {
    StartLink();
    SocketPairFixture other;
    EXPECT_EQ(kLinkAlreadyOpen, LinkStart(other.client, kWindow, kResultMessage));
    EXPECT_EQ(pair.client, Link().socket.load());
    EXPECT_TRUE(DrainPeer(other.device).empty());
}

TEST_F(LinkClientTest, PingPendingTwiceReportsTheMissingReply) {
    StartLink();
    EXPECT_EQ(0, LinkSendPing());
    EXPECT_EQ(1, Link().pingPending.load());
    EXPECT_EQ(kLinkPingUnanswered, LinkSendPing());
    EXPECT_EQ(0, Link().pingPending.load());
    EXPECT_EQ(0, LinkSendPing()) << "the third call sends again";
    EXPECT_EQ(FrameHead(10, 2) + FrameHead(10, 2), ReadPeer(pair.device, 40));
    EXPECT_TRUE(DrainPeer(pair.device).empty());
}

TEST_F(LinkClientTest, AFailedGoodbyeKeepsTheLink) {
    StartLink();
    plat::SocketClose(pair.client);  // every send now fails
    EXPECT_EQ(kLinkSendFailed, LinkDisconnect(1));
    EXPECT_TRUE(LinkIsOpen());
    EXPECT_EQ(kLinkSendFailed, LinkSendPing());
    EXPECT_EQ(0, LinkDisconnect(0)) << "without the goodbye the link closes at once";
    EXPECT_FALSE(LinkIsOpen());
    pair.client = plat::kInvalidSocket;
}

TEST_F(LinkClientTest, CloseClearsPingAndTwoOfTheSessionFlags) {
    StartLink();
    Link().pingPending = 1;
    Link().sessionFlagA = Link().sessionFlagB = Link().sessionFlagC = 1;
    EXPECT_EQ(0, LinkClose());
    EXPECT_EQ(0, Link().pingPending.load());
    EXPECT_EQ(0, Link().sessionFlagA.load());
    EXPECT_EQ(0, Link().sessionFlagB.load());
    EXPECT_EQ(1, Link().sessionFlagC.load()) << "stay-open survives the close";
}

TEST(LinkReceive, PiecesAreJoinedWithAPauseAfterEachShortRead) {
    struct Case {
        std::vector<Bytes> reads;
        int pauses;
        std::int32_t result = 0;
    } cases[] = {
        {{U8({1, 2, 3, 4, 5, 6})}, 0},
        {{U8({1}), U8({2, 3}), U8({4, 5, 6})}, 2},
        {{U8({1, 2}), {}, {}, U8({3, 4, 5, 6})}, 3},  // empty reads are not the end
        {{U8({1, 2})}, 1, kLinkClosed},  // the source ends midway
    };
    for (auto& c : cases) {
        Script script{c.reads};
        ReceiveSource source = ScriptSource(&script);
        std::uint8_t buffer[6] = {};
        EXPECT_EQ(c.result, LinkReceive(source, buffer, 6));
        if (c.result == 0) {
            EXPECT_EQ(U8({1, 2, 3, 4, 5, 6}), Bytes(buffer, buffer + 6));
        }
        EXPECT_EQ(c.pauses, script.pauses);
    }
    Script none;
    ReceiveSource source = ScriptSource(&none);
    EXPECT_EQ(0, LinkReceive(source, nullptr, 0));
    EXPECT_EQ(0, none.calls) << "0 bytes do not touch the source";
}

TEST_F(LinkClientTest, AWorkerOfAnEarlierLinkNeverReadsALaterOne) {
    for (int round = 0; round < 20; ++round) {
        SocketPairFixture first;
        ASSERT_EQ(0, LinkStart(first.client, kWindow, kResultMessage));
        ReadPeer(first.device, 20);
        // Tear the first link down as the panel screen does, and reconnect at once.
        LinkDisconnect(0);
        first.CloseClient();
        SocketPairFixture second;
        ASSERT_EQ(0, LinkStart(second.client, kWindow, kResultMessage));
        ASSERT_EQ(FrameHead(1, 2), ReadPeer(second.device, 20));
        ASSERT_TRUE(SendPeer(second.device, FrameHead(8, 0)));
        unsigned message;
        ASSERT_TRUE(posts.Next(&message)) << "round " << round;
        EXPECT_EQ(4, Link().lastResult.load());
        EXPECT_EQ(FrameHead(12, 2), ReadPeer(second.device, 20));
        EXPECT_EQ(0u, posts.Pending()) << "the first link's worker posted nothing";
        LinkDisconnect(0);
        second.CloseClient();
        ASSERT_TRUE(WaitUntil([] { return !Link().workerRunning; }));
    }
}
