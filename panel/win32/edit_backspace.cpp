#include "panel/win32/edit_backspace.h"

#include "panel/backspace.h"

#include <string>

void BackspaceEdit(HWND edit) {
    // The whole text, however long: what the user typed is never cut here.
    const int length = GetWindowTextLengthW(edit);
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    GetWindowTextW(edit, reinterpret_cast<LPWSTR>(text.data()), length + 1);
    text.resize(static_cast<std::size_t>(length));
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
