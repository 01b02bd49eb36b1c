// The handset's keys on a desktop keyboard, rewritten as each message leaves the queue, so
// that they act the same in the main loop and in every modal dialog's loop.
#include "shell/phone_shell.h"
#include "shell/shell_windows.h"

namespace {

HHOOK g_hook = nullptr;

bool IsListView(HWND window) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    return lstrcmpW(name, L"SysListView32") == 0;
}

// True when the key with the shift state now held types the character on this layout.
bool Types(WPARAM key, wchar_t character) {
    SHORT scan = VkKeyScanW(character);
    if (scan == -1 || LOBYTE(scan) != key) return false;
    BYTE shifts = HIBYTE(scan);
    bool shift = GetKeyState(VK_SHIFT) < 0;
    bool control = GetKeyState(VK_CONTROL) < 0;
    return ((shifts & 1) != 0) == shift && ((shifts & 2) != 0) == control;
}

LRESULT CALLBACK GetMessageHook(int code, WPARAM removal, LPARAM lParam) {
    if (code == HC_ACTION && removal == PM_REMOVE) {
        ShellTranslateKey(reinterpret_cast<MSG*>(lParam));
    }
    return CallNextHookEx(g_hook, code, removal, lParam);
}

}  // namespace

bool ShellTranslateKey(MSG* message) {
    if (message->message != WM_KEYDOWN) return false;
    WPARAM key = message->wParam;
    if (key == VK_F1 || key == VK_F2) {
        HWND active = GetActiveWindow();
        if (!active || !ShellMenuBar(active)) return false;
        ShellPressSoftKey(active, key == VK_F1 ? kLeftSoftKey : kRightSoftKey);
        message->message = WM_NULL;
        return true;
    }
    if (!IsListView(message->hwnd)) return false;
    WPARAM handset = 0;
    if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) {
        handset = '0' + (key - VK_NUMPAD0);
    } else if (key == VK_MULTIPLY || Types(key, L'*')) {
        handset = VK_F8;
    } else if (Types(key, L'#')) {
        handset = VK_F9;
    }
    if (handset == 0) return false;
    message->wParam = handset;
    return true;
}

void StartKeyTranslation() {
    if (!g_hook) {
        g_hook = SetWindowsHookExW(WH_GETMESSAGE, GetMessageHook, nullptr, GetCurrentThreadId());
    }
}

void StopKeyTranslation() {
    if (g_hook) UnhookWindowsHookEx(g_hook);
    g_hook = nullptr;
}
