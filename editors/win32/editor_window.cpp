#include "editors/win32/editor_window.h"

#include "link/link_client.h"
#include "panel/win32/edit_backspace.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

namespace {

BOOL OnValueBoxInit(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& editor = *reinterpret_cast<ValueBoxEditor*>(state);
    SetEditorTitles(dialog, Shell().mainWindow, LinkPanelId());
    SetControlText(dialog, IDC_CONTROL_TITLE, editor.record->label);
    editor.show(dialog, editor);
    if (!ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView})) return TRUE;
    LayOutTitleAndValue(dialog, editor.editable);
    return TRUE;
}

BOOL OnValueBoxCommand(HWND dialog, int command) {
    const ValueBoxEditor& editor = *DialogStateOf<ValueBoxEditor>(dialog);
    switch (command) {
    case IDCANCEL:
        if (!editor.editable) break;
        BackspaceEdit(GetDlgItem(dialog, IDC_CONTROL_VALUE));
        return TRUE;
    case IDOK:
    case IDC_DONE:
        if (editor.editable) editor.accept(dialog, editor);
        break;
    default:
        return FALSE;
    }
    ShellEndDialog(dialog, 0);
    return TRUE;
}

INT_PTR CALLBACK ValueBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnValueBoxInit(dialog, lParam);
    case WM_COMMAND:
        return OnValueBoxCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_CONTROL_VALUE));
    case kValueChangedMessage: {
        const ValueBoxEditor& editor = *DialogStateOf<ValueBoxEditor>(dialog);
        if (static_cast<std::uint32_t>(wParam) == editor.id) editor.show(dialog, editor);
        return TRUE;
    }
    case kCloseViewsMessage:
        ShellEndDialog(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

void RunValueBoxEditor(int dialogId, ValueBoxEditor& editor) {
    ShellRunDialog(dialogId, ValueBoxProc, &editor);
}

void SetControlText(HWND dialog, int id, const std::u16string& text) {
    SetDlgItemTextW(dialog, id, WideText(text));
}

void SetEditorTitles(HWND dialog, HWND other, const std::u16string& title) {
    SetWindowTextW(dialog, WideText(title));
    if (other) SetWindowTextW(other, WideText(title));
}

void LayOutTitleAndValue(HWND dialog, bool editable) {
    RECT client;
    GetClientRect(dialog, &client);
    const int width = client.right - 8;
    HWND title = GetDlgItem(dialog, IDC_CONTROL_TITLE);
    HWND value = GetDlgItem(dialog, IDC_CONTROL_VALUE);
    RECT titleRect, valueRect;
    GetWindowRect(title, &titleRect);
    GetWindowRect(value, &valueRect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&valueRect), 2);
    const int titleHeight = titleRect.bottom - titleRect.top;
    MoveWindow(title, 4, 4, width, titleHeight, FALSE);
    const int top = 4 + titleHeight + 8;
    const int height =
        editable ? (valueRect.bottom - valueRect.top) + 4 : client.bottom - valueRect.top - 4;
    MoveWindow(value, 4, top, width, height > 0 ? height : 0, FALSE);
    if (Shell().listFont) {
        SendMessageW(value, WM_SETFONT, reinterpret_cast<WPARAM>(Shell().listFont), TRUE);
    }
    InvalidateRect(dialog, nullptr, TRUE);
}

void SelectAllText(HWND dialog, int id) {
    SendDlgItemMessageW(dialog, id, EM_SETSEL, 0, -1);
}
