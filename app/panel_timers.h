// The panel screen's timers: 1 takes the focus, 2 pings the device, 3 sends a stepped value.
#pragma once

#include <windows.h>

#include <cstdint>

inline constexpr UINT_PTR kFocusTimer = 1;
inline constexpr UINT_PTR kPingTimer = 2;
inline constexpr UINT_PTR kSendTimer = 3;

// Restarts the ping timer; 0 seconds leaves it stopped.
void SetPingTimer(HWND dialog, std::int32_t seconds);
// Stops it; the running mark stays, so a later start only kills a timer that is gone.
void StopPingTimer(HWND dialog);
// The ping interval of the connected panel (kind 768), 3 seconds unless set.
std::int32_t PingSeconds();

void OnPingTimer();
void OnSendTimer(HWND dialog);
