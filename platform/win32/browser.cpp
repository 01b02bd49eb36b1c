#include "platform/browser.h"

#include <windows.h>
#include <shellapi.h>

namespace plat {

// The user's default browser opens the address (under Wine, its launcher hands it on to the
// desktop's browser).
void NativeLaunchBrowser(const std::u16string& argument) {
    ShellExecuteW(nullptr, L"open", reinterpret_cast<const wchar_t*>(argument.c_str()), nullptr,
                  nullptr, SW_SHOWNORMAL);
}

}  // namespace plat
