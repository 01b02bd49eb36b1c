#include "shell/window_text.h"

std::u16string WindowText(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    const int got = GetWindowTextW(window, reinterpret_cast<LPWSTR>(text.data()), length + 1);
    text.resize(static_cast<std::size_t>(got > 0 ? got : 0));
    return text;
}

std::u16string DialogItemText(HWND dialog, int id) { return WindowText(GetDlgItem(dialog, id)); }
