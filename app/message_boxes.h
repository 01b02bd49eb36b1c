// Message boxes of the Windows program, through the seam that tests record.
#pragma once

#include <windows.h>

#include <string>

// A box captioned with the product name.
int ShowProductBox(HWND owner, const std::wstring& text, unsigned flags);
// "Menubar failed", for every full-screen dialog whose soft-key bar could not be made.
void ShowMenubarFailed(HWND owner);
