// Starting the web browser with a file or an address, behind a seam that tests replace.
#pragma once

#include <string>

namespace plat {

// Starts the system's web browser with the argument and does not wait for it.
void LaunchBrowser(const std::u16string& argument);

using BrowserHook = void (*)(const std::u16string& argument);
// Routes every launch to the hook; nullptr restores the real browser.
BrowserHook SetBrowserHook(BrowserHook hook);

// The file:/// address of a stored file, as any desktop browser opens it: separators as
// '/', and spaces, '%', '#', '?' and every non-ASCII character percent-encoded as UTF-8.
std::u16string FileAddress(const std::u16string& path);

// The system's own launch, behind the hook.
void NativeLaunchBrowser(const std::u16string& argument);

}  // namespace plat
