#include "app/panel_screen.h"

#include "app/about_box.h"
#include "app/app_state.h"
#include "app/control_activation.h"
#include "app/device_table.h"
#include "app/row_images.h"
#include "app/wait_cursor.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "panel/fast_keys.h"
#include "panel/win32/control_rows.h"
#include "panel/win32/layout_dialog.h"
#include "panel/win32/panel_timers.h"
#include "panel/win32/pings_dialog.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/list_view.h"
#include "shell/phone_shell.h"
#include "shell/product_boxes.h"
#include "shell/view_messages.h"

#include <commctrl.h>

#include <string>

namespace {

constexpr std::uint32_t kDefaultLayoutRequest = 0x300;

HWND ListOf(HWND dialog) { return GetDlgItem(dialog, IDC_PANEL_LIST); }

void ShowUnableToConnect(HWND owner) {
    std::wstring text = L"Unable to connect to ";
    int index = App().currentDevice;
    if (index >= 0 && index < kMaxDevices) text += Devices().entries[index].name;
    ShowProductBox(owner, text, MB_ICONHAND);
}

// Every way out of the screen leaves the socket closed and no current device.
void Abandon(HWND dialog, INT_PTR result) {
    if (LinkIsOpen()) LinkDisconnect(0);
    CloseDeviceSocket(Devices());
    App().currentDevice = -1;
    EndDialog(dialog, result);
}

void SetUpList(HWND dialog) {
    HWND list = ListOf(dialog);
    RECT client;
    GetClientRect(dialog, &client);
    MoveWindow(list, 0, 0, client.right, client.bottom, FALSE);
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(Shell().listFont), TRUE);
    HIMAGELIST images = CreateRowImages(RGB(0, 255, 0));
    ClearFastKeys(FastKeys());
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    ListView_SetBkColor(list, CLR_NONE);
    ListView_SetImageList(list, images, LVSIL_SMALL);
    int screenWidth = Shell().listWidth > 0 ? Shell().listWidth : client.right;
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_WIDTH;
    column.fmt = LVCFMT_LEFT;
    column.cx = screenWidth - 20;
    ListView_InsertColumn(list, 0, &column);
    column.cx = 14;
    ListView_InsertColumn(list, 1, &column);
}

// The wait cursor while the worker reads a panel description; the worker asks for it.
struct PanelReading {
    bool active = false;
    HCURSOR saved = nullptr;
};
PanelReading g_reading;

void OnPanelReading(bool reading) {
    if (reading == g_reading.active) return;
    g_reading.active = reading;
    if (reading) {
        BeginWaitCursor(&g_reading.saved);
    } else {
        EndWaitCursor(g_reading.saved);
    }
}

// Keeps the wait cursor over the screen while the panel is read (the list would set its own).
INT_PTR OnSetCursor(HWND dialog) {
    if (!g_reading.active) return FALSE;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return NotifyResult(dialog, TRUE);
}

BOOL OnInitDialog(HWND dialog) {
    OnPanelReading(false);  // a screen that ended while a panel was read left it on
    PanelMarks().sendPending = false;  // no send timer runs for a screen not yet open
    HCURSOR saved;
    BeginWaitCursor(&saved);
    Shell().panelScreen = dialog;
    if (ConnectToDevice(Devices(), dialog, App().currentDevice) == plat::kInvalidSocket) {
        ShowUnableToConnect(dialog);
        Abandon(dialog, -1);
        EndWaitCursor(saved);
        return TRUE;
    }
    std::u16string name = LinkPanelId();
    SetWindowTextW(dialog, reinterpret_cast<const wchar_t*>(name.c_str()));
    SetWindowTextW(Shell().deviceListWindow, reinterpret_cast<const wchar_t*>(name.c_str()));
    if (!ShellStartDialog(dialog, {IDM_PANEL, DialogRole::kScreen, 0})) {
        CloseDeviceSocket(Devices());
        App().currentDevice = -1;
        EndWaitCursor(saved);
        return TRUE;
    }
    SetUpList(dialog);
    ShellStartFocusTimer(dialog);
    std::int32_t rc = LinkStart(Devices().socket, dialog, kResultMessage);
    if (rc != kLinkOk) {
        ShowUnableToConnect(dialog);
        Abandon(dialog, rc);
    }
    EndWaitCursor(saved);
    return TRUE;
}

