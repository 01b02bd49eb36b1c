#include "panel/message_control.h"

#include "link/link_client.h"
#include "model/control_store.h"
#include "platform/message_box.h"
#include "platform/thread.h"

#include <atomic>

namespace {

constexpr std::size_t kMessageBytes = 1024;

std::atomic<int> g_openBoxes{0};

struct BoxJob {
    std::uint32_t controlId;
    BoxesClosedHandler lastClosed;
};

void RunBox(void* argument) {
    BoxJob job = *static_cast<BoxJob*>(argument);
    delete static_cast<BoxJob*>(argument);

    char16_t text[kMessageBytes / 2 + 1] = {};
    std::uint32_t flags = 0;
    {
        ControlsHold hold;
        std::size_t size = kMessageBytes;
        GetControlValue(job.controlId, text, &size);
        if (const ControlRecord* r = FindControl(job.controlId)) flags = r->flags;
    }
    plat::ShowMessageBox(nullptr, text, LinkPanelId(), plat::kMbOk | MessageIconFlags(flags));
    if (--g_openBoxes == 0 && job.lastClosed) job.lastClosed();
}

}  // namespace

unsigned MessageIconFlags(std::uint32_t flags) {
    switch (flags & kMaskMessageIcon) {
    case 0x20000: return plat::kMbIconHand;
    case 0x30000: return plat::kMbIconExclamation;
    case 0x40000: return plat::kMbIconQuestion;
    default: return 0;
    }
}

bool StartMessageBox(std::uint32_t controlId, BoxesClosedHandler lastClosed) {
    {
        ControlsHold hold;
        const ControlRecord* r = FindControl(controlId);
        if (!r || r->type != kTypeMessage || (r->flags & kFlagHidden)) return false;
    }
    auto* job = new BoxJob{controlId, lastClosed};
    ++g_openBoxes;
    if (plat::StartDetachedThread(&RunBox, job) != 0) {
        --g_openBoxes;
        delete job;
        return false;
    }
    return true;
}

int OpenMessageBoxes() { return g_openBoxes.load(); }
