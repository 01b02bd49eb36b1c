#include "platform/post.h"

#include <windows.h>

namespace plat {

void NativePostToWindow(WindowRef window, unsigned message) {
    PostMessageW(static_cast<HWND>(window), message, 0, 0);
}

}  // namespace plat
