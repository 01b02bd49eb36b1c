#include "app/panel_timers.h"

#include "app/app_state.h"
#include "app/panel_screen.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/device_settings.h"

void SetPingTimer(HWND dialog, std::int32_t seconds) {
    if (App().pingTimerRunning) KillTimer(dialog, kPingTimer);
    if (seconds == 0) return;
    App().pingTimerRunning = true;
    SetTimer(dialog, kPingTimer, static_cast<UINT>(seconds) * 1000u, nullptr);
}

void StopPingTimer(HWND dialog) {
    if (App().pingTimerRunning) KillTimer(dialog, kPingTimer);
}

std::int32_t PingSeconds() { return ReadDeviceSetting(0, kSettingPingSeconds, 3); }

// Keep-alive: a ping that cannot be sent, or the last one never answered, ends the link.
void OnPingTimer() {
    if (!LinkIsOpen() || !Link().sessionFlagA) return;
    if (LinkSendPing() != 0) DisconnectPanel();
}

void OnSendTimer(HWND dialog) {
    KillTimer(dialog, kSendTimer);
    if (!App().sendPending) return;
    LinkSendPendingValues();
    App().sendPending = false;
}
