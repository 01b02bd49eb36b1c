// The Back key as backspace in the edit fields of the editors and settings dialogs.
#pragma once

#include <windows.h>

#include <initializer_list>

// Applies the backspace rule to an edit control.
void BackspaceEdit(HWND edit);

// When one of the dialog's edits with these ids has the focus, backspaces in it and returns
// true; false when none has it (Back then means leaving, for the caller to decide).
bool BackspaceInFocusedEdit(HWND dialog, std::initializer_list<int> editIds);
