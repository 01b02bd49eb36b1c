#include "platform/message_box.h"

#include <windows.h>

namespace plat {

namespace {

constexpr UINT_PTR kReclaimTimer = 0x7EC1;
constexpr UINT kReclaimMs = 100;

// The box of this thread being shown: centred over the anchor as it is first activated, and,
// for a box without an owner, kept able to take the keys.
thread_local HHOOK t_boxHook = nullptr;
thread_local HWND t_anchor = nullptr;
thread_local bool t_reclaim = false;

// A window that closes under an unowned box (the screen behind it) may leave the desktop in
// front, with nobody taking the keys: the box takes the front back. It never takes it from
// another window.
void CALLBACK ReclaimFront(HWND box, UINT, UINT_PTR, DWORD) {
    const HWND front = GetForegroundWindow();
    if (!front || front == GetDesktopWindow()) SetForegroundWindow(box);
}

LRESULT CALLBACK OnBoxActivated(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && t_boxHook) {
        auto box = reinterpret_cast<HWND>(wParam);
        RECT boxRect, anchorRect;
        if (IsWindow(t_anchor) && GetWindowRect(box, &boxRect) &&
            GetWindowRect(t_anchor, &anchorRect)) {
            const int x = (anchorRect.left + anchorRect.right - (boxRect.right - boxRect.left)) / 2;
            const int y = (anchorRect.top + anchorRect.bottom - (boxRect.bottom - boxRect.top)) / 2;
            SetWindowPos(box, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        if (t_reclaim) SetTimer(box, kReclaimTimer, kReclaimMs, ReclaimFront);
        UnhookWindowsHookEx(t_boxHook);
        t_boxHook = nullptr;
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
    t_reclaim = !owner;
    if (!owner) flags |= MB_SETFOREGROUND | MB_TOPMOST;
    // Every box shows over the program's window, where the user is looking, not mid-screen
    // (an owner may be a screen that is not shown yet, as one that fails to connect).
    t_anchor = static_cast<HWND>(BoxAnchor());
    if ((t_anchor || t_reclaim) && !t_boxHook) {
        t_boxHook = SetWindowsHookExW(WH_CBT, OnBoxActivated, nullptr, GetCurrentThreadId());
    }
    const int answer =
        MessageBoxW(static_cast<HWND>(owner), reinterpret_cast<const wchar_t*>(text.c_str()),
                    reinterpret_cast<const wchar_t*>(caption.c_str()), flags);
    if (t_boxHook) {  // a box that never showed
        UnhookWindowsHookEx(t_boxHook);
        t_boxHook = nullptr;
    }
    return answer;
}

}  // namespace plat
