// What the editors' dialogs share: titles, the title-and-value layout, texts of controls.
#pragma once

#include "model/control_record.h"
#include "shell/window_text.h"

#include <windows.h>

#include <cstdint>
#include <string>

inline LPCWSTR WideText(const std::u16string& text) {
    return reinterpret_cast<LPCWSTR>(text.c_str());
}

void SetControlText(HWND dialog, int id, const std::u16string& text);

// The dialog's caption and the other window's (the screen's or the device list's) title.
void SetEditorTitles(HWND dialog, HWND other, const std::u16string& title);

// The title line at the top and the value under it, as wide as the screen; the value takes
// the program's list font, and a read-only value reaches down to the bottom.
void LayOutTitleAndValue(HWND dialog, bool editable);

// Selects the whole text of an edit.
void SelectAllText(HWND dialog, int id);

// An editor of one value in one box (the number and text editors): the title over the value,
// Back as backspace in an editable box, Done storing through `accept`, and the device's
// updates of its own control shown again through `show`.
struct ValueBoxEditor {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
    bool editable = false;
    std::size_t capacity = 0;  // the text editor's room in characters, terminator included
    void (*show)(HWND dialog, const ValueBoxEditor& editor) = nullptr;
    void (*accept)(HWND dialog, const ValueBoxEditor& editor) = nullptr;
};

// Runs the editor modally in the dialog `dialogId` (109, 110 or 111).
void RunValueBoxEditor(int dialogId, ValueBoxEditor& editor);
