// The two messages an open editor or data view receives from the panel screen.
#pragma once

#include <windows.h>

// The value of the control whose id is in wParam changed: show it again.
inline constexpr UINT kValueChangedMessage = WM_APP;
// Close now (the link ended, or a control must be brought into view); both parameters 0.
inline constexpr UINT kCloseViewsMessage = WM_APP + 1;
