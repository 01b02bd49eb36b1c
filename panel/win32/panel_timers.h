// The panel screen's timers that the rows start: 2 pings the device, 3 sends a stepped value
// shortly after a burst of steps. (Timer 1, the focus, is every full-screen dialog's.)
#pragma once

#include <windows.h>

#include <cstdint>

inline constexpr UINT_PTR kPingTimer = 2;
inline constexpr UINT_PTR kSendTimer = 3;
inline constexpr UINT kSendDelayMs = 10;

struct PanelTimerMarks {
    bool pingTimerRunning = false;  // timer 2 was started (never cleared: see StopPingTimer)
    bool sendPending = false;       // timer 3 runs to send a stepped value
};
PanelTimerMarks& PanelMarks();

// Restarts the ping timer; 0 seconds leaves it stopped.
void SetPingTimer(HWND dialog, std::int32_t seconds);
// Stops it; the running mark stays, so a later start only kills a timer that is gone.
void StopPingTimer(HWND dialog);
// The ping interval of the connected panel (kind 768), 3 seconds unless set.
std::int32_t PingSeconds();

// Starts timer 3 unless it already runs, so a burst of steps is sent once.
void StartSendDelay(HWND dialog);
// Timer 3: sends what is pending and clears the mark.
void OnSendTimer(HWND dialog);
