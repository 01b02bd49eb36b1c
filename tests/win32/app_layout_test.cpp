// The Control Layout and Pings dialogs, opened from the panel screen's menu against a fake
// device.
#include "model/device_settings.h"
#include "panel/fast_keys.h"
#include "panel/row_image_index.h"
#include "panel/win32/panel_timers.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

namespace app_testing {
namespace {

using namespace testing_support;

constexpr WPARAM kProbeMarker = 0x71AE;
std::atomic<int> g_timerProbe{-1};
LRESULT CALLBACK ProbePingTimer(int code, WPARAM w, LPARAM l) {
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(l);
    if (code == HC_ACTION && message->message == WM_NULL && message->wParam == kProbeMarker) {
        g_timerProbe = KillTimer(message->hwnd, kPingTimer) ? 1 : 0;
    }
    return CallNextHookEx(nullptr, code, w, l);
}

class SettingsDialogTest : public ProgramTest {
protected:
    // Runs a menu command for the row and waits for the dialog it opens.
    HWND OpenDialog(int command, int row = 0) {
        SelectRow(row);
        PostCommand(PanelScreen(), command);
        EXPECT_TRUE(WaitUntil([] { return IsWindowVisible(Shell().currentDialog) != FALSE; }));
        return Shell().currentDialog;
    }
    void Close(HWND dialog, int command) {
        PostCommand(dialog, command);
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(dialog); }));
        Sync();
    }
    HWND Focus() {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(PanelScreen(), nullptr), &info);
        return info.hwndFocus;
    }
    // Whether timer 2 runs, asked on the screen's own thread (the probe stops it).
    bool PingTimerRuns() {
        DWORD thread = GetWindowThreadProcessId(PanelScreen(), nullptr);
        HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, ProbePingTimer, nullptr, thread);
        g_timerProbe = -1;
        SendMessageW(PanelScreen(), WM_NULL, kProbeMarker, 0);
        UnhookWindowsHookEx(hook);
        return g_timerProbe == 1;
    }
};

const std::vector<Bytes> kRecords = {
    CommonPart('N', 0x10004, 1) + U32(4) + U32(7) + AttributeBlock({{'Z', Utf16(u"Speed")}}),
    ButtonRecord(2, u"Go")};

TEST_F(SettingsDialogTest, LayoutChosenOnDoneChangesTheRowsAndOutlivesTheConnection) {
    OpenPanel(kRecords);
    for (int row : {0, 1}) {
        HWND dialog = OpenDialog(IDC_CONTROL_LAYOUT, row);
        ASSERT_TRUE(dialog);
        EXPECT_TRUE(WaitUntil([&] { return Focus() == GetDlgItem(dialog, IDC_LAYOUT_FAST_KEY); }));
        EXPECT_EQ(row == 0 ? 2 : 1, SendDlgItemMessageW(dialog, IDC_LAYOUT_STYLE, LB_GETCOUNT, 0, 0));
        SendDlgItemMessageW(dialog, IDC_LAYOUT_STYLE, LB_SETCURSEL, row == 0 ? 1 : 0, 0);
        SendDlgItemMessageW(dialog, IDC_LAYOUT_FAST_KEY, LB_SETCURSEL, 5, 0);  // both on '5'
        SendDlgItemMessageW(dialog, IDC_LAYOUT_VALUE_SHOW, LB_SETCURSEL, 4, 0);
        SetDlgItemTextW(dialog, IDC_LAYOUT_TITLE_LENGTH, L"3");
        Close(dialog, IDC_DONE);
    }
    auto expectChosenLayout = [&] {
        EXPECT_EQ((std::vector<std::wstring>{L" Spe: 7", L" Go: Go"}),
                  ColumnTexts(PanelListView(), 0));
        EXPECT_EQ(kImageNumberNoSpin, RowImage(PanelListView(), 0));
        EXPECT_EQ(1, FastKeys().rows[4]);  // the later row has the key
    };
    expectChosenLayout();

    PostCommand(PanelScreen(), IDC_DONE);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }));
    plat::SocketClose(device);
    ConnectFake();
    SendIdentity(panelName);
    Send(PanelFrame(kRecords));
    ASSERT_TRUE(WaitForPanelRows(2));
    expectChosenLayout();
}

TEST_F(SettingsDialogTest, BackLeavesTheLayoutAloneExceptInTheTitleLengthWhereItDeletes) {
    OpenPanel(kRecords);
    HWND dialog = OpenDialog(IDC_CONTROL_LAYOUT);
    ASSERT_TRUE(WaitUntil([&] { return Focus() == GetDlgItem(dialog, IDC_LAYOUT_FAST_KEY); }));
    SendDlgItemMessageW(dialog, IDC_LAYOUT_FAST_KEY, LB_SETCURSEL, 3, 0);
    Close(dialog, IDCANCEL);
    EXPECT_EQ(0, HasDeviceSetting(1, kSettingLayoutFastKey));

    dialog = OpenDialog(IDC_CONTROL_LAYOUT);
    HWND titleLength = GetDlgItem(dialog, IDC_LAYOUT_TITLE_LENGTH);
    SetWindowTextW(titleLength, L"12");
    PostMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(titleLength), TRUE);
    ASSERT_TRUE(WaitUntil([&] { return Focus() == titleLength; }));
    PostCommand(dialog, IDCANCEL);  // the focused field's text was selected: all of it goes
    Sync();
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_EQ(L"", DialogText(dialog, IDC_LAYOUT_TITLE_LENGTH));
    Close(dialog, IDC_DONE);
    EXPECT_EQ(1, HasDeviceSetting(1, kSettingLayoutTitleLength));
    EXPECT_EQ(0, ReadDeviceSetting(1, kSettingLayoutTitleLength, -1));
}

TEST_F(SettingsDialogTest, PingsOffStopsTheTimerAndLockedCommandsDoNothing) {
    OpenPanel(kRecords);
    ASSERT_TRUE(WaitUntil([] { return PanelMarks().pingTimerRunning; }));
    for (std::uint32_t lock : {kSettingPingsLocked, kSettingLayoutLocked}) {
        WriteDeviceSetting(0, lock, 1);
        PostCommand(PanelScreen(), lock == kSettingPingsLocked ? IDC_PINGS : IDC_CONTROL_LAYOUT);
        Sync();
        EXPECT_EQ(nullptr, Shell().currentDialog) << lock;
        WriteDeviceSetting(0, lock, 0);
    }

    HWND dialog = OpenDialog(IDC_PINGS);
    EXPECT_EQ(BST_CHECKED, IsDlgButtonChecked(dialog, IDC_PINGS_ENABLE));
    EXPECT_EQ(L"3600", DialogText(dialog, IDC_PINGS_SECONDS));
    CheckDlgButton(dialog, IDC_PINGS_ENABLE, BST_UNCHECKED);
    Close(dialog, IDC_DONE);
    EXPECT_EQ(0, ReadDeviceSetting(0, kSettingPingSeconds, -1));
    EXPECT_FALSE(PingTimerRuns());
    EXPECT_TRUE(ClientSentNothingMore());


    dialog = OpenDialog(IDC_PINGS);
    CheckDlgButton(dialog, IDC_PINGS_ENABLE, BST_CHECKED);
    SetDlgItemTextW(dialog, IDC_PINGS_SECONDS, L"900");
    Close(dialog, IDC_DONE);
    EXPECT_EQ(900, ReadDeviceSetting(0, kSettingPingSeconds, -1));
    EXPECT_TRUE(PingTimerRuns());
}

}  // namespace
}  // namespace app_testing
