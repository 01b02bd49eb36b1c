// Starting the user's web browser with an address, behind a seam that tests replace.
//
// The browser is the program the system keeps for http addresses, started with the address as
// its one argument. Nothing the device sends is ever handed to the shell's "open" verb or
// started as a program: a device can show the user a page, never run something.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace plat {

// Starts the browser with the address and does not wait for it; false when the system has no
// browser for web addresses (a browser that then fails to start is not reported).
bool LaunchBrowser(const std::u16string& address);

using BrowserHook = bool (*)(const std::u16string& address);
// Routes every launch to the hook; nullptr restores the real browser.
BrowserHook SetBrowserHook(BrowserHook hook);

// The file:/// address of a stored file, as any desktop browser opens it: separators as
// '/', and spaces, '%', '#', '?' and every non-ASCII character percent-encoded as UTF-8.
std::u16string FileAddress(const std::u16string& path);

// What to start for an address, from the command the system keeps for web addresses: the
// program (quoted or up to the first space) and the whole command line, the address put where
// the command has %1 (or %L), else after it. The address is one argument whatever it holds:
// spaces, quotes and control characters in it are percent-encoded. None for an empty command.
struct BrowserCommand {
    std::u16string program;
    std::u16string commandLine;
};
std::optional<BrowserCommand> PlanBrowserCommand(std::u16string_view registered,
                                                 std::u16string_view address);

// The system's own launch, behind the hook.
bool NativeLaunchBrowser(const std::u16string& address);

}  // namespace plat
