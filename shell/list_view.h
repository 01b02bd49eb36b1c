// Small helpers for the report lists of the device list and the panel screen.
#pragma once

#include <windows.h>
#include <commctrl.h>

// The key of an LVN_KEYDOWN from the list with this id, or nullptr for any other notice.
inline const NMLVKEYDOWN* ListKeyDown(LPARAM notice, UINT_PTR listId) {
    auto* header = reinterpret_cast<const NMHDR*>(notice);
    if (header->idFrom != listId || header->code != LVN_KEYDOWN) return nullptr;
    return reinterpret_cast<const NMLVKEYDOWN*>(notice);
}

inline void SelectAndFocusRow(HWND list, int row) {
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}
