#include "panel/win32/edit_backspace.h"

#include "panel/backspace.h"
#include "shell/window_text.h"

#include <string>

void BackspaceEdit(HWND edit) {
    const std::u16string text = WindowText(edit);
    DWORD start = 0, end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const BackspaceResult result = Backspace(text, start, end);
    if (result.changed) SetWindowTextW(edit, reinterpret_cast<LPCWSTR>(result.text.c_str()));
    const auto caret = static_cast<WPARAM>(result.caret);
    SendMessageW(edit, EM_SETSEL, caret, static_cast<LPARAM>(caret));
}

bool BackspaceInFocusedEdit(HWND dialog, std::initializer_list<int> editIds) {
    HWND focus = GetFocus();
    for (int id : editIds) {
        HWND edit = GetDlgItem(dialog, id);
        if (edit && edit == focus) {
            BackspaceEdit(edit);
            return true;
        }
    }
    return false;
}
