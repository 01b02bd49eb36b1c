// Logging in (dialog 112), changing the password or logging out (dialog 113). Passwords live
// only in the edit boxes and for the moment they are sent; copies are wiped after sending.
#include "editors/win32/editors.h"

#include "editors/password_entry.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/password_send.h"
#include "model/control_store.h"
#include "panel/win32/edit_backspace.h"
#include "platform/message_box.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <algorithm>

namespace {

struct PasswordEditor {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
    bool change = false; // dialog 113 with "Log Out" and "Change"
};

constexpr int kPasswordEdits[] = {IDC_PASSWORD, IDC_NEW_PASSWORD, IDC_NEW_PASSWORD_AGAIN};

void Wipe(std::u16string& text) {
    std::fill(text.begin(), text.end(), u'\0');
    text.clear();
}

std::u16string ReadPassword(HWND dialog, int id, std::uint32_t flags) {
    std::u16string typed = DialogItemText(dialog, id);
    std::u16string cut = CutPassword(typed, flags);
    Wipe(typed);
    return cut;
}

void LogIn(HWND dialog, const PasswordEditor& editor) {
    std::u16string password = ReadPassword(dialog, IDC_PASSWORD, editor.record->flags);
    if (LinkIsOpen()) SubmitPassword(editor.id, password.c_str());
    Wipe(password);
}

void Complain(HWND dialog, const char16_t* text) {
    plat::ShowMessageBox(dialog, text, LinkPanelId(), plat::kMbIconHand);
}

// True when the dialog may close: the change was sent and the user logged out, so that they
// log in again with the new password.
bool Change(HWND dialog, const PasswordEditor& editor) {
    const std::uint32_t flags = editor.record->flags;
    std::u16string old = ReadPassword(dialog, IDC_PASSWORD, flags);
    std::u16string fresh = ReadPassword(dialog, IDC_NEW_PASSWORD, flags);
    std::u16string again = ReadPassword(dialog, IDC_NEW_PASSWORD_AGAIN, flags);
    bool done = false;
    if (fresh != again) {
        Complain(dialog, u"The new passwords are not the same.");
    } else if (!LinkIsOpen()) {
        done = true;
    } else if (ChangePassword(editor.id, old.c_str(), fresh.c_str()) == kWrongType) {
        Complain(dialog, u"New password not valid.");
    } else {
        LogOut(editor.id);
        done = true;
    }
    Wipe(old);
    Wipe(fresh);
    Wipe(again);
    return done;
}

BOOL OnInitDialog(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& editor = *reinterpret_cast<PasswordEditor*>(state);
    SetEditorTitles(dialog, Shell().mainWindow, editor.record->label);
    const int menu = editor.change ? IDM_PASSWORD : IDM_DONE;
    if (!ShellStartDialog(dialog, {menu, DialogRole::kView})) return TRUE;
    const std::size_t limit = PasswordLimit(editor.record->flags);
    for (int id : kPasswordEdits) SendDlgItemMessageW(dialog, id, EM_LIMITTEXT, limit, 0);
    return TRUE;
}

BOOL OnCommand(HWND dialog, int command) {
    const PasswordEditor& editor = *DialogStateOf<PasswordEditor>(dialog);
    switch (command) {
    case IDCANCEL:
        BackspaceInFocusedEdit(dialog, {IDC_PASSWORD, IDC_NEW_PASSWORD, IDC_NEW_PASSWORD_AGAIN});
        return TRUE;
    case IDOK:
    case IDC_DONE:
        if (editor.change) return TRUE; // the change dialog has no "Done"
        LogIn(dialog, editor);
        break;
    case IDC_LOG_OUT:
        if (LinkIsOpen()) LogOut(editor.id);
        break;
    case IDC_CHANGE:
        if (!Change(dialog, editor)) return TRUE;
        break;
    default:
        return FALSE;
    }
    ShellEndDialog(dialog, 0);
    return TRUE;
}

INT_PTR CALLBACK PasswordProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, lParam);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_PASSWORD));
    case kValueChangedMessage:
        // The device changed the login state: what was typed is moot.
        if (static_cast<std::uint32_t>(wParam) == DialogStateOf<PasswordEditor>(dialog)->id) {
            ShellEndDialog(dialog, 0);
        }
        return TRUE;
    case kCloseViewsMessage:
        ShellEndDialog(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

void EditPassword(std::uint32_t controlId, const ControlRecord& record) {
    std::uint8_t loggedIn = 0;
    std::size_t size = 1;
    GetControlValue(controlId, &loggedIn, &size);
    const PasswordAction action = PlanPasswordAction(loggedIn, record.flags);
    if (action == PasswordAction::kLogOutNow) {
        LogOut(controlId);
        return;
    }
    PasswordEditor editor{controlId, &record, action == PasswordAction::kChange};
    ShellRunDialog(editor.change ? IDD_PASSWORD_CHANGE : IDD_PASSWORD_ENTRY, PasswordProc, &editor);
}
