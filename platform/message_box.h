// Message boxes, and the program's fault box.
//
// Every box goes through ShowMessageBox, so a test can install a recording hook and assert on
// the text, caption and flags of each box the program raised.
#pragma once

#include "platform/fault_sites.h"
#include "platform/types.h"

#include <string>
#include <string_view>

namespace plat {

// Flags with the values of the Win32 MB_* constants.
enum MessageBoxFlags : unsigned {
    kMbOk = 0x0,
    kMbOkCancel = 0x1,
    kMbIconHand = 0x10,
    kMbIconQuestion = 0x20,
    kMbIconExclamation = 0x30,
    kMbIconAsterisk = 0x40,
};

inline constexpr int kIdOk = 1;

// Shows a modal box and returns the button pressed (kIdOk when there is no one to ask).
int ShowMessageBox(WindowRef owner, std::u16string_view text, std::u16string_view caption,
                   unsigned flags);

// Replaces every box with a call to the hook; nullptr restores the real boxes.
using MessageBoxHook = int (*)(WindowRef owner, const std::u16string& text,
                               const std::u16string& caption, unsigned flags);
MessageBoxHook SetMessageBoxHook(MessageBoxHook hook);

// The internal-fault box: "At <line> file <file>, val=<value>" with an empty caption.
void ShowFaultBox(fault::Site site, long value);

// What ShowFaultBox shows, for tests that look for a particular fault.
std::u16string FaultBoxText(long line, const char* file, long value);

// The window over which boxes without an owner are centred (the program's main window), or
// nullptr for the middle of the screen.
void SetBoxAnchor(WindowRef anchor);
WindowRef BoxAnchor();

// The system's own box, behind the hook.
int NativeMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                     unsigned flags);

}  // namespace plat
