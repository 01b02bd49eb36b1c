#include "platform/message_box.h"

#include <windows.h>

namespace plat {

namespace {

// The box of this thread being shown: centred over the anchor as it is first activated.
thread_local HHOOK t_centreHook = nullptr;
thread_local HWND t_anchor = nullptr;

LRESULT CALLBACK CentreOverAnchor(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && t_centreHook) {
        auto box = reinterpret_cast<HWND>(wParam);
        RECT boxRect, anchorRect;
        if (IsWindow(t_anchor) && GetWindowRect(box, &boxRect) &&
            GetWindowRect(t_anchor, &anchorRect)) {
            const int x = (anchorRect.left + anchorRect.right - (boxRect.right - boxRect.left)) / 2;
            const int y = (anchorRect.top + anchorRect.bottom - (boxRect.bottom - boxRect.top)) / 2;
            SetWindowPos(box, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        UnhookWindowsHookEx(t_centreHook);
        t_centreHook = nullptr;
        return 0;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

int NativeMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                     unsigned flags) {
    // A box without an owner is raised by the receive side (or on its behalf), maybe on a
    // thread with no window of its own and after the screen behind it closed: it must come to
    // the front and take the keys, or a keypad user could never answer it.
    if (!owner) flags |= MB_SETFOREGROUND | MB_TOPMOST;
    // Every box shows over the program's window, where the user is looking, not mid-screen
    // (an owner may be a screen that is not shown yet, as one that fails to connect).
    t_anchor = static_cast<HWND>(BoxAnchor());
    if (t_anchor && !t_centreHook) {
        t_centreHook = SetWindowsHookExW(WH_CBT, CentreOverAnchor, nullptr, GetCurrentThreadId());
    }
    const int answer =
        MessageBoxW(static_cast<HWND>(owner), reinterpret_cast<const wchar_t*>(text.c_str()),
                    reinterpret_cast<const wchar_t*>(caption.c_str()), flags);
    if (t_centreHook) {  // a box that never showed
        UnhookWindowsHookEx(t_centreHook);
        t_centreHook = nullptr;
    }
    return answer;
}

}  // namespace plat
