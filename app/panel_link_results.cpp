// What the panel screen does with each result of the receive worker, and the next worker.
#include "app/app_texts.h"
#include "app/panel_screen.h"
#include "link/link_client.h"
#include "link/link_results.h"
#include "model/control_store.h"
#include "panel/browser_targets.h"
#include "panel/win32/control_rows.h"
#include "panel/win32/panel_timers.h"
#include "platform/browser.h"
#include "platform/message_box.h"

namespace {

void Inform(const char16_t* text) {
    plat::ShowMessageBox(nullptr, text, u"Tremolanth", plat::kMbIconAsterisk);
}

}  // namespace

// Only the controls this file message marked: an older file is not opened again. Only pages,
// texts and pictures go to the browser; anything else stays where it was stored.
void LaunchReceivedFiles() {
    std::vector<std::u16string> files;
    bool others = false;
    {
        ControlsHold hold;
        for (ControlRecord& record : Controls().records) {
            if (record.type != kTypeFiles || !record.valueChanged ||
                (record.flags & kMaskForBrowser) != kForBrowser) {
                continue;
            }
            record.valueChanged = 0;
            if (!record.hasReceivedPath) continue;
            if (IsBrowserDocument(record.receivedPath)) {
                files.push_back(plat::FileAddress(record.receivedPath));
            } else {
                others = true;
            }
        }
    }
    for (const auto& file : files) {
        if (!plat::LaunchBrowser(file)) {
            Inform(kNoBrowserText);
            break;
        }
    }
    if (others) Inform(kUnintelligibleText);
}

void OnLinkResult(HWND dialog) {
    switch (Link().lastResult.load()) {
    case kResultIncompatible:
        Inform(u"This is an incompatible device.  Check if a newer version of Tremolanth "
               u"client for Smartphone is available.");
        break;
    case kResultUnintelligible:
        Inform(kUnintelligibleText);
        return;  // reception stops
    case kResultIdentity:
        SetPingTimer(dialog, PingSeconds());
        break;
    case kResultPanel:
        if (ControlCount() == 0) Inform(u"The control panel has no controls!");
        FillControlRows(dialog);
        break;
    case kResultSessionEnd:
        DisconnectPanel();
        StopPingTimer(dialog);
        return;  // the device ended the session
    case kResultValues:
        RefreshChangedRows(dialog);
        break;
    case kResultReload:
        LinkRestart();
        break;
    case kResultLayouts:
        RefreshLayoutChanges(dialog);
        break;
    case kResultFiles:
        LaunchReceivedFiles();
        break;
    case kResultSettings:
        FillControlRows(dialog);
        break;
    default:
        break;
    }
    std::int32_t rc = LinkStartReceiver(dialog, kResultMessage);
    if (rc != kLinkOk && rc != kLinkNoSocket) {
        plat::ShowFaultBox(fault::kRestartFailed, rc);
    }
}
