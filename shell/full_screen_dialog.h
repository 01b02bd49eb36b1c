// What every full-screen dialog does when it starts and ends. The shell sizes it to the screen
// above the soft-key bar of its menu and, 1 ms after the start (once the dialog shows), a timer
// moves the focus into it. An editor or data view is also the program's current dialog while
// it runs, so that value updates and close requests reach it; when it ends, the dialog that
// was current before it (a chart under its table, or none) is current again.
//
// State reaches a dialog procedure as the DialogBoxParamW parameter and is kept in DWLP_USER.
#pragma once

#include <windows.h>

inline constexpr UINT_PTR kFocusTimer = 1;

enum class DialogRole {
    kScreen,  // the device list, the panel screen, the About box
    kView,    // an editor, a settings dialog or a data view
};

struct DialogSetup {
    int menuId = 0;                     // the soft-key bar's menu resource
    DialogRole role = DialogRole::kScreen;
    UINT_PTR focusTimer = kFocusTimer;  // 0: none
};

// Registers a view as the current dialog, makes the dialog full-screen, gives it its soft-key
// bar and starts the focus timer. When the bar cannot be made it shows "Menubar failed",
// drops the registration, destroys the dialog and returns false.
bool ShellStartDialog(HWND dialog, const DialogSetup& setup);

// Starts the focus timer later, where a dialog may raise a box during its start (the timer
// would take the focus from the box).
inline void ShellStartFocusTimer(HWND dialog, UINT_PTR focusTimer = kFocusTimer) {
    SetTimer(dialog, focusTimer, 1, nullptr);
}

// Ends the dialog; a view hands the current-dialog role back to the one before it.
void ShellEndDialog(HWND dialog, INT_PTR result);

// For WM_TIMER: when it is the focus timer, kills it, focuses the target and returns true.
bool ShellTakeFocus(HWND dialog, UINT_PTR timer, HWND target, UINT_PTR focusTimer = kFocusTimer);

// Runs a dialog resource modally over the screen window with the state given.
INT_PTR ShellRunDialog(int dialogId, DLGPROC procedure, void* state = nullptr);

// The state a dialog was run with; keep it from WM_INITDIALOG's lParam.
inline void KeepDialogState(HWND dialog, LPARAM state) {
    SetWindowLongPtrW(dialog, DWLP_USER, state);
}
template <typename State>
State* DialogStateOf(HWND dialog) {
    return reinterpret_cast<State*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

// A notification's answer to the dialog manager.
inline INT_PTR NotifyResult(HWND dialog, LRESULT result) {
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
    return TRUE;
}
