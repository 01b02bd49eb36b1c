// The microcontroller library, built natively, against the client's real link and store over a
// local socket pair: the panel as described, every value the client sets in the sketch's
// variable, every change of the sketch in the store, pings, garbage and a new client.
#include "Tremolanth.h"
#include "link/link_client.h"
#include "link/password_send.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/utf.h"
#include "tests/arduino/every_control.h"
#include "tests/arduino/socket_stream.h"
#include "tests/support/recorders.h"
#include "tests/support/temp_folder.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <sstream>
#include <string.h>

using namespace testing_support;
using namespace sketch;

namespace {

plat::WindowRef const kWindow = reinterpret_cast<plat::WindowRef>(0x5152);
constexpr std::size_t kSlots = kControls + 1;  // hidden Messages ahead of the controls

const ControlRecord& Control(std::uint32_t key) {
    static const ControlRecord none;
    const ControlRecord* r = FindControl(key);
    return r ? *r : none;
}

class ArduinoLinkTest : public ::testing::Test {
protected:
    void SetUp() override {
        Reset();
        ASSERT_EQ(0, LinkInit());
        Connect();
    }
    void TearDown() override {
        Disconnect();
        LinkShutdown();
    }
    void Connect() {
        int fds[2];
        ASSERT_EQ(0, ::socketpair(AF_UNIX, SOCK_STREAM, 0, fds));
        clientFd = fds[0];
        stream.Attach(fds[1]);
        client = plat::SocketAdopt(fds[0]);
        ASSERT_EQ(0, LinkStart(client, kWindow, kResultMessage));
        ASSERT_TRUE(Follow([this] { return Saw(2); })) << "no panel";
    }
    void Disconnect() {
        if (LinkIsOpen()) LinkDisconnect(0);
        plat::SocketClose(client);
        WaitUntil([] { return !Link().workerRunning; });
        unsigned stale = 0;
        while (posts.Pending() > 0) posts.Next(&stale);
        results.clear();
        if (stream.fd() >= 0) ::close(stream.fd());
        stream.Attach(-1);
    }
    bool Saw(std::int32_t result) const {
        return std::find(results.begin(), results.end(), result) != results.end();
    }
    bool Polled(std::uint8_t key) const {
        return std::find(polled.begin(), polled.end(), key) != polled.end();
    }
    // Runs the sketch's loop and the client's screen until done holds (checked under the
    // store's lock), within five seconds.
    bool Follow(const std::function<bool()>& done) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (std::chrono::steady_clock::now() < deadline) {
            if (const std::uint8_t key = device.poll()) polled.push_back(key);
            stream.Flush();
            unsigned message = 0;
            while (posts.Pending() > 0 && posts.Next(&message)) {
                const std::int32_t result = Link().lastResult;
                results.push_back(result);
                if (result != -1 && result != 3) {
                    WaitUntil([] { return !Link().workerRunning; });
                    LinkStartReceiver(kWindow, kResultMessage);
                }
            }
            {
                ControlsHold hold;
                if (done()) return true;
            }
            pollfd p{stream.fd(), POLLIN, 0};
            ::poll(&p, 1, 2);  // a short wait for the next bytes, the loop bounded by the deadline
        }
        return false;
    }
    void Set(std::uint32_t key, const void* value, std::size_t size) {
        ASSERT_EQ(0, SetControlValue(key, value, size));
        ASSERT_EQ(0, LinkSendPendingValues());
    }
    void SendRaw(const Bytes& bytes) {
        ASSERT_EQ(static_cast<ssize_t>(bytes.size()),
                  ::send(clientFd, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    }

    TempFolder folder;
    MessageBoxRecorder boxes;
    PostRecorder posts;
    SocketStream stream;
    Tremolanth device{stream, Describe};
    plat::SocketHandle client = plat::kInvalidSocket;
    int clientFd = -1;
    std::vector<std::int32_t> results;
    std::vector<std::uint8_t> polled;
};

}  // namespace

TEST_F(ArduinoLinkTest, ThePanelDecodesAsDescribed) {
    EXPECT_EQ(u"Uno Test", LinkPanelId());
    EXPECT_TRUE(device.connected());
    ControlsHold hold;
    const std::vector<ControlRecord>& records = Controls().records;
    ASSERT_EQ(kSlots + kControls, records.size());
    for (std::size_t i = 0; i < kSlots; ++i) {
        EXPECT_EQ(kTypeMessage, records[i].type) << i;
        EXPECT_TRUE(records[i].flags & kFlagHidden) << i;
        EXPECT_EQ(9u, records[i].maxLength) << "the longest message and its terminator";
    }
    struct Expected {
        std::uint32_t key;
        std::uint16_t type;
        std::u16string label;
        bool hidden;
    };
    const Expected table[] = {
        {kName, kTypeText, u"Name", false},          {kBlink, kTypeButton, u"Blink", false},
        {kLamp, kTypeCheckBox, u"Lamp", false},       {kSpeedLow, kTypeCheckBox, u"Low", false},
        {kSpeedHigh, kTypeCheckBox, u"High", false},  {kAlarm, kTypeDateTime, u"Alarm", false},
        {kSetPoint, kTypeNumber, u"Set point", false}, {kTemperature, kTypeNumber, u"Temperature", false},
        {kLog, kTypeChart, u"Log", false},            {kMode, kTypeList, u"Mode", false},
        {kData, kTypeBlob, u"Data", false},           {kLogo, kTypeImage, u"Logo", false},
        {kReport, kTypeFiles, u"Report", false},      {kAdvanced, kTypeSection, u"Advanced", false},
        {kOffset, kTypeNumber, u"Offset", true},      {kService, kTypePassword, u"Service", false},
        {kCalibrate, kTypeCheckBox, u"Calibrate", true},
    };
    for (std::size_t i = 0; i < std::size(table); ++i) {
        const Expected& e = table[i];
        const ControlRecord& r = records[kSlots + i];
        EXPECT_EQ(e.key, r.controlKey) << i;
        EXPECT_EQ(e.type, r.type) << e.key;
        EXPECT_EQ(e.label, r.label) << e.key;
        EXPECT_EQ(e.hidden, (r.flags & kFlagHidden) != 0) << e.key;
        // Rows show the whole title, and a value after it only where the type has one.
        EXPECT_EQ(static_cast<std::int32_t>(e.label.size()),
                  ReadDeviceSetting(e.key, kSettingLayoutTitleLength, -1)) << e.key;
        const bool valueText = e.type == kTypeText || e.type == kTypeDateTime ||
                               e.type == kTypeNumber || e.type == kTypeList;
        EXPECT_EQ(valueText ? 4 : 1, ReadDeviceSetting(e.key, kSettingLayoutValueShow, -1)) << e.key;
    }
    EXPECT_EQ(u"Uno", Control(kName).text.Text());
    EXPECT_EQ(12u, Control(kName).maxLength);
    EXPECT_NE(0u, Control(kSpeedLow).group);
    EXPECT_EQ(Control(kSpeedLow).group, Control(kSpeedHigh).group);
    EXPECT_EQ(0xFF, Control(kSpeedLow).checkByte);
    EXPECT_EQ(0, Control(kLamp).group);
    EXPECT_EQ(2030, Control(kAlarm).dateTime.year);
    EXPECT_EQ(u"%HH%:%mm%", Control(kAlarm).format);
    const ControlRecord& set = Control(kSetPoint);
    EXPECT_EQ(215, set.rawValue);
    EXPECT_EQ(50, set.minimum);
    EXPECT_EQ(300, set.maximum);
    EXPECT_EQ(-1, set.exponent);
    EXPECT_EQ(1, set.decimals);
    EXPECT_EQ(u"%f \u00B0C", set.format) << "UTF-8 in the sketch, 8-bit on the wire";
    EXPECT_EQ(kFlagVariant | kFlagMinimum | kFlagMaximum | 0x100000u, set.flags);
    EXPECT_EQ(0u, Control(kTemperature).flags & kFlagVariant) << "read only";
    const ChartData& chart = Control(kLog).chart;
    EXPECT_EQ(3u, chart.rowCapacity);
    EXPECT_EQ(2u, chart.seriesCount);
    EXPECT_EQ(12u, chart.table.size());
    EXPECT_EQ(6u, chart.textPart.size()) << "three 16-bit samples";
    EXPECT_EQ(std::u16string(u"In\0Out\0", 7), chart.seriesNames);
    EXPECT_EQ(3, ReadDeviceSetting(kLog, kSettingLayoutStyle, 0)) << "a data table";
    EXPECT_EQ(std::u16string(u"Off\0Heat\0Cool\0", 14), Control(kMode).items);
    EXPECT_EQ(3u, Control(kMode).itemCount);
    EXPECT_EQ(1, Control(kMode).selectedIndex);
    EXPECT_EQ(std::vector<std::uint8_t>({'B', 'M', 1, 2}), Control(kLogo).data);
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ArduinoLinkTest, EveryValueTheClientSetsArrivesInTheSketch) {
    const std::uint8_t on = 255, off = 0;
    const std::uint8_t when[8] = {5, 45, 6, 24, 2, 12, 0xE9, 0x07};
    const std::int32_t setTo = 250, mode2 = 2;
    const char16_t alice[] = u"Zo\u00EB";
    const std::uint8_t bytes[6] = {1, 2, 3, 4, 5, 6};
    struct Case {
        std::uint32_t key;
        const void* value;
        std::size_t size;
        std::function<bool()> arrived;
    };
    const Case table[] = {
        {kName, alice, sizeof alice, [] { return strcmp(name, "Zo\xEB") == 0; }},
        {kBlink, &on, 1, [] { return true; }},
        {kLamp, &on, 1, [] { return lamp; }},
        {kSpeedHigh, &on, 1, [] { return speed == 1; }},
        {kAlarm, when, 8, [] {
             return wakeUp.second == 5 && wakeUp.minute == 45 && wakeUp.hour == 6 && wakeUp.day == 24 &&
                    wakeUp.weekday == 2 && wakeUp.month == 12 && wakeUp.year == 2025;
         }},
        {kSetPoint, &setTo, 4, [] { return setPoint == 250; }},
        {kMode, &mode2, 4, [] { return mode == 2; }},
        {kData, bytes, 6, [] { return memcmp(data, "\1\2\3\4\5\6", 6) == 0; }},
        {kLogo, nullptr, 0, [] { return true; }},
        {kAdvanced, &on, 1, [] { return advanced; }},
        {kLamp, &off, 1, [] { return !lamp; }},
    };
    for (const Case& c : table) {
        polled.clear();
        Set(c.key, c.value, c.size);
        EXPECT_TRUE(Follow([&] { return Polled(static_cast<std::uint8_t>(c.key)); })) << c.key;
        EXPECT_TRUE(c.arrived()) << c.key;
    }
    // The section shows its controls; the radio group's other box was cleared by the client.
    EXPECT_TRUE(Follow([] { return !(Control(kOffset).flags & kFlagHidden); }));
    EXPECT_EQ(kTrmErrorNone, device.error());

    // Values past the control's limits: kept within them, and the client is told.
    const std::int32_t tooHigh = 999, noSuchItem = 7;
    Set(kSetPoint, &tooHigh, 4);
    EXPECT_TRUE(Follow([] { return setPoint == 300 && Control(kSetPoint).rawValue == 300; }));
    Set(kMode, &noSuchItem, 4);
    EXPECT_TRUE(Follow([] { return Control(kMode).selectedIndex == 2; }));
    EXPECT_EQ(2, mode);

    // The files control pushes its file.
    Set(kReport, nullptr, 0);
    EXPECT_TRUE(Follow([] { return Control(kReport).hasReceivedPath; }));
    std::ifstream in(plat::Utf16ToUtf8(Control(kReport).receivedPath));
    std::stringstream content;
    content << in.rdbuf();
    EXPECT_EQ(kReportText, content.str());
}

TEST_F(ArduinoLinkTest, TheSketchJudgesPasswordsAndTheyGuardWhatFollows) {
    ASSERT_EQ(0, SubmitPassword(kService, u"0000"));
    EXPECT_TRUE(Follow([this] { return Polled(kService); }));
    EXPECT_FALSE(service);
    ASSERT_EQ(0, SubmitPassword(kService, u"12345678901234567"));  // longer than the library reads
    polled.clear();
    EXPECT_TRUE(Follow([this] { return Polled(kService); }));
    EXPECT_FALSE(service);

    ASSERT_EQ(0, SubmitPassword(kService, u"1234"));
    EXPECT_TRUE(Follow([] {
        return Control(kService).loggedInByte == 1 && !(Control(kCalibrate).flags & kFlagHidden);
    }));
    EXPECT_TRUE(service);

    ASSERT_EQ(0, ChangePassword(kService, u"1234", u"4321"));
    EXPECT_TRUE(Follow([] { return strcmp(pin, "4321") == 0; }));
    ASSERT_EQ(0, LogOut(kService));
    EXPECT_TRUE(Follow([] {
        return Control(kService).loggedInByte == 0 && (Control(kCalibrate).flags & kFlagHidden);
    }));
    EXPECT_FALSE(service);
}

TEST_F(ArduinoLinkTest, EveryChangeOfTheSketchArrivesInTheStore) {
    strcpy(name, "Bench");
    lamp = true;
    speed = 1;
    wakeUp.hour = 22;
    setPoint = 180;
    temperature = -35;
    mode = 0;
    data[0] = 'z';
    advanced = true;
    for (std::uint8_t key : {kName, kLamp, kSpeedLow, kAlarm, kSetPoint, kTemperature, kMode,
                             kData, kAdvanced}) {
        device.send(key);
    }
    EXPECT_TRUE(Follow([] {
        return Control(kName).text.Text() == u"Bench" && Control(kLamp).checkByte == 255 &&
               Control(kSpeedLow).checkByte == 0 && Control(kSpeedHigh).checkByte == 255 &&
               Control(kAlarm).dateTime.hour == 22 && Control(kSetPoint).rawValue == 180 &&
               Control(kTemperature).rawValue == -35 && Control(kMode).selectedIndex == 0 &&
               Control(kData).data[0] == 'z' && Control(kAdvanced).sectionByte == 255 &&
               !(Control(kOffset).flags & kFlagHidden);
    }));

    // Four rows into a ring of three: the oldest is overwritten and the counter says where.
    for (int16_t i = 1; i <= 4; ++i) readings.addSampled(i, 10 * i, -i);
    device.send(kLog);
    EXPECT_TRUE(Follow([] { return static_cast<std::int32_t>(Control(kLog).chart.trailingWord) == -1; }));
    {
        ControlsHold hold;
        const std::vector<std::uint8_t>& table = Control(kLog).chart.table;
        EXPECT_EQ(std::vector<std::uint8_t>({40, 0, 20, 0, 30, 0, 0xFC, 0xFF, 0xFE, 0xFF, 0xFD, 0xFF}),
                  table);
    }

    device.hide(kLamp);
    EXPECT_TRUE(Follow([] { return (Control(kLamp).flags & kFlagHidden) != 0; }));
    device.show(kLamp);
    EXPECT_TRUE(Follow([] { return !(Control(kLamp).flags & kFlagHidden); }));

    // The message goes into the slot at the client's row count: every control but the
    // guarded one shows now.
    device.popup(kTooHot);
    const std::uint32_t slot = 0x100 + kControls - 1;
    EXPECT_TRUE(Follow([slot] {
        return Control(slot).text.Text() == u"Too hot!" && !(Control(slot).flags & kFlagHidden) &&
               (Control(slot).flags & kMaskMessageIcon) == TRM_ICON_EXCLAMATION;
    }));
}

TEST_F(ArduinoLinkTest, PingsGarbageBrokenFramesAndANewClient) {
    ASSERT_EQ(0, LinkSendPing());
    EXPECT_TRUE(Follow([this] { return Saw(5) && Link().pingPending == 0; }));

    const Bytes lampOn = FrameHead(7, 2) + U32(1) + U32(kLamp) + U32(1) + U8({255});
    struct Case {
        Bytes bytes;
        TrmError error;
    };
    const Case table[] = {
        {U8({1, 2, 3, 0x48, 0xEF, 0xF0, 0x48}), kTrmErrorNone},
        {FrameHead(99, 2), kTrmErrorUnknownType},
        {FrameHead(7, 2) + U32(1) + U32(kSetPoint) + U32(2) + U8({1, 2}), kTrmErrorItemSize},
        {FrameHead(7, 2) + U32(1) + U32(kSetPoint) + U32(0x7FFFFFFF) + U8({1, 2}), kTrmErrorItemSize},
        {FrameHead(7, 2) + U32(1) + U32(200) + U32(1) + U8({1}), kTrmErrorUnknownKey},
        {FrameHead(7, 2) + U32(3) + U32(kName) + U32(12) + Ascii("Mallory"), kTrmErrorCut},
    };
    for (const Case& c : table) {
        lamp = false;
        polled.clear();
        SendRaw(c.bytes + lampOn);
        EXPECT_TRUE(Follow([this] { return Polled(kLamp); })) << static_cast<int>(c.error);
        EXPECT_TRUE(lamp) << static_cast<int>(c.error);
        EXPECT_EQ(static_cast<int>(c.error), static_cast<int>(device.error()));
    }
    EXPECT_EQ(215, setPoint);
    EXPECT_EQ(0, name[sizeof name - 1]) << "the text keeps its terminator";

    // A client that vanishes mid-frame, and the next one.
    SendRaw(FrameHead(7, 2) + U32(2) + U32(kData) + U32(6) + Ascii("xy"));
    Disconnect();
    Connect();
    EXPECT_TRUE(device.connected());
    {
        ControlsHold hold;
        EXPECT_EQ(kSlots + kControls, Controls().records.size());
    }
    lamp = true;
    device.send(kLamp);
    EXPECT_TRUE(Follow([] { return Control(kLamp).checkByte == 255; }));
}
