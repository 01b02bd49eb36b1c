// The whole program in the test process: its message loop on a thread of its own, the test
// on the main thread finding its windows, posting keys and commands, and playing the device
// on a loopback socket. Message boxes and browser launches are recorded.
#pragma once

#include "app/app_state.h"
#include "app/bluetooth.h"
#include "res/resource.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"

#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace app_testing {

using testing_support::Bytes;

// The device table's source for one run: Bluetooth answers, the TREMOLANTH_DEVICES text and
// the machine's serial ports (none, unless the run asks for the ones Wine has).
struct Neighbourhood {
    std::vector<FoundDevice> bluetooth;
    std::int32_t bluetoothResult = 0;
    std::wstring networkDevices;  // empty: the variable is unset
    bool machineSerialPorts = false;
};

std::vector<FoundDevice> NamedDevices(int count);
// The Bluetooth result and devices of the following searches.
void SetBluetoothResult(std::int32_t result);
void SetBluetoothDevices(std::vector<FoundDevice> devices);

class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the program and waits (bounded) for the device list or for the program's end.
    void Start(const Neighbourhood& neighbourhood);
    // Starts it with one network device, the test's fake device, and waits for the list.
    void StartWithFakeDevice(const std::wstring& name = L"Fake");
    bool WaitForEnd();
    int ExitCode() const { return exitCode_; }

    // Connects to row `row` of the device list with its digit key, and takes the connection
    // on the fake device, reading the panel request.
    void ConnectFake(int row = 0);
    // Plays the device's identity (header flags 0x1 set: the text is UTF-16).
    void SendIdentity(const std::u16string& name, std::uint16_t extraFlags = 0);
    // Connects the fake device under a name of its own (so settings start empty, and pings
    // wait an hour: timer 2 ticks only when a test posts it) and waits for the panel's rows
    // (-1: one a record).
    void OpenPanel(const std::vector<Bytes>& records, std::uint16_t identityFlags = 0,
                   int rows = -1);
    // The panel screen gone and the list back, without a device.
    void ExpectClosed();
    void Send(const Bytes& bytes) { ASSERT_TRUE(testing_support::SendPeer(device, bytes)); }
    // The next frame head the client sends, and what follows it.
    Bytes ReadFromClient(std::size_t n) { return testing_support::ReadPeer(device, n); }
    bool ClientSentNothingMore() { return testing_support::DrainPeer(device).empty(); }

    HWND DeviceList() const { return Shell().deviceListWindow; }
    HWND PanelScreen() const { return Shell().panelScreen; }
    HWND DeviceListView() const { return GetDlgItem(DeviceList(), IDC_DEVICE_LIST); }
    HWND PanelListView() const { return GetDlgItem(PanelScreen(), IDC_PANEL_LIST); }
    bool PanelScreenOpen() const {
        return IsWindow(PanelScreen()) && IsWindowVisible(PanelScreen());
    }
    bool WaitForPanelRows(int rows);
    void SelectRow(int row) const {
        ListView_SetItemState(PanelListView(), row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    }

    // Lets the program's thread handle everything posted before this call.
    void Sync();
    void PostKey(HWND window, WPARAM key) const { PostMessageW(window, WM_KEYDOWN, key, 1); }
    void PostCommand(HWND window, int command) const {
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(command, 0), 0);
    }

    std::u16string panelName;
    testing_support::MessageBoxRecorder boxes;
    plat::SocketHandle listener = plat::kInvalidSocket;
    plat::SocketHandle device = plat::kInvalidSocket;
    std::uint16_t port = 0;

private:
    std::thread program_;
    int exitCode_ = -1000;
    std::atomic<bool> ended_{false};
    std::atomic<DWORD> threadId_{0};
};

// Rows of a list view, as text of one column.
std::vector<std::wstring> ColumnTexts(HWND list, int column);
int SelectedRow(HWND list);
int RowImage(HWND list, int row);
std::wstring DialogText(HWND dialog, int id);
inline const Bytes kGoodbye = testing_support::FrameHead(4, 2);

// Record bodies of a panel description, UTF-16 texts.
Bytes SectionRecord(std::uint32_t key, std::uint8_t value, const std::u16string& label);
Bytes ButtonRecord(std::uint32_t key, const std::u16string& label);

}  // namespace app_testing
