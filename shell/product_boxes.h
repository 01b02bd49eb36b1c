// Message boxes captioned with the product name, through the seam that tests record.
#pragma once

#include <windows.h>

#include <string>

inline constexpr wchar_t kProductName[] = L"Tremolanth";

// A box captioned with the product name.
int ShowProductBox(HWND owner, const std::wstring& text, unsigned flags);
// "Menubar failed", for every full-screen dialog whose soft-key bar could not be made.
void ShowMenubarFailed(HWND owner);
