#include "platform/message_box.h"

#include <windows.h>

namespace plat {

int NativeMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                     unsigned flags) {
    return MessageBoxW(static_cast<HWND>(owner), reinterpret_cast<const wchar_t*>(text.c_str()),
                       reinterpret_cast<const wchar_t*>(caption.c_str()), flags);
}

}  // namespace plat
