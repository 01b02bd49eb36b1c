// What pressing or stepping a row of the panel list does, by the type of its control
// (implemented in control_activation.cpp).
#pragma once

#include <windows.h>

#include <cstdint>

// Acts on the first selected row: sends a press or a toggle, or opens the control's editor
// or data view.
void ActivateSelectedRow(HWND dialog);
// Steps the value of the first selected row (a number or a list) down or up.
void StepSelectedRow(HWND dialog, bool up);
// Turns a section on or off: the row's image follows, the value is sent.
void ToggleSection(HWND dialog, std::uint32_t controlId, int row);
