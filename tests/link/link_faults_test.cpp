// What a broken, stalled or careless device does to the link: the link ends, never hangs.
#include "link/link_client.h"
#include "link/link_results.h"
#include "link/record_decoder.h"
#include "model/control_store.h"
#include "platform/lock.h"
#include "platform/post.h"
#include "platform/program_lock.h"
#include "platform/thread.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

#include <atomic>
#include <filesystem>
#include <mutex>
#include <thread>
#include <vector>

using namespace testing_support;

namespace {

plat::WindowRef const kWindow = reinterpret_cast<plat::WindowRef>(0x77);

std::atomic<int> g_closedEnds{0};
void CountEnds(WorkerOutcome outcome) {
    if (outcome == WorkerOutcome::kClosed) ++g_closedEnds;
}

// Wine's closesocket ends a connection in order even with a zero linger, so there the test
// cannot play a device that resets; real Windows and POSIX can.
bool CanResetFromHere() {
#ifdef _WIN32
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll == nullptr || GetProcAddress(ntdll, "wine_get_version") == nullptr;
#else
    return true;
#endif
}

bool ProgramLockBusy() {
    if (!plat::LockTryEnter(plat::ProgramLock())) return true;
    plat::LockLeave(plat::ProgramLock());
    return false;
}

// The worker is inside the stalled file: the file is made, its bytes are awaited.
bool PartOfTheFileArrived(const TempFolder& folder) {
    std::error_code ignored;
    return std::filesystem::exists(folder.Path() + "/received/f.bin", ignored);
}

// A file message for control 5: one file "f.bin" of 1000 bytes, of which 10 arrive.
Bytes StalledFile() {
    return FrameHead(17, 0) + U32(5) + U32(1) + U32(6) + Ascii("f.bin") + U8({0}) + U32(1000) +
           Bytes(10, 0xAB);
}

// A link over TCP on loopback (a reset needs a real connection), the test as the device.
class TcpLinkTest : public ::testing::Test {
protected:
    void SetUp() override {
        LinkInit();
        SetWorkerEndObserver(CountEnds);
        g_closedEnds = 0;
        std::uint16_t port = 0;
        listener = plat::SocketListenTcp("127.0.0.1", 0, &port);
        client = plat::SocketConnectTcp("127.0.0.1", port, 5000);
        device = plat::SocketAccept(listener);
        ASSERT_NE(plat::kInvalidSocket, device);
        ASSERT_EQ(0, LinkStart(client, kWindow, kResultMessage));
        ASSERT_EQ(FrameHead(1, 2), ReadPeer(device, 20));
    }
    void TearDown() override {
        plat::SocketClose(device);
        plat::SocketClose(client);
        plat::SocketClose(listener);
        if (LinkIsOpen()) LinkClose();
        WaitUntil([] { return !Link().workerRunning; });
        SetWorkerEndObserver(nullptr);
        LinkShutdown();
    }
    plat::SocketHandle listener = plat::kInvalidSocket;
    plat::SocketHandle client = plat::kInvalidSocket;
    plat::SocketHandle device = plat::kInvalidSocket;
    TempFolder folder;
    MessageBoxRecorder boxes;
    PostRecorder posts;
};

TEST_F(TcpLinkTest, AResetInTheMiddleOfAMessageEndsTheWorker) {
    if (!CanResetFromHere()) GTEST_SKIP() << "no reset can be sent under Wine";
    // The read-ahead has served part of the message when the reset comes: the worker must see
    // the error, not an endless run of empty reads.
    ASSERT_TRUE(SendPeer(device, StalledFile()));
    ASSERT_TRUE(WaitUntil([&] { return PartOfTheFileArrived(folder); }));
    plat::SocketReset(device);
    device = plat::kInvalidSocket;
    ASSERT_TRUE(WaitUntil([] { return g_closedEnds == 1 && !Link().workerRunning; }));
    EXPECT_TRUE(boxes.HasFault(520, "tmqbthppcvcomclt", 6)) << "a file in progress reports it";
    EXPECT_EQ(0u, posts.Pending());
}

TEST_F(TcpLinkTest, AResetInTheMiddleOfAValueUpdateEndsTheWorkerSilently) {
    if (!CanResetFromHere()) GTEST_SKIP() << "no reset can be sent under Wine";
    // Item one whole (an unknown key), item two cut in its data.
    ASSERT_TRUE(SendPeer(device, FrameHead(9, 0) + U32(2) + U32(99) + U32(1) + U8({7}) + U32(98) +
                                     U32(100) + Bytes(10, 1)));
    ASSERT_TRUE(WaitUntil([] { return Link().workerRunning == 1; }));
    plat::SocketReset(device);
    device = plat::kInvalidSocket;
    ASSERT_TRUE(WaitUntil([] { return g_closedEnds == 1 && !Link().workerRunning; }));
    EXPECT_EQ(0u, boxes.Count());
    EXPECT_EQ(0u, posts.Pending());
}

// A transfer that stalls holds nothing the screen needs: the store is free, a ping and a value
// go out behind it, and leaving says goodbye at once.
TEST_F(TcpLinkTest, AStalledTransferLeavesTheStoreFreeAndTheLinkAnswering) {
    ASSERT_TRUE(SendPeer(device, StalledFile()));
    ASSERT_TRUE(WaitUntil([&] { return PartOfTheFileArrived(folder); }));
    EXPECT_FALSE(ProgramLockBusy()) << "the transfer waits on the device outside the lock";
    EXPECT_EQ(kLinkOk, LinkSendPing());
    EXPECT_EQ(FrameHead(10, 2), ReadPeer(device, 20));

    std::atomic<bool> left{false};
    std::thread leave([&] {
        LinkStop();
        left = true;
    });
    const bool inTime = WaitUntil([&] { return left.load(); });
    if (inTime) {
        leave.join();
    } else {
        leave.detach();  // stuck for good: the test has failed
    }
    ASSERT_TRUE(inTime) << "leaving must not wait for the stalled worker";
    EXPECT_EQ(FrameHead(4, 2), ReadPeer(device, 20));
    EXPECT_FALSE(LinkIsOpen());
    plat::SocketClose(client);  // as the screen does after the goodbye
    EXPECT_TRUE(WaitUntil([] { return !Link().workerRunning; }));
    EXPECT_TRUE(boxes.WaitFor(plat::FaultBoxText(520, "tmqbthppcvcomclt", 6),
                              std::chrono::seconds(5)));
}

// A device that never reads: once its window is full, the worker's reply to its ping gives up
// after the send time and breaks the link, so the worker ends instead of hanging, and later
// sends fail at once.
TEST_F(TcpLinkTest, ADeviceThatNeverReadsBreaksTheLinkInsteadOfHangingItsSenders) {
    FillUntilFull(client);
    ASSERT_TRUE(SendPeer(device, FrameHead(8, 0)));  // a ping the worker must answer
    unsigned message = 0;
    ASSERT_TRUE(posts.Next(&message, std::chrono::milliseconds(kSendTimeoutMs + 5000)));
    EXPECT_EQ(kResultDevicePing, Link().lastResult.load());
    ASSERT_EQ(kLinkOk, LinkStartReceiver(kWindow, kResultMessage));  // as the screen does
    EXPECT_TRUE(WaitUntil([] { return g_closedEnds == 1 && !Link().workerRunning; }));
    EXPECT_EQ(kLinkSendFailed, LinkSendPing()) << "the link is broken for every sender";
}

TEST_F(TcpLinkTest, LeavingAQuietLinkSaysGoodbye) {
    EXPECT_EQ(kLinkOk, LinkStop());
    EXPECT_EQ(FrameHead(4, 2), ReadPeer(device, 20));
    EXPECT_FALSE(LinkIsOpen());
}

TEST_F(TcpLinkTest, TheScreenIsAskedForTheWaitCursorAroundAPanel) {
    static std::mutex mutex;
    static std::vector<unsigned> seen;
    seen.clear();
    plat::PostHook previous = plat::SetPostHook([](plat::WindowRef, unsigned message) {
        std::lock_guard<std::mutex> hold(mutex);
        seen.push_back(message);
    });
    ASSERT_TRUE(SendPeer(device, PanelFrame({})));
    ASSERT_TRUE(WaitUntil([] {
        std::lock_guard<std::mutex> hold(mutex);
        return seen.size() == 3;
    }));
    plat::SetPostHook(previous);
    EXPECT_EQ((std::vector<unsigned>{kPanelReadingMessage, kPanelReadMessage, kResultMessage}),
              seen);
}

TEST(LinkStart, AReceiveThreadThatCannotStartIsNotALinkClosedAtStart) {
    LinkInit();
    plat::SocketHandle pair[2];
    ASSERT_EQ(0, plat::SocketPair(pair));
    plat::FailThreadStartsForTest(11);
    EXPECT_EQ(kLinkThreadFailed, LinkStart(pair[0], kWindow, kResultMessage));
    plat::FailThreadStartsForTest(0);
    EXPECT_FALSE(LinkIsOpen()) << "the screen closes the socket and may connect again";
    EXPECT_EQ(kLinkNoSocket, LinkStartReceiver(kWindow, kResultMessage));
    plat::SocketClose(pair[0]);
    plat::SocketClose(pair[1]);
    LinkShutdown();
}

// A label, a format or a caption is one text: a device that sends its terminator along must
// not hide the rest of the row. Value buffers keep every byte.
TEST(RecordTexts, EndAtTheirFirstZeroWhileValueBuffersKeepEveryByte) {
    const Bytes name = Utf16(u"Name") + U8({0, 0}) + Utf16(u"junk");
    ControlRecord r;
    const Bytes number = CommonPart('N', 0x4, 1) + U32(4) + U32(7) +
                         AttributeBlock({{'Z', name}, {'f', Utf16(u"%f V") + U8({0, 0})}});
    ASSERT_EQ(DecodeStatus::kOk, DecodeRecord(number.data(), number.size(), r));
    EXPECT_EQ(u"Name", r.label);
    EXPECT_EQ(u"%f V", r.format);

    const Bytes chart = CommonPart('M', 0x4, 2) + U32(4) + U32(0) +
                        AttributeBlock({{'f', Utf16(u"s") + U8({0, 0}) + Utf16(u"x")},
                                        {'F', Utf16(u"d") + U8({0, 0})},
                                        {'a', Utf16(u"cap") + U8({0, 0})},
                                        {'A', Utf16(u"one") + U8({0, 0}) + Utf16(u"two")}});
    ASSERT_EQ(DecodeStatus::kOk, DecodeRecord(chart.data(), chart.size(), r));
    EXPECT_EQ(u"s", r.chart.sampleUnits);
    EXPECT_EQ(u"d", r.chart.dataUnits);
    EXPECT_EQ(u"cap", r.chart.axisCaption);
    EXPECT_EQ(std::u16string(u"one\0two", 7), r.chart.seriesNames) << "names stay a list";

    const Bytes text = CommonPart('T', 0x4, 3) + U32(6) + Utf16(u"a") + U8({0, 0}) + Utf16(u"b") +
                       AttributeBlock({{'Z', name}, {'m', U32(6)}});
    ASSERT_EQ(DecodeStatus::kOk, DecodeRecord(text.data(), text.size(), r));
    EXPECT_EQ(u"Name", r.label);
    EXPECT_EQ(u"a", r.text.Text()) << "shown to its first zero";
    EXPECT_EQ(Utf16(u"a") + U8({0, 0}) + Utf16(u"b"), Bytes(r.text.Data(), r.text.Data() + 6));
}

}  // namespace
