#include "tests/win32/app_fixture.h"

#include "app/device_inquiry.h"
#include "app/device_table.h"
#include "app/program.h"
#include "link/link_client.h"
#include "model/device_settings.h"
#include "platform/settings_store.h"
#include "panel/win32/panel_timers.h"
#include "tests/support/temp_folder.h"

#include <commctrl.h>

#include <atomic>
#include <chrono>

namespace app_testing {

using namespace testing_support;

namespace {

Neighbourhood g_neighbourhood;

std::int32_t FakeInquiry(int, int maxDevices, std::vector<FoundDevice>* found) {
    for (const auto& device : g_neighbourhood.bluetooth) {
        if (static_cast<int>(found->size()) == maxDevices) break;
        found->push_back(device);
    }
    return g_neighbourhood.bluetoothResult;
}

std::vector<plat::SerialPortName> NoSerialPorts() { return {}; }

}  // namespace

std::vector<FoundDevice> NamedDevices(int count) {
    std::vector<FoundDevice> devices;
    for (int i = 1; i <= count; ++i) {
        devices.push_back({L"Device " + std::to_wstring(i), 0x1000u + static_cast<unsigned>(i)});
    }
    return devices;
}

void ProgramTest::SetUp() {
    listener = plat::SocketListenTcp("127.0.0.1", 0, &port);
    ASSERT_NE(plat::kInvalidSocket, listener);
}

void SetBluetoothResult(std::int32_t result) { g_neighbourhood.bluetoothResult = result; }

void SetBluetoothDevices(std::vector<FoundDevice> devices) {
    g_neighbourhood.bluetooth = std::move(devices);
}

void ProgramTest::TearDown() {
    plat::SocketClose(device);
    device = plat::kInvalidSocket;
    if (program_.joinable()) {
        // WM_QUIT ends every modal loop and then the main loop.
        if (!ended_) PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
        EXPECT_TRUE(WaitForEnd());
        program_.join();
    }
    plat::SocketClose(listener);
    listener = plat::kInvalidSocket;
    SetDeviceSourcesForTest({});
    SetEnvironmentVariableW(L"TREMOLANTH_DEVICES", nullptr);
    Devices().count = 0;
}

void ProgramTest::Start(const Neighbourhood& neighbourhood) {
    g_neighbourhood = neighbourhood;
    DeviceSources sources;
    sources.inquiry = FakeInquiry;
    if (!neighbourhood.machineSerialPorts) sources.serialPorts = NoSerialPorts;
    SetDeviceSourcesForTest(sources);
    SetEnvironmentVariableW(L"TREMOLANTH_DEVICES", neighbourhood.networkDevices.empty()
                                                         ? nullptr
                                                         : neighbourhood.networkDevices.c_str());
    App() = AppState{};
    Shell() = ShellState{};
    PanelMarks() = PanelTimerMarks{};
    ended_ = false;
    exitCode_ = -1000;
    threadId_ = 0;
    program_ = std::thread([this] {
        threadId_ = GetCurrentThreadId();
        exitCode_ = RunProgram(GetModuleHandleW(nullptr), SW_SHOWNORMAL);
        ended_ = true;
    });
    WaitUntil([this] { return ended_ || (DeviceList() && IsWindowVisible(DeviceList())); });
}

void ProgramTest::StartWithFakeDevice(const std::wstring& name) {
    Start({{}, 10050, name + L"=127.0.0.1:" + std::to_wstring(port)});
    ASSERT_TRUE(DeviceList());
}

bool ProgramTest::WaitForEnd() {
    return WaitUntil([this] { return ended_.load(); }, std::chrono::seconds(10));
}

void ProgramTest::ConnectFake(int row) {
    PostKey(DeviceListView(), '1' + row);
    ASSERT_EQ(1, plat::SocketWaitReadable(listener, 5000));
    device = plat::SocketAccept(listener);
    ASSERT_NE(plat::kInvalidSocket, device);
    ASSERT_EQ(FrameHead(1, 2), ReadPeer(device, 20));
    ASSERT_TRUE(WaitUntil([this] { return PanelScreenOpen(); }));
}

void ProgramTest::SendIdentity(const std::u16string& name, std::uint16_t extraFlags) {
    Send(FrameHead(2, static_cast<std::uint16_t>(0x1 | extraFlags)) +
         U32(static_cast<std::uint32_t>(name.size() * 2)) + Utf16(name) + U32(0));
}

void ProgramTest::OpenPanel(const std::vector<Bytes>& records, std::uint16_t identityFlags,
                            int rows) {
    StartWithFakeDevice();
    ConnectFake();
    const std::string unique = UniqueName("Panel");
    panelName.assign(unique.begin(), unique.end());
    plat::SettingsWrite(panelName, DeviceSettingName(0, kSettingPingSeconds), 3600);
    SendIdentity(panelName, identityFlags);
    Send(PanelFrame(records));
    ASSERT_TRUE(WaitForPanelRows(rows < 0 ? static_cast<int>(records.size()) : rows));
}

void ProgramTest::ExpectClosed() {
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }));
    EXPECT_EQ(-1, App().currentDevice);
    EXPECT_EQ(plat::kInvalidSocket, Devices().socket);
    EXPECT_TRUE(IsWindowVisible(DeviceList()));
}

bool ProgramTest::WaitForPanelRows(int rows) {
    return WaitUntil([&] {
        return PanelScreenOpen() && ListView_GetItemCount(PanelListView()) == rows;
    });
}

namespace {
constexpr WPARAM kSyncMarker = 0x5EC7;
std::atomic<bool> g_markerSeen{false};
LRESULT CALLBACK SeeMarker(int code, WPARAM removal, LPARAM lParam) {
    auto* message = reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && removal == PM_REMOVE && message->message == WM_NULL &&
        message->wParam == kSyncMarker) {
        g_markerSeen = true;
    }
    return CallNextHookEx(nullptr, code, removal, lParam);
}
}  // namespace

void ProgramTest::Sync() {
    // Messages leave the queue in order, each after the one before was handled: when the
    // marker leaves, everything posted before it has been handled.
    DWORD thread = threadId_;
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, SeeMarker, nullptr, thread);
    g_markerSeen = false;
    PostThreadMessageW(thread, WM_NULL, kSyncMarker, 0);
    EXPECT_TRUE(WaitUntil([] { return g_markerSeen.load(); }));
    UnhookWindowsHookEx(hook);
}

std::vector<std::wstring> ColumnTexts(HWND list, int column) {
    std::vector<std::wstring> texts;
    int count = ListView_GetItemCount(list);
    for (int i = 0; i < count; ++i) {
        wchar_t text[512] = {};
        ListView_GetItemText(list, i, column, text, 512);
        texts.emplace_back(text);
    }
    return texts;
}

int SelectedRow(HWND list) { return ListView_GetNextItem(list, -1, LVNI_SELECTED); }

int RowImage(HWND list, int row) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    ListView_GetItem(list, &item);
    return item.iImage;
}

std::wstring DialogText(HWND dialog, int id) {
    wchar_t text[256] = {};
    GetDlgItemTextW(dialog, id, text, 256);
    return text;
}

Bytes SectionRecord(std::uint32_t key, std::uint8_t value, const std::u16string& label) {
    return CommonPart('S', 0x4, key) + U32(1) + U8({value}) + AttributeBlock({{'Z', Utf16(label)}});
}

Bytes ButtonRecord(std::uint32_t key, const std::u16string& label) {
    return CommonPart('B', 0x4, key) + U32(1) + U8({0}) + AttributeBlock({{'Z', Utf16(label)}});
}

}  // namespace app_testing
