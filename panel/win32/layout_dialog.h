// The Control Layout dialog (dialog 116): style, fast key, value display and title length
// of one control, kept per device (implemented in layout_dialog.cpp).
#pragma once

#include "model/control_record.h"

#include <cstdint>

// Runs the dialog modally over the main window; the caller rebuilds the rows.
void EditControlLayout(std::uint32_t controlId, const ControlRecord& record);
