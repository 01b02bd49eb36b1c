#include "platform/post.h"

#include <atomic>

namespace plat {

namespace {
std::atomic<PostHook> g_hook{nullptr};
}

PostHook SetPostHook(PostHook hook) { return g_hook.exchange(hook); }

void PostToWindow(WindowRef window, unsigned message) {
    if (PostHook hook = g_hook.load()) {
        hook(window, message);
        return;
    }
    NativePostToWindow(window, message);
}

}  // namespace plat
