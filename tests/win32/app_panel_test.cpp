// The panel screen against a fake device on a loopback socket.
#include "app/app_state.h"
#include "shell/view_messages.h"
#include "app/device_table.h"
#include "app/panel_screen.h"
#include "panel/win32/panel_timers.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/settings_store.h"
#include "platform/browser.h"
#include "shell/phone_shell.h"
#include "res/resource.h"
#include "tests/support/temp_folder.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

namespace app_testing {
namespace {

using namespace testing_support;

const Bytes kGoodbye = FrameHead(4, 2);

class PanelTest : public ProgramTest {
protected:
    // Connected, identified under a name of its own (so settings start empty), with a panel.
    void Open(const std::vector<Bytes>& records, std::uint16_t identityFlags = 0) {
        StartWithFakeDevice();
        ConnectFake();
        std::string unique = UniqueName("Panel");
        name = std::u16string(unique.begin(), unique.end());
        // Timer 2 ticks only when a test posts it.
        plat::SettingsWrite(name, DeviceSettingName(0, kSettingPingSeconds), 3600);
        SendIdentity(name, identityFlags);
        Send(PanelFrame(records));
        ASSERT_TRUE(WaitForPanelRows(static_cast<int>(records.size())));
    }
    void ExpectClosed() {
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }));
        EXPECT_EQ(-1, App().currentDevice);
        EXPECT_EQ(plat::kInvalidSocket, Devices().socket);
        EXPECT_TRUE(IsWindowVisible(DeviceList()));
    }
    void Tick() { PostMessageW(PanelScreen(), WM_TIMER, 2, 0); }
    std::u16string name;
};

TEST_F(PanelTest, PanelArrivesAsRowsUnderTheDevicesNameAndFastKeysSelectThem) {
    std::vector<Bytes> records = {ButtonRecord(1, u"Start"), SectionRecord(2, 0, u"Door")};
    for (std::uint32_t i = 3; i <= 12; ++i) records.push_back(ButtonRecord(i, u"B"));
    Open(records);
    EXPECT_EQ(0u, ColumnTexts(PanelListView(), 0)[0].find(L" Start"));
    wchar_t caption[128] = {};
    GetWindowTextW(Shell().mainWindow, caption, 128);
    EXPECT_EQ(std::wstring(name.begin(), name.end()), caption);
    EXPECT_EQ(L"Done", ShellSoftKeyLabel(PanelScreen(), kLeftSoftKey));
    EXPECT_EQ(L"Menu", ShellSoftKeyLabel(PanelScreen(), kRightSoftKey));
    EXPECT_EQ(0u, boxes.Count());
    // '*' arrives as VK_F8 and '#' as VK_F9; the keypad types digits.
    const std::pair<WPARAM, int> keys[] = {{'3', 2},         {VK_NUMPAD5, 4}, {'0', 10},
                                           {VK_MULTIPLY, 9}, {VK_F9, 11},     {'1', 0}};
    for (const auto& [key, row] : keys) {
        PostKey(PanelListView(), key);
        Sync();
        EXPECT_EQ(row, SelectedRow(PanelListView())) << key;
    }
}

TEST_F(PanelTest, EmptyPanelSaysSoAndKeepsTheScreen) {
    Open({});
    EXPECT_TRUE(boxes.WaitFor(u"The control panel has no controls!", std::chrono::seconds(5)));
    EXPECT_EQ(static_cast<unsigned>(MB_ICONASTERISK), boxes.Boxes()[0].flags);
    EXPECT_TRUE(PanelScreenOpen());
    // The next message is still read: reception goes on.
    Send(PanelFrame({ButtonRecord(1, u"B")}));
    EXPECT_TRUE(WaitForPanelRows(1));
}

TEST_F(PanelTest, UnintelligibleDataStopsReception) {
    Open({ButtonRecord(1, u"B")});
    Send(FrameHead(7, 0));  // a type no device sends
    ASSERT_TRUE(boxes.WaitFor(
        u"This program does not know what to do with the data supplied by the remote device.",
        std::chrono::seconds(5)));
    Sync();
    EXPECT_TRUE(WaitUntil([] { return Link().workerRunning == 0; }));
    EXPECT_TRUE(PanelScreenOpen());
}

TEST_F(PanelTest, DoneAndTheLeftSoftKeyLetHeldSectionsGoOneAtATimeThenBackCloses) {
    Open({SectionRecord(1, 255, u"Upper"), ButtonRecord(2, u"B"), SectionRecord(3, 255, u"Lower")});
    for (std::uint32_t expected : {3u, 1u}) {
        if (expected == 3) PostCommand(PanelScreen(), IDC_DONE);
        else PostKey(PanelListView(), VK_F1);
        // A value message for the bottom-most held section, which is now off.
        ASSERT_EQ(FrameHead(7, 2), ReadFromClient(20)) << expected;
        DrainPeer(device);
        Sync();
        std::uint8_t value = 1;
        std::size_t size = 1;
        GetControlValue(expected, &value, &size);
        EXPECT_EQ(0, value) << expected;
        EXPECT_TRUE(PanelScreenOpen());
    }
    PostCommand(PanelScreen(), IDCANCEL);  // Back acts as Done
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    ExpectClosed();
}

