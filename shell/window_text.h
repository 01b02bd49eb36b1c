// Reading what a window shows, whatever its length: what the user typed is never cut here.
#pragma once

#include <windows.h>

#include <string>

std::u16string WindowText(HWND window);
std::u16string DialogItemText(HWND dialog, int id);
