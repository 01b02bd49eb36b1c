#include "platform/browser.h"

#include <atomic>

namespace plat {

namespace {
std::atomic<BrowserHook> g_hook{nullptr};
}

BrowserHook SetBrowserHook(BrowserHook hook) { return g_hook.exchange(hook); }

void LaunchBrowser(const std::u16string& argument) {
    if (BrowserHook hook = g_hook.load()) {
        hook(argument);
        return;
    }
    NativeLaunchBrowser(argument);
}

}  // namespace plat
