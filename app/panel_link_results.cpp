// What the panel screen does with each result of the receive worker, and the next worker.
#include "app/app_state.h"
#include "app/app_texts.h"
#include "app/panel_screen.h"
#include "app/panel_timers.h"
#include "link/link_client.h"
#include "model/control_store.h"
#include "panel/win32/control_rows.h"
#include "platform/message_box.h"
#include "platform/win32/browser.h"

namespace {

constexpr long kLineRestartFailed = 319;

void Inform(const char16_t* text) {
    plat::ShowMessageBox(nullptr, text, u"Tremolanth", plat::kMbIconAsterisk);
}

}  // namespace

void OpenReceivedFiles() {
    std::vector<std::u16string> files;
    {
        ControlsHold hold;
        for (const ControlRecord& record : Controls().records) {
            if (record.type != kTypeFiles || (record.flags & kMaskForBrowser) != kForBrowser) {
                continue;
            }
            if (record.hasReceivedPath) files.push_back(u"file://\\" + record.receivedPath);
        }
    }
    for (const auto& file : files) plat::LaunchBrowser(file);
}

void OnLinkResult(HWND dialog) {
    switch (Link().lastResult.load()) {
    case -2:
        Inform(u"This is an incompatible device.  Check if a newer version of Tremolanth "
               u"client for Smartphone is available.");
        break;
    case -1:
        Inform(u"This program does not know what to do with the data supplied by the remote "
               u"device.");
        return;  // reception stops
    case 1:
        SetPingTimer(dialog, PingSeconds());
        break;
    case 2:
        if (ControlCount() == 0) Inform(u"The control panel has no controls!");
        FillControlRows(dialog);
        break;
    case 3:
        DisconnectPanel();
        StopPingTimer(dialog);
        return;  // the device ended the session
    case 7:
        RefreshChangedRows(dialog);
        break;
    case 8:
        LinkRestart();
        break;
    case 9:
        RefreshLayoutChanges(dialog);
        break;
    case 10:
        OpenReceivedFiles();
        break;
    case 11:
        FillControlRows(dialog);
        break;
    default:
        break;
    }
    std::int32_t rc = LinkStartReceiver(dialog, kResultMessage);
    if (rc != kLinkOk && rc != kLinkNoSocket) {
        plat::ShowFaultBox(kLineRestartFailed, kPanelSource, rc);
    }
}
