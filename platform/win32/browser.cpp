#include "platform/browser.h"

#include <windows.h>

#include <string>

namespace plat {

namespace {

// The "open" command of a class, the user's own registration before the machine's.
std::wstring OpenCommandOf(const std::wstring& className) {
    const std::wstring path = L"Software\\Classes\\" + className + L"\\shell\\open\\command";
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        wchar_t command[2048];
        DWORD size = sizeof command;
        // A REG_EXPAND_SZ command comes back expanded, as REG_SZ: the address is put in only
        // afterwards, so nothing in it is expanded.
        if (RegGetValueW(root, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, command, &size) ==
            ERROR_SUCCESS) {
            return command;
        }
    }
    return {};
}

// The command of the browser the user chose for http addresses, or the one registered for them.
std::wstring RegisteredBrowserCommand() {
    wchar_t progId[256];
    DWORD size = sizeof progId;
    if (RegGetValueW(HKEY_CURRENT_USER,
                     L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\http\\"
                     L"UserChoice",
                     L"ProgId", RRF_RT_REG_SZ, nullptr, progId, &size) == ERROR_SUCCESS) {
        std::wstring command = OpenCommandOf(progId);
        if (!command.empty()) return command;
    }
    return OpenCommandOf(L"http");
}

}  // namespace

bool NativeLaunchBrowser(const std::u16string& address) {
    const std::wstring registered = RegisteredBrowserCommand();
    const auto command = PlanBrowserCommand(
        std::u16string_view(reinterpret_cast<const char16_t*>(registered.data()), registered.size()),
        address);
    if (!command) return false;
    std::wstring program(command->program.begin(), command->program.end());
    std::wstring line(command->commandLine.begin(), command->commandLine.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    return true;
}

}  // namespace plat
