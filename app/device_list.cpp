#include "app/device_list.h"

#include "app/about_box.h"
#include "app/app_state.h"
#include "app/device_inquiry.h"
#include "app/panel_screen.h"
#include "app/row_images.h"
#include "platform/message_box.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/list_view.h"
#include "shell/product_boxes.h"

#include <commctrl.h>

#include <string>

namespace {


HWND ListOf(HWND dialog) { return GetDlgItem(dialog, IDC_DEVICE_LIST); }

void SetUpList(HWND list, int count) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    ListView_SetImageList(list, CreateRowImages(CLR_NONE), LVSIL_SMALL);
    ListView_SetBkColor(list, CLR_NONE);
    // Past nine devices a scroll bar may appear: the name column gives way.
    int nameWidth = Shell().listWidth - 14 - (count > 9 ? 6 : 0);
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_WIDTH;
    column.fmt = LVCFMT_LEFT;
    column.cx = nameWidth;
    ListView_InsertColumn(list, 0, &column);
    column.cx = 14;
    ListView_InsertColumn(list, 1, &column);
}

std::wstring KeyDigit(int index) {
    if (index < 9) return std::to_wstring(index + 1);
    return index == 9 ? L"0" : L"";
}

void Connect(HWND dialog) {
    if (Devices().count < 1) return;
    HWND list = ListOf(dialog);
    int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    if (row < 0) return;
    OpenPanelScreen(dialog, row);
    SetFocus(list);
}

void Rescan(HWND dialog) {
    std::int32_t rc = InquireDevices(Devices(), kInquiryLength);
    if ((rc & 0xFFFF) == 0) {
        FillDeviceList(dialog, false);
    } else {
        plat::ShowFaultBox(fault::kRescanFailed, rc);
    }
}

BOOL OnInitDialog(HWND dialog) {
    Shell().deviceListWindow = dialog;
    if (!ShellStartDialog(dialog, {IDM_DEVICES, DialogRole::kScreen, 0})) return TRUE;
    HWND list = ListOf(dialog);
    RECT client;
    GetClientRect(dialog, &client);
    MoveWindow(list, 0, 0, client.right, client.bottom, FALSE);
    Shell().listWidth = client.right;
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(Shell().listFont), TRUE);
    FillDeviceList(dialog, true);  // may say that no device was found
    ShellStartFocusTimer(dialog);
    return TRUE;
}

void OnKeyDown(HWND dialog, const NMLVKEYDOWN* key) {
    int index = -1;
    if (key->wVKey >= '1' && key->wVKey <= '9') index = key->wVKey - '1';
    if (key->wVKey == '0') index = 9;
    if (index < 0 || index >= Devices().count) return;
    SelectAndFocusRow(ListOf(dialog), index);
    SendMessageW(dialog, WM_COMMAND, IDC_CONNECT, 0);
}

BOOL OnCommand(HWND dialog, int id) {
    switch (id) {
    case IDC_SCAN:
        Rescan(dialog);
        return TRUE;
    case IDOK:
    case IDC_CONNECT:
        Connect(dialog);
        return TRUE;
    case IDCANCEL:
    case IDC_DONE_DEVICES:
        ShellEndDialog(dialog, 0);
        return TRUE;
    case IDC_ABOUT:
        ShowAboutBox();
        SetFocus(ListOf(dialog));
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK DeviceListProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, ListOf(dialog));
    case WM_NOTIFY:
        if (const NMLVKEYDOWN* key = ListKeyDown(lParam, IDC_DEVICE_LIST)) {
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

INT_PTR RunDeviceList(HWND owner) {
    return DialogBoxParamW(Shell().instance, MAKEINTRESOURCEW(IDD_DEVICE_LIST), owner,
                           DeviceListProc, 0);
}

void FillDeviceList(HWND dialog, bool firstTime) {
    HWND list = ListOf(dialog);
    const DeviceTable& devices = Devices();
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list);
    // Set up before the empty case too, so that a rescan that finds devices has columns.
    if (firstTime) SetUpList(list, devices.count);
    if (devices.count == 0) {
        ShowProductBox(dialog, L"No compatible devices found.  Check the Bluetooth radio is switched on.",
                       MB_ICONASTERISK);
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        return;
    }
    for (int i = 0; i < devices.count; ++i) {
        std::wstring text = std::wstring(L" ") + devices.entries[i].name;
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = i;
        item.iImage = 0;
        item.pszText = text.data();
        ListView_InsertItem(list, &item);
        std::wstring key = KeyDigit(i);
        ListView_SetItemText(list, i, 1, key.data());
    }
    SelectAndFocusRow(list, 0);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    SetFocus(list);
}
