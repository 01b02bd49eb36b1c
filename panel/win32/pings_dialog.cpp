#include "panel/win32/pings_dialog.h"

#include "panel/settings_forms.h"
#include "panel/win32/edit_backspace.h"
#include "panel/win32/panel_timers.h"
#include "panel/win32/settings_fields.h"
#include "model/device_settings.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/view_messages.h"

namespace {

BOOL OnInitDialog(HWND dialog) {
    ShowPanelNameAsTitle(dialog);
    const PingsForm form = PingsFormFor(PingSeconds());
    CheckDlgButton(dialog, IDC_PINGS_ENABLE, form.enabled ? BST_CHECKED : BST_UNCHECKED);
    SetNumberField(dialog, IDC_PINGS_SECONDS, form.seconds);
    ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView, kFocusTimer});
    return TRUE;
}

void OnDone(HWND dialog) {
    const bool enabled = IsDlgButtonChecked(dialog, IDC_PINGS_ENABLE) == BST_CHECKED;
    const std::int32_t seconds = PingSecondsFrom(enabled, DialogItemText(dialog, IDC_PINGS_SECONDS));
    WriteDeviceSetting(0, kSettingPingSeconds, static_cast<std::uint32_t>(seconds));
    ShellEndDialog(dialog, IDOK);
}

BOOL OnCommand(HWND dialog, int id) {
    switch (id) {
    case IDC_DONE:
        OnDone(dialog);
        return TRUE;
    case IDCANCEL:
        if (!BackspaceInFocusedEdit(dialog, {IDC_PINGS_SECONDS})) ShellEndDialog(dialog, IDCANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK PingsDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_PINGS_ENABLE));
        return TRUE;
    case kCloseViewsMessage:
        ShellEndDialog(dialog, IDCANCEL);
        return TRUE;
    case kValueChangedMessage:
        return TRUE;  // nothing here shows a value
    default:
        return FALSE;
    }
}

}  // namespace

void EditPingInterval() { ShellRunDialog(IDD_PINGS, PingsDialogProc); }
