// The program-wide window state that every full-screen window may need, held in one place:
// the instance for resources, the screen window every dialog is owned by, the list font, the
// device list and panel screen, and the editor or data view that is open.
#pragma once

#include <windows.h>

struct ShellState {
    HINSTANCE instance = nullptr;
    HWND mainWindow = nullptr;
    HFONT listFont = nullptr;
    HWND deviceListWindow = nullptr;
    HWND panelScreen = nullptr;     // the panel dialog (recorded at its start, kept after)
    HWND currentDialog = nullptr;   // the open editor or data view, none otherwise
    int listWidth = 0;              // client width of a full-screen list, in pixels
};

ShellState& Shell();
