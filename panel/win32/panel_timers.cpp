#include "panel/win32/panel_timers.h"

#include "link/value_encoder.h"
#include "model/device_settings.h"
#include "panel/settings_forms.h"

PanelTimerMarks& PanelMarks() {
    static PanelTimerMarks marks;
    return marks;
}

void SetPingTimer(HWND dialog, std::int32_t seconds) {
    if (PanelMarks().pingTimerRunning) KillTimer(dialog, kPingTimer);
    if (seconds <= 0) return;  // a negative interval read from the store: no pings either
    PanelMarks().pingTimerRunning = true;
    SetTimer(dialog, kPingTimer, static_cast<UINT>(seconds) * 1000u, nullptr);
}

void StopPingTimer(HWND dialog) {
    if (PanelMarks().pingTimerRunning) KillTimer(dialog, kPingTimer);
}

std::int32_t PingSeconds() { return ReadDeviceSetting(0, kSettingPingSeconds, kDefaultPingSeconds); }

void StartSendDelay(HWND dialog) {
    if (PanelMarks().sendPending) return;
    PanelMarks().sendPending = true;
    SetTimer(dialog, kSendTimer, kSendDelayMs, nullptr);
}

void OnSendTimer(HWND dialog) {
    KillTimer(dialog, kSendTimer);
    if (!PanelMarks().sendPending) return;
    LinkSendPendingValues();
    PanelMarks().sendPending = false;
}
