// Field helpers the two settings dialogs share.
#pragma once

#include "shell/window_text.h"

#include <windows.h>

#include <cstdint>
#include <string>

// Titles the dialog (and so the screen) with the panel's name.
void ShowPanelNameAsTitle(HWND dialog);

// A digits-only number box: limited to 6 characters, showing the text selected.
void SetNumberField(HWND dialog, int id, const std::u16string& text);
