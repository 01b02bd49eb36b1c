#include "platform/message_box.h"

#include <windows.h>

namespace plat {

int NativeMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                     unsigned flags) {
    // A box without an owner is raised by the receive side (or on its behalf), maybe on a
    // thread with no window of its own and after the screen behind it closed: it must come to
    // the front and take the keys, or a keypad user could never answer it.
    if (!owner) flags |= MB_SETFOREGROUND | MB_TOPMOST;
    return MessageBoxW(static_cast<HWND>(owner), reinterpret_cast<const wchar_t*>(text.c_str()),
                       reinterpret_cast<const wchar_t*>(caption.c_str()), flags);
}

}  // namespace plat
