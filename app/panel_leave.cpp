// Leaving the panel screen: held sections first, then the link, the socket and the screen.
#include "app/app_state.h"
#include "app/control_activation.h"
#include "app/device_table.h"
#include "app/panel_screen.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "panel/win32/control_rows.h"
#include "panel/win32/panel_timers.h"
#include "res/resource.h"
#include "shell/view_messages.h"

#include <commctrl.h>

namespace {

struct HeldSection {
    std::uint32_t id = 0;
    int row = -1;
};

// The bottom-most row whose control is a section that is on.
HeldSection FindHeldSection(HWND list) {
    ControlsHold hold;
    for (int row = ListView_GetItemCount(list) - 1; row >= 0; --row) {
        const std::uint32_t id = RowControlId(list, row);
        if (GetControlType(id) != kTypeSection) continue;
        std::uint8_t value = 0;
        std::size_t size = 1;
        GetControlValue(id, &value, &size);
        if (value != 0) return {id, row};
    }
    return {};
}

// Stops the link, with its goodbye when that can be sent at once, and closes the socket. A
// stepped value still waiting for its timer goes out first, as quickly: it is the user's.
void StopLink() {
    if (PanelMarks().sendPending) {
        PanelMarks().sendPending = false;
        if (Shell().panelScreen) KillTimer(Shell().panelScreen, kSendTimer);
        LinkSendPendingValues(kLeaveWaitMs);
    }
    LinkStop();
    CloseDeviceSocket(Devices());
}

}  // namespace

// One held section is let go per press of Done, so that the device sees each go off before
// the screen closes.
void LeavePanel(HWND dialog) {
    HeldSection held = FindHeldSection(GetDlgItem(dialog, IDC_PANEL_LIST));
    if (held.row >= 0) {
        ToggleSection(dialog, held.id, held.row);
        return;
    }
    StopLink();
    EndDialog(dialog, 0);
    App().currentDevice = -1;
}

void DisconnectPanel() {
    StopLink();
    if (!Link().sessionFlagC) {
        if (Shell().currentDialog) SendMessageW(Shell().currentDialog, kCloseViewsMessage, 0, 0);
        if (Shell().panelScreen) SendMessageW(Shell().panelScreen, kCloseViewsMessage, 0, 0);
    }
    App().currentDevice = -1;
    if (PanelMarks().pingTimerRunning && Shell().panelScreen) KillTimer(Shell().panelScreen, kPingTimer);
}

// Keep-alive: a ping that cannot be sent, or the last one never answered, ends the link.
void OnPingTimer() {
    if (!LinkIsOpen() || !Link().sessionFlagA) return;
    if (LinkSendPing() != 0) DisconnectPanel();
}
