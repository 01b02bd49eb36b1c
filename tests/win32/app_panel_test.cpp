// The panel screen against a fake device on a loopback socket.
#include "app/app_state.h"
#include "app/app_texts.h"
#include "app/device_table.h"
#include "app/panel_screen.h"
#include "panel/win32/panel_timers.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "platform/browser.h"
#include "shell/phone_shell.h"
#include "res/resource.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

namespace app_testing {
namespace {

using namespace testing_support;

Bytes NumberRecord(std::uint32_t key, std::int32_t value) {
    return CommonPart('N', 0x4, key) + U32(4) + U32(static_cast<std::uint32_t>(value)) +
           AttributeBlock({{'Z', Utf16(u"N")}});
}
Bytes MessageRecord(std::uint32_t key, const std::u16string& text) {
    return CommonPart('X', 0x4, key) + U32(static_cast<std::uint32_t>(text.size() * 2)) +
           Utf16(text) + AttributeBlock({{'Z', Utf16(u"M")}, {'m', U32(64)}});
}
// One layout update: the flags word, then what the rows do not read.
Bytes LayoutFrame(std::uint32_t key, std::uint16_t flags) {
    return FrameHead(16, 0) + U32(1) + U32(key) + U32(8) + U16(flags) + U8({0, 0, 0, 0, 0, 0});
}

class PanelTest : public ProgramTest {
protected:
    void Tick() { PostMessageW(PanelScreen(), WM_TIMER, 2, 0); }
};

TEST_F(PanelTest, RowsUnderTheDevicesNameFastKeysAndUpdatesThatRefreshHideShowAndAnnounce) {
    std::vector<Bytes> records = {NumberRecord(1, 5)};
    for (std::uint32_t i = 2; i <= 30; ++i) records.push_back(ButtonRecord(i, u"B"));
    records.push_back(MessageRecord(31, u"Tank empty"));
    OpenPanel(records, 0, 30);
    HWND list = PanelListView();
    wchar_t caption[128] = {};
    GetWindowTextW(Shell().mainWindow, caption, 128);
    EXPECT_EQ(std::wstring(panelName.begin(), panelName.end()), caption);
    EXPECT_EQ(L"Done", ShellSoftKeyLabel(PanelScreen(), kLeftSoftKey));
    // '*' arrives as VK_F8 and '#' as VK_F9; the keypad types digits.
    const std::pair<WPARAM, int> keys[] = {
        {'3', 2}, {VK_NUMPAD5, 4}, {VK_MULTIPLY, 9}, {VK_F9, 11}};
    for (const auto& [key, row] : keys) {
        PostKey(list, key);
        Sync();
        EXPECT_EQ(row, SelectedRow(list)) << key;
    }
    EXPECT_EQ(L"#", ColumnTexts(list, 1)[11]);
    EXPECT_EQ(L"", ColumnTexts(list, 1)[12]);
    RECT inside;  // the desktop's scroll bar is wider than the handset's: no sideways bar
    GetClientRect(list, &inside);
    EXPECT_LE(ListView_GetColumnWidth(list, 0) + ListView_GetColumnWidth(list, 1), inside.right);

    Send(FrameHead(9, 0) + U32(1) + U32(1) + U32(4) + U32(42));
    EXPECT_TRUE(WaitUntil([&] { return ColumnTexts(list, 0)[0] == L" 42"; }));
    Send(LayoutFrame(2, 0x1));  // hidden
    EXPECT_TRUE(WaitForPanelRows(29));
    Send(LayoutFrame(2, 0));
    Send(LayoutFrame(30, 0x10));  // the last row into view
    EXPECT_TRUE(WaitForPanelRows(30));
    EXPECT_TRUE(WaitUntil([&] { return ListView_GetTopIndex(list) > 0; }));
    EXPECT_EQ(0u, boxes.Count());
    Send(LayoutFrame(31, 0));  // the Message stands at the row count: announced
    EXPECT_TRUE(boxes.WaitFor(u"Tank empty", std::chrono::seconds(5)));
}

TEST_F(PanelTest, ActivatingARadioBoxSendsItAndRedrawsItsGroup) {
    const auto radio = [](std::uint32_t key, int value) {
        return CommonPart('G', 0x4, key) + U32(1) + U8({value}) +
               AttributeBlock({{'Z', Utf16(u"R")}, {'r', U32(7)}});
    };
    OpenPanel({radio(1, 255), radio(2, 0)});
    SelectRow(1);
    PostCommand(PanelScreen(), IDOK);
    EXPECT_EQ(FrameHead(7, 2), ReadFromClient(20));
    DrainPeer(device);
    Sync();
    EXPECT_EQ(6, RowImage(PanelListView(), 0));  // off
    EXPECT_EQ(5, RowImage(PanelListView(), 1));  // on
}

TEST_F(PanelTest, EmptyPanelSaysSoAndKeepsTheScreen) {
    OpenPanel({});
    EXPECT_TRUE(boxes.WaitFor(u"The control panel has no controls!", std::chrono::seconds(5)));
    EXPECT_EQ(static_cast<unsigned>(MB_ICONASTERISK), boxes.Boxes()[0].flags);
    Send(PanelFrame({ButtonRecord(1, u"B")}));  // reception goes on
    EXPECT_TRUE(WaitForPanelRows(1));
}

TEST_F(PanelTest, UnintelligibleDataStopsReception) {
    OpenPanel({ButtonRecord(1, u"B")});
    Send(FrameHead(7, 0));  // a type no device sends
    ASSERT_TRUE(boxes.WaitFor(
        u"This program does not know what to do with the data supplied by the remote device.",
        std::chrono::seconds(5)));
    EXPECT_TRUE(WaitUntil([] { return Link().workerRunning == 0; }));
    EXPECT_TRUE(PanelScreenOpen());
}

TEST_F(PanelTest, DoneAndTheLeftSoftKeyLetHeldSectionsGoOneAtATimeThenBackCloses) {
    OpenPanel({SectionRecord(1, 255, u"Up"), ButtonRecord(2, u"B"), SectionRecord(3, 255, u"Low")});
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

TEST_F(PanelTest, AnsweredPingsKeepTheLinkUnwantedOnesAreNotSentAndAnUnansweredOneDisconnects) {
    OpenPanel({ButtonRecord(1, u"B")});
    ASSERT_TRUE(WaitUntil([] { return PanelMarks().pingTimerRunning; }));
    Tick();
    EXPECT_EQ(FrameHead(10, 2), ReadFromClient(20));
    Send(FrameHead(11, 0));
    ASSERT_TRUE(WaitUntil([] { return Link().pingPending == 0; }));
    SendIdentity(panelName, 0x2);  // pings not wanted
    ASSERT_TRUE(WaitUntil([] { return Link().sessionFlagA == 0; }));
    Sync();
    Tick();
    Sync();
    EXPECT_TRUE(ClientSentNothingMore());
    SendIdentity(panelName);  // wanted again
    ASSERT_TRUE(WaitUntil([] { return Link().sessionFlagA == 1; }));
    // The first tick pings, the second finds the ping unanswered.
    Tick();
    EXPECT_EQ(FrameHead(10, 2), ReadFromClient(20));
    Tick();
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    ExpectClosed();
}

TEST_F(PanelTest, DefaultLayoutAndReloadSendTheirRequests) {
    OpenPanel({ButtonRecord(1, u"B")});
    PostCommand(PanelScreen(), IDC_DEFAULT_LAYOUT);
    EXPECT_EQ(FrameHead(18, 2) + U32(0x300), ReadFromClient(24));
    Send(FrameHead(15, 0));  // reload: the client asks for the panel again
    EXPECT_EQ(FrameHead(1, 2), ReadFromClient(20));
}

std::vector<std::u16string> g_launched;
bool RecordLaunch(const std::u16string& argument) {
    g_launched.push_back(argument);
    return true;
}

TEST(ReceivedFiles, OnlyNewDocumentsForTheBrowserAreOpenedOnce) {
    testing_support::MessageBoxRecorder boxes;
    ControlRecord file;
    file.type = kTypeFiles;
    file.flags = 0x00100000;
    file.receivedPath = u"C:\\Temp\\my page.htm";
    file.hasReceivedPath = true;
    file.valueChanged = 1;
    std::vector<ControlRecord> records(5, file);
    records[1].flags = 0x00200000;  // not for the browser
    records[2].type = kTypeBlob;
    records[3].valueChanged = 0;    // an older file, not part of this message
    records[4].receivedPath = u"C:\\Temp\\setup.exe";  // never opened: it would run
    SwapInControls(std::move(records));
    g_launched.clear();
    plat::SetBrowserHook(RecordLaunch);
    LaunchReceivedFiles();
    LaunchReceivedFiles();  // the mark is spent
    plat::SetBrowserHook(nullptr);
    SwapInControls({});
    EXPECT_EQ(std::vector<std::u16string>{u"file:///C:/Temp/my%20page.htm"}, g_launched);
    ASSERT_EQ(1u, boxes.Count());
    EXPECT_EQ(kUnintelligibleText, boxes.Boxes()[0].text);
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
