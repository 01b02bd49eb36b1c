#include "shell/full_screen_dialog.h"

#include "shell/phone_shell.h"
#include "shell/product_boxes.h"
#include "shell/shell_state.h"

namespace {

// The dialog that was current before a view took the role.
const wchar_t kPreviousViewProp[] = L"TmqPreviousView";

void Register(HWND dialog) {
    SetPropW(dialog, kPreviousViewProp, Shell().currentDialog);
    Shell().currentDialog = dialog;
}

void Unregister(HWND dialog) {
    HANDLE previous = RemovePropW(dialog, kPreviousViewProp);
    if (Shell().currentDialog != dialog) return;
    auto before = static_cast<HWND>(previous);
    Shell().currentDialog = before && IsWindow(before) ? before : nullptr;
}

}  // namespace

bool ShellStartDialog(HWND dialog, const DialogSetup& setup) {
    const bool view = setup.role == DialogRole::kView;
    if (view) Register(dialog);
    ShellInitDialog(dialog);
    if (!ShellCreateMenuBar(dialog, setup.menuId)) {
        ShowMenubarFailed(dialog);
        if (view) Unregister(dialog);
        DestroyWindow(dialog);
        return false;
    }
    if (setup.focusTimer != 0) ShellStartFocusTimer(dialog, setup.focusTimer);
    return true;
}

void ShellEndDialog(HWND dialog, INT_PTR result) {
    if (GetPropW(dialog, kPreviousViewProp) || Shell().currentDialog == dialog) {
        Unregister(dialog);
    }
    EndDialog(dialog, result);
}

bool ShellTakeFocus(HWND dialog, UINT_PTR timer, HWND target, UINT_PTR focusTimer) {
    if (timer != focusTimer) return false;
    KillTimer(dialog, focusTimer);
    SetFocus(target);
    return true;
}

INT_PTR ShellRunDialog(int dialogId, DLGPROC procedure, void* state) {
    return DialogBoxParamW(Shell().instance, MAKEINTRESOURCEW(dialogId), Shell().mainWindow,
                           procedure, reinterpret_cast<LPARAM>(state));
}
