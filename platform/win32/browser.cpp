#include "platform/win32/browser.h"

#include <windows.h>
#include <shellapi.h>

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
    // The handset starts its browser by name; a desktop opens the argument with whatever
    // browser the user chose.
    ShellExecuteW(nullptr, L"open", reinterpret_cast<const wchar_t*>(argument.c_str()), nullptr,
                  nullptr, SW_SHOWNORMAL);
}

}  // namespace plat
