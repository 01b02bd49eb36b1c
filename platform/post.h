// Posting a result message to a window from any thread.
#pragma once

#include "platform/types.h"

namespace plat {

// Win32: PostMessage(window, message, 0, 0). Elsewhere: the installed hook, if any.
void PostToWindow(WindowRef window, unsigned message);

using PostHook = void (*)(WindowRef window, unsigned message);
// Routes every post to the hook (tests, headless clients); nullptr restores the default.
PostHook SetPostHook(PostHook hook);

// The system's own post, behind the hook (does nothing where there are no windows).
void NativePostToWindow(WindowRef window, unsigned message);

}  // namespace plat
