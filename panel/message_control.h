// A "Message" control is shown as a message box of its own, on a thread of its own, so
// several can be open at once. The box has the message text, the panel's name as caption, an
// OK button, and the icon of flag bits 0x70000.
#pragma once

#include <cstdint>

// MB_* icon flags for a Message control's flag word: 0x20000 stop, 0x30000 exclamation,
// 0x40000 question, anything else none.
unsigned MessageIconFlags(std::uint32_t flags);

// Starts the box thread when the control is a visible Message (checked under the lock);
// false otherwise. After its box closes, the thread that closed the last open box runs
// lastClosed (when given) on its own thread.
using BoxesClosedHandler = void (*)();
bool StartMessageBox(std::uint32_t controlId, BoxesClosedHandler lastClosed);

// Boxes started and not yet closed.
int OpenMessageBoxes();
