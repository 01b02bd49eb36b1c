#include "link/password_send.h"

#include "link/value_encoder.h"
#include "model/control_store.h"

namespace {

// Attaches the outgoing passwords, sends, and detaches them again.
std::int32_t SendPassword(std::uint32_t id, const char16_t* first, const char16_t* second) {
    {
        ControlsHold hold;
        ControlRecord* r = FindControl(id);
        if (!r) return 0;
        if (r->type != kTypePassword) return kWrongType;
        r->outPassword1 = first;
        r->outPassword2 = second;
        r->sendPending = 1;
    }
    LinkSendPendingValues();
    ControlsHold hold;
    if (ControlRecord* r = FindControl(id)) {
        r->outPassword1 = nullptr;
        r->outPassword2 = nullptr;
    }
    return 0;
}

}  // namespace

std::int32_t SubmitPassword(std::uint32_t id, const char16_t* text) {
    return SendPassword(id, text ? text : u"", u"");
}

std::int32_t ChangePassword(std::uint32_t id, const char16_t* oldText, const char16_t* newText) {
    if (!newText || !*newText) return kWrongType;
    return SendPassword(id, oldText ? oldText : u"", newText);
}

std::int32_t LogOut(std::uint32_t id) { return SubmitPassword(id, u""); }
