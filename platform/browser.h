// Starting the web browser with a file or an address, behind a seam that tests replace.
#pragma once

#include <string>

namespace plat {

// Starts the system's web browser with the argument and does not wait for it.
void LaunchBrowser(const std::u16string& argument);

using BrowserHook = void (*)(const std::u16string& argument);
// Routes every launch to the hook; nullptr restores the real browser.
BrowserHook SetBrowserHook(BrowserHook hook);

// The system's own launch, behind the hook.
void NativeLaunchBrowser(const std::u16string& argument);

}  // namespace plat