// An editor stand-in on the test's thread, which records the close request.
bool g_editorClosed = false;
LRESULT CALLBACK EditorProc(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == kCloseViewsMessage) g_editorClosed = true;
    return DefWindowProcW(window, message, w, l);
}
struct Editor {
    Editor() {
        g_editorClosed = false;
        WNDCLASSW wc{};
        wc.lpfnWndProc = EditorProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = L"TmqTestEditor";
        RegisterClassW(&wc);
        Shell().currentDialog = window = CreateWindowW(L"TmqTestEditor", L"", 0, 0, 0, 1, 1,
                                                     HWND_MESSAGE, nullptr, wc.hInstance, nullptr);
    }
    ~Editor() {
        Shell().currentDialog = nullptr;
        DestroyWindow(window);
    }
    HWND window;
};
// Waits while answering the messages the program sends to the editor.
bool PumpUntil(const std::function<bool()>& condition) {
    return WaitUntil([&] {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        return condition();
    });
}

TEST_F(PanelTest, SessionEndClosesTheEditorAndTheScreen) {
    Open({ButtonRecord(1, u"B")});
    Editor editor;
    Send(FrameHead(1, 0));
    EXPECT_TRUE(PumpUntil([] { return g_editorClosed; }));
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    ExpectClosed();
}

TEST_F(PanelTest, SessionEndWithStayOpenKeepsBothAndClosesTheSocket) {
    Open({ButtonRecord(1, u"B")}, 0x10);
    {
        Editor editor;
        Send(FrameHead(1, 0));
        EXPECT_EQ(kGoodbye, ReadFromClient(20));
        ASSERT_TRUE(PumpUntil([] { return Devices().socket == plat::kInvalidSocket; }));
        Sync();
        EXPECT_FALSE(g_editorClosed);
        EXPECT_TRUE(PanelScreenOpen());
        EXPECT_EQ(-1, App().currentDevice);
    }
    // Done still leaves, without a link to say goodbye on.
    PostCommand(PanelScreen(), IDC_DONE);
    ExpectClosed();
}

TEST_F(PanelTest, AnsweredPingsKeepTheLinkUnwantedOnesAreNotSentAndAnUnansweredOneDisconnects) {
    Open({ButtonRecord(1, u"B")});
    ASSERT_TRUE(WaitUntil([] { return PanelMarks().pingTimerRunning; }));
    for (int tick = 0; tick < 2; ++tick) {
        Tick();
        EXPECT_EQ(FrameHead(10, 2), ReadFromClient(20));
        Send(FrameHead(11, 0));
        ASSERT_TRUE(WaitUntil([] { return Link().pingPending == 0; }));
    }
    SendIdentity(name, 0x2);  // pings not wanted
    ASSERT_TRUE(WaitUntil([] { return Link().sessionFlagA == 0; }));
    Sync();
    Tick();
    Sync();
    EXPECT_TRUE(ClientSentNothingMore());
    EXPECT_TRUE(PanelScreenOpen());
    SendIdentity(name);  // wanted again
    ASSERT_TRUE(WaitUntil([] { return Link().sessionFlagA == 1; }));
    // Two ticks of timer 2: the first pings, the second finds the ping unanswered.
    Tick();
    EXPECT_EQ(FrameHead(10, 2), ReadFromClient(20));
    Tick();
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    ExpectClosed();
}

TEST_F(PanelTest, DefaultLayoutAndReloadSendTheirRequests) {
    Open({ButtonRecord(1, u"B")});
    PostCommand(PanelScreen(), IDC_DEFAULT_LAYOUT);
    EXPECT_EQ(FrameHead(18, 2) + U32(0x300), ReadFromClient(24));
    Send(FrameHead(15, 0));  // reload: the client asks for the panel again
    EXPECT_EQ(FrameHead(1, 2), ReadFromClient(20));
}

std::vector<std::u16string> g_launched;
void RecordLaunch(const std::u16string& argument) { g_launched.push_back(argument); }

TEST_F(PanelTest, ReceivedFilesForTheBrowserAreOpened) {
    Open({ButtonRecord(1, u"B")});
    ControlRecord file;
    file.type = kTypeFiles;
    file.flags = 0x00100000;
    file.receivedPath = u"C:\\Temp\\my page.htm";
    file.hasReceivedPath = true;
    file.valueChanged = 1;
    std::vector<ControlRecord> records(4, file);
    records[1].flags = 0x00200000;  // not for the browser
    records[2].type = kTypeBlob;
    records[3].valueChanged = 0;    // an older file, not part of this message
    SwapInControls(std::move(records));
    g_launched.clear();
    plat::SetBrowserHook(RecordLaunch);
    LaunchReceivedFiles();
    LaunchReceivedFiles();  // the mark is spent
    plat::SetBrowserHook(nullptr);
    EXPECT_EQ(std::vector<std::u16string>{u"file:///C:/Temp/my%20page.htm"}, g_launched);
}

TEST_F(PanelTest, MenuBarFailureClosesTheScreenAndTheSocket) {
    StartWithFakeDevice();
    ShellFailMenuBarsForTest(true);
    PostKey(DeviceListView(), '1');
    ASSERT_TRUE(boxes.WaitFor(u"Menubar failed", std::chrono::seconds(5)));
    ShellFailMenuBarsForTest(false);
    Sync();
    EXPECT_EQ(plat::kInvalidSocket, Devices().socket);
    EXPECT_EQ(-1, App().currentDevice);
    EXPECT_TRUE(IsWindowVisible(DeviceList()));
}

}  // namespace
}  // namespace app_testing
