// The demo device serving a real client link of the core library over loopback TCP: the
// panel received and decoded, values sent and echoed, goodbye, and the next client served.
#include "device/demo/demo_assets.h"
#include "device/demo/demo_device.h"
#include "device/server.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/utf.h"
#include "tests/support/recorders.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <thread>

using namespace testing_support;
using namespace demo;

namespace {

plat::WindowRef const kWindow = reinterpret_cast<plat::WindowRef>(0x5151);

class DemoLoopbackTest : public ::testing::Test {
protected:
    void SetUp() override {
        DemoOptions options;
        options.tickMilliseconds = 40;
        options.devicePingTicks = 5;
        options.pingSeconds = 7;
        device = MakeDemoDevice(options);
        device.now = [] { return dev::DateTime{1, 2, 3, 4, 5, 6, 2024}; };
        device.log = [this](const std::string& line) {
            std::lock_guard<std::mutex> hold(logMutex);
            log.push_back(line);
        };
        listener = dev::ServerListen("127.0.0.1", 0, &port);
        ASSERT_NE(plat::kInvalidSocket, listener);
        server = std::thread([this] { dev::RunServer(listener, DemoHandlers(device), stop); });
        LinkInit();
        Connect();
    }
    void TearDown() override {
        Disconnect(false);
        LinkShutdown();
        stop = true;
        server.join();
        plat::SocketClose(listener);
    }
    // Connects a client and follows the identity, the settings and the panel in that order.
    void Connect() {
        socket = plat::SocketConnectTcp("127.0.0.1", port, 5000);
        ASSERT_NE(plat::kInvalidSocket, socket);
        ASSERT_EQ(0, LinkStart(socket, kWindow, kResultMessage));
        EXPECT_EQ(1, NextResult());
        EXPECT_EQ(11, NextResult());
        EXPECT_EQ(2, NextResult());
    }
    void Disconnect(bool goodbye) {
        if (LinkIsOpen() && (!goodbye || LinkDisconnect(1) != 0)) LinkDisconnect(0);
        plat::SocketClose(socket);
        WaitUntil([] { return !Link().workerRunning; });
        // Results of the old link posted before its last worker ended are of no interest.
        unsigned stale = 0;
        while (posts.Pending() > 0) posts.Next(&stale);
    }
    // The next link result, the worker restarted after it as the panel screen does.
    std::int32_t NextResult() {
        unsigned message = 0;
        if (!posts.Next(&message)) return -1000;
        const std::int32_t result = Link().lastResult;
        if (result != -1 && result != 3) {
            WaitUntil([] { return !Link().workerRunning; });
            EXPECT_EQ(0, LinkStartReceiver(kWindow, kResultMessage));
        }
        return result;
    }
    // Follows results until one satisfies the condition (checked under the store's lock).
    bool FollowUntil(const std::function<bool(std::int32_t)>& done, int maxResults = 400) {
        for (int i = 0; i < maxResults; ++i) {
            const std::int32_t result = NextResult();
            if (result == -1000) return false;
            ControlsHold hold;
            if (done(result)) return true;
        }
        return false;
    }
    bool LogHas(const std::string& text) {
        return WaitUntil([&] {
            std::lock_guard<std::mutex> hold(logMutex);
            return std::any_of(log.begin(), log.end(),
                               [&](const std::string& l) { return l.find(text) != l.npos; });
        });
    }
    static const ControlRecord& Control(std::uint32_t key) {
        static const ControlRecord none;
        const ControlRecord* r = FindControl(key);
        return r ? *r : none;
    }
    void Send(std::uint32_t key, const void* data, std::size_t size) {
        ASSERT_EQ(0, SetControlValue(key, data, size));
        ASSERT_EQ(0, LinkSendPendingValues());
    }

    TempFolder folder;
    MessageBoxRecorder boxes;
    PostRecorder posts;
    DemoDevice device;
    plat::SocketHandle listener = plat::kInvalidSocket;
    plat::SocketHandle socket = plat::kInvalidSocket;
    std::uint16_t port = 0;
    std::atomic<bool> stop{false};
    std::thread server;
    std::mutex logMutex;
    std::vector<std::string> log;
};

}  // namespace

TEST_F(DemoLoopbackTest, IdentitySettingsAndPanelArriveAndDecode) {
    EXPECT_EQ(u"Tremolanth Demo", LinkPanelId());
    EXPECT_EQ(1, Link().sessionFlagA.load()) << "pings allowed";
    EXPECT_EQ(7, ReadDeviceSetting(0, kSettingPingSeconds, 3));
    EXPECT_EQ(3, ReadDeviceSetting(kKeyReadings, kSettingLayoutStyle, 0));
    {
        ControlsHold hold;
        EXPECT_EQ(DemoRecords(MakeDemoState()).size(), Controls().records.size());
        EXPECT_EQ(u"Ready", Control(kKeyStatus).text.Text()) << "UTF-16 text";
        EXPECT_EQ(u"World", Control(kKeyName).text.Text()) << "8-bit text";
        EXPECT_EQ(300, Control(kKeySetPoint).maximum);
        EXPECT_EQ(std::u16string(u"Temperature\0Set point\0", 22), Control(kKeyLog).chart.seriesNames);
        EXPECT_TRUE(Control(kKeyReport).flags & kFlagHidden) << "hidden while logged out";
    }
    EXPECT_TRUE(LogHas("\"type\":14")) << "the panel asked for an acknowledgement";
    // Live data follows: the chart fills with the device's samples.
    EXPECT_TRUE(FollowUntil([](std::int32_t) {
        return static_cast<std::int32_t>(Control(kKeyLog).chart.trailingWord) >= 2;
    }));
    ControlsHold hold;
    EXPECT_EQ(2024, Control(kKeyLog).chart.textPart[6] | (Control(kKeyLog).chart.textPart[7] << 8));
}

TEST_F(DemoLoopbackTest, ValuesAreSentLoggedAndEchoed) {
    const std::int32_t tooHigh = 400;
    Send(kKeySetPoint, &tooHigh, 4);
    const char16_t name[] = u"Alice";
    Send(kKeyName, name, sizeof name);
    EXPECT_TRUE(LogHas("{\"key\":9,\"n\":4,\"hex\":\"90010000\"}"));
    EXPECT_TRUE(LogHas("{\"key\":2,\"n\":32,\"hex\":\"416c69636500"));
    EXPECT_TRUE(FollowUntil([](std::int32_t) {
        return Control(kKeySetPoint).rawValue == 300 && Control(kKeyName).text.Text() == u"Alice" &&
               Control(kKeyStatus).text.Text() == u"Name set to Alice";
    }));
}

TEST_F(DemoLoopbackTest, GoodbyeEndsTheSessionAndTheNextClientIsServed) {
    Disconnect(true);
    EXPECT_TRUE(LogHas("{\"session\":1,\"type\":4,\"flags\":2}"));
    Connect();
    EXPECT_TRUE(LogHas("{\"session\":2,\"type\":1,"));
    EXPECT_TRUE(boxes.Boxes().empty()) << plat::Utf16ToUtf8(boxes.Boxes()[0].text);
}
