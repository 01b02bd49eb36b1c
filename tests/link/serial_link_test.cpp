// The link over a serial port: a pseudo-terminal pair stands in for a board on a cable, the
// client on the port's side through the serial transport, the test as the device on the other.
#include "link/link_client.h"
#include "link/link_results.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "platform/serial_port.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <string>

using namespace testing_support;

namespace {

plat::WindowRef const kWindow = reinterpret_cast<plat::WindowRef>(0x5e);
std::atomic<int> g_closedEnds{0};

class PtyLinkTest : public ::testing::Test {
protected:
    void SetUp() override {
        LinkInit();
        g_closedEnds = 0;
        SetWorkerEndObserver([](WorkerOutcome outcome) {
            if (outcome == WorkerOutcome::kClosed) ++g_closedEnds;
        });
        ASSERT_EQ(0, openpty(&master_, &slave_, nullptr, nullptr, nullptr));
        port_ = plat::SerialOpen(ttyname(slave_), 115200);
        ASSERT_NE(plat::kInvalidSocket, port_);
        ASSERT_TRUE(plat::IsSerialPort(port_));
        ASSERT_EQ(kLinkOk, LinkStart(port_, kWindow, kResultMessage));
    }
    void TearDown() override {
        Pull();
        if (LinkIsOpen()) LinkClose();
        plat::SocketClose(port_);
        WaitUntil([] { return !Link().workerRunning; });
        SetWorkerEndObserver(nullptr);
        LinkShutdown();
    }
    // The device's end: bytes into the port, and the next n bytes out of it.
    void Write(const Bytes& bytes) {
        ASSERT_EQ(static_cast<ssize_t>(bytes.size()), ::write(master_, bytes.data(), bytes.size()));
    }
    Bytes Read(std::size_t n, int timeoutMilliseconds = 5000) {
        Bytes got;
        const auto deadline =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
        while (got.size() < n && std::chrono::steady_clock::now() < deadline) {
            pollfd p{master_, POLLIN, 0};
            if (::poll(&p, 1, 50) <= 0) continue;
            std::uint8_t buffer[256];
            const ssize_t r = ::read(master_, buffer, std::min(sizeof buffer, n - got.size()));
            if (r <= 0) break;
            got.insert(got.end(), buffer, buffer + r);
        }
        return got;
    }
    // Waits for the worker's result and restarts it, as the screen does.
    std::int32_t Result() {
        unsigned message = 0;
        if (!posts.Next(&message)) return -1000;
        const std::int32_t result = Link().lastResult;
        EXPECT_EQ(kLinkOk, LinkStartReceiver(kWindow, kResultMessage));
        return result;
    }
    // The cable is pulled: both ends of the pair go.
    void Pull() {
        if (master_ >= 0) ::close(master_);
        if (slave_ >= 0) ::close(slave_);
        master_ = slave_ = -1;
    }

    MessageBoxRecorder boxes;
    PostRecorder posts;
    int master_ = -1, slave_ = -1;
    plat::SocketHandle port_ = plat::kInvalidSocket;
};

}  // namespace

TEST_F(PtyLinkTest, APanelArrivesAndAValueGoesOutByteExact) {
    ASSERT_EQ(FrameHead(1, 2), Read(20));
    Write(FrameHead(2, 1) + U32(6) + Utf16(u"Uno") + U32(0) +
          PanelFrame({CommonPart('G', 0x4, 3) + U32(1) + U8({0}) +
                      AttributeBlock({{'Z', Utf16(u"Lamp")}})}));
    EXPECT_EQ(kResultIdentity, Result());
    EXPECT_EQ(kResultPanel, Result());
    EXPECT_EQ(u"Uno", LinkPanelId());
    ASSERT_EQ(kTypeCheckBox, GetControlType(3));
    const std::uint8_t on = 255;
    SetControlValue(3, &on, 1);
    EXPECT_EQ(kLinkOk, LinkSendPendingValues());
    EXPECT_EQ(FrameHead(7, 2) + U32(1) + U32(3) + U32(1) + U8({255}), Read(33));
}

// A board that restarts as its port opens misses the first request: it is asked again. A port
// that goes away under the reader ends the worker, without a result and without a box.
TEST_F(PtyLinkTest, ASilentDeviceIsAskedAgainAndAPulledPortEndsTheWorker) {
    ASSERT_EQ(FrameHead(1, 2), Read(20));
    EXPECT_EQ(FrameHead(1, 2), Read(20, 5000)) << "the request, again";
    Pull();
    EXPECT_TRUE(WaitUntil([] { return g_closedEnds == 1 && !Link().workerRunning; }));
    EXPECT_EQ(0u, posts.Pending());
    EXPECT_EQ(0u, boxes.Count());
}

// A port that does not exist, is busy or cannot be configured is not opened.
TEST(SerialOpen, MissingBusyAndUnconfigurablePortsAreRefused) {
    int master = -1, slave = -1;
    ASSERT_EQ(0, openpty(&master, &slave, nullptr, nullptr, nullptr));
    const std::string tty = ttyname(slave);
    const plat::SocketHandle first = plat::SerialOpen(tty, 9600);
    ASSERT_NE(plat::kInvalidSocket, first);
    const char* notATty = "/proc/self/cmdline";
    const struct {
        std::string path;
        std::uint32_t baud;
        const char* why;
    } refused[] = {{tty, 9600, "busy"},
                   {"/dev/no-such-port", 115200, "missing"},
                   {notATty, 115200, "not a tty"}};
    for (const auto& r : refused) {
        EXPECT_EQ(plat::kInvalidSocket, plat::SerialOpen(r.path, r.baud)) << r.why;
    }
    plat::SocketClose(first);
    EXPECT_EQ(plat::kInvalidSocket, plat::SerialOpen(tty, 12345)) << "a speed it does not take";
    const plat::SocketHandle again = plat::SerialOpen(tty, 9600);
    EXPECT_NE(plat::kInvalidSocket, again) << "free once closed";
    plat::SocketClose(again);
    ::close(master);
    ::close(slave);
}

#endif
