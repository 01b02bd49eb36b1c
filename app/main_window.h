// The main window (class "TmqApp"): the screen every full-screen dialog covers. One
// millisecond after it is made it opens the device search; when the list closes, the program
// ends.
#pragma once

#include <windows.h>

bool RegisterMainWindowClass(HINSTANCE instance);
HWND CreateMainWindow(HINSTANCE instance);
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Searches for devices and runs the device list, or ends the program when the search fails.
void OpenDeviceList(HWND mainWindow);
