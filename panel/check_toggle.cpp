#include "panel/check_toggle.h"

#include "link/value_encoder.h"
#include "model/control_store.h"

CheckToggle ToggleCheckControl(std::uint32_t controlId) {
    CheckToggle result;
    {
        ControlsHold hold;
        const ControlRecord* r = FindControl(controlId);
        if (!r || r->type != kTypeCheckBox) return result;
        const std::uint32_t group = r->group;
        const bool variant = (r->flags & kFlagVariant) != 0;
        std::uint8_t old = 0;
        std::size_t size = 1;
        GetControlValue(controlId, &old, &size);

        if (group != 0) ClearRadioGroup(group);
        std::uint8_t value = variant ? 0 : group != 0 ? 255 : old != 0 ? 0 : 255;
        SetControlValue(controlId, &value, 1);
        result.done = true;
        result.group = group;
        result.value = value;
    }
    LinkSendPendingValues();  // never under the lock: the device may be slow to take it
    if (result.group != 0) {
        result.image = result.value ? kImageRadioOn : kImageRadioOff;
    } else {
        result.image = result.value ? kImageCheckOn : kImageCheckOff;
    }
    return result;
}
