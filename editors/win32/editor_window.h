// What the editors' dialogs share: titles, the title-and-value layout, texts of controls.
#pragma once

#include <windows.h>

#include <string>

inline LPCWSTR WideText(const std::u16string& text) {
    return reinterpret_cast<LPCWSTR>(text.c_str());
}

// The whole text of a dialog's control.
std::u16string ControlText(HWND dialog, int id);
void SetControlText(HWND dialog, int id, const std::u16string& text);

// The dialog's caption and the other window's (the screen's or the device list's) title.
void SetEditorTitles(HWND dialog, HWND other, const std::u16string& title);

// The title line at the top and the value under it, as wide as the screen; the value takes
// the program's list font, and a read-only value reaches down to the bottom.
void LayOutTitleAndValue(HWND dialog, bool editable);

// Selects the whole text of an edit.
void SelectAllText(HWND dialog, int id);
