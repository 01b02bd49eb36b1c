#include "platform/message_box.h"

#include "platform/utf.h"

#include <cstdio>

namespace plat {

// No windows here: the box is a line on standard error and the answer is OK.
int NativeMessageBox(WindowRef, const std::u16string& text, const std::u16string& caption,
                     unsigned flags) {
    std::fprintf(stderr, "[%s] %s (flags 0x%x)\n", Utf16ToUtf8(caption).c_str(),
                 Utf16ToUtf8(text).c_str(), flags);
    return kIdOk;
}

}  // namespace plat