// Keys 1-12 of the fast-key table: '1'-'9', '*' (VK_F8), '0', '#' (VK_F9).
int FastKeyIndex(WORD key) {
    if (key >= '1' && key <= '9') return key - '1';
    if (key == VK_F8) return 9;
    if (key == '0') return 10;
    if (key == VK_F9) return 11;
    return -1;
}

void OnKeyDown(HWND dialog, const NMLVKEYDOWN* key) {
    if (key->wVKey == VK_LEFT || key->wVKey == VK_RIGHT) {
        StepSelectedRow(dialog, key->wVKey == VK_RIGHT);
        return;
    }
    int index = FastKeyIndex(key->wVKey);
    if (index < 0) return;
    HWND list = ListOf(dialog);
    int row = FastKeys().rows[index];
    SelectAndFocusRow(list, row);
    ListView_EnsureVisible(list, row, FALSE);
    ActivateSelectedRow(dialog);
}

void EditPings(HWND dialog) {
    if (ReadDeviceSetting(0, kSettingPingsLocked, 0) == 0) {
        EditPingInterval();
        SetPingTimer(dialog, PingSeconds());
    }
    SetFocus(ListOf(dialog));
}

void EditLayoutOfSelectedRow(HWND dialog) {
    if (ReadDeviceSetting(0, kSettingLayoutLocked, 0) != 0) return;
    HWND list = ListOf(dialog);
    std::uint32_t id = 0;
    ControlRecord record;
    bool found = false;
    {
        ControlsHold hold;
        int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
        if (row >= 0) {
            id = RowControlId(list, row);
            found = CopyControl(id, &record);
        }
    }
    if (!found) return;
    EditControlLayout(id, record);
    FillControlRows(dialog);
}

BOOL OnCommand(HWND dialog, int id) {
    switch (id) {
    case IDOK:
        ActivateSelectedRow(dialog);
        return TRUE;
    case IDCANCEL:
    case IDC_DONE:
        LeavePanel(dialog);
        return TRUE;
    case IDC_ABOUT:
        ShowAboutBox();
        SetFocus(ListOf(dialog));
        return TRUE;
    case IDC_PINGS:
        EditPings(dialog);
        return TRUE;
    case IDC_CONTROL_LAYOUT:
        EditLayoutOfSelectedRow(dialog);
        return TRUE;
    case IDC_DEFAULT_LAYOUT:
        LinkSendDefaultLayout(kDefaultLayoutRequest);
        return TRUE;
    default:
        return FALSE;
    }
}

void OnTimer(HWND dialog, UINT_PTR timer) {
    if (ShellTakeFocus(dialog, timer, ListOf(dialog))) return;
    switch (timer) {
    case kPingTimer:
        OnPingTimer();
        break;
    case kSendTimer:
        OnSendTimer(dialog);
        break;
    default:
        break;
    }
}

INT_PTR CALLBACK PanelScreenProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case kResultMessage:
        OnLinkResult(dialog);
        return TRUE;
    case kPanelReadingMessage:
        OnPanelReading(true);
        return TRUE;
    case kPanelReadMessage:
        OnPanelReading(false);
        return TRUE;
    case WM_SETCURSOR:
        return OnSetCursor(dialog);
    case kCloseViewsMessage:
        EndDialog(dialog, 0);
        return TRUE;
    case WM_TIMER:
        OnTimer(dialog, wParam);
        return TRUE;
    case WM_NOTIFY:
        if (const NMLVKEYDOWN* key = ListKeyDown(lParam, IDC_PANEL_LIST)) {
            OnKeyDown(dialog, key);
            return TRUE;
        }
        return FALSE;
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    default:
        return FALSE;
    }
}

}  // namespace

INT_PTR OpenPanelScreen(HWND deviceList, int deviceIndex) {
    App().currentDevice = deviceIndex;
    Shell().deviceListWindow = deviceList;
    SetWindowTextW(deviceList, Devices().entries[deviceIndex].name);
    return ShellRunDialog(IDD_PANEL, PanelScreenProc);
}
