// Program-wide state of the Windows program, held in one place.
#pragma once

#include <windows.h>

struct AppState {
    HINSTANCE instance = nullptr;
    HWND mainWindow = nullptr;
    HFONT listFont = nullptr;
    HWND deviceListWindow = nullptr;
    HWND panelScreen = nullptr;     // the panel dialog (recorded at its start, kept after)
    HWND currentDialog = nullptr;   // the open editor or data view, none otherwise
    int listWidth = 0;              // client width of a full-screen list, in pixels
    int currentDevice = -1;         // index into the device table, -1 when none
    bool pingTimerRunning = false;  // timer 2 was started (never cleared: see StopPingTimer)
    bool sendPending = false;       // timer 3 runs to send a stepped value
};

AppState& App();
