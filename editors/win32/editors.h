// The five editors, each a full-screen dialog of its own run modally over the screen window.
// Each is the program's current dialog while it runs: it shows the device's updates of its
// control (kValueChangedMessage) and closes on kCloseViewsMessage without sending anything.
// They take a copy of the control's record, made under the store's lock and released before.
#pragma once

#include "model/control_record.h"

#include <cstdint>

// Text (dialogs 109, 110, 111 for read-only, plain and masked texts).
void EditText(std::uint32_t controlId, const ControlRecord& record);
// Date Time (dialog 120 when editable, else 109).
void EditDateTime(std::uint32_t controlId, const ControlRecord& record);
// Number (dialog 110 when editable, else 109).
void EditNumber(std::uint32_t controlId, const ControlRecord& record);
// Password: entry (112), change (113), or logging out at once.
void EditPassword(std::uint32_t controlId, const ControlRecord& record);
// List (dialog 119).
void SelectListItem(std::uint32_t controlId, const ControlRecord& record);
