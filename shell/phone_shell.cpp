#include "shell/phone_shell.h"

#include "shell/shell_windows.h"

namespace {

HWND g_screen = nullptr;

const wchar_t kFullScreenProp[] = L"TmqFullScreen";
const wchar_t kPreviousProcProp[] = L"TmqShellProc";

int ScreenDpi() {
    HDC dc = GetDC(nullptr);
    int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 96;
    if (dc) ReleaseDC(nullptr, dc);
    return dpi > 0 ? dpi : 96;
}

RECT DialogRect() {
    RECT r = ShellScreenRect();
    r.bottom -= ShellScale(kSoftKeyBarHeight);
    return r;
}

void PlaceDialog(HWND dialog) {
    RECT r = DialogRect();
    SetWindowPos(dialog, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void ShowTitleOf(HWND dialog) {
    if (!g_screen || !IsWindow(g_screen)) return;
    wchar_t title[256] = {};
    GetWindowTextW(dialog, title, 256);
    SetWindowTextW(g_screen, title);
}

// The handset shows the title of the screen in front; so does the main window's caption.
bool InFront(HWND dialog) {
    return GetActiveWindow() == dialog || !IsWindowVisible(dialog);
}

LRESULT CALLBACK FullScreenProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    auto previous = reinterpret_cast<WNDPROC>(GetPropW(dialog, kPreviousProcProp));
    LRESULT result = CallWindowProcW(previous, dialog, message, wParam, lParam);
    switch (message) {
    case WM_SETTEXT:
        if (InFront(dialog)) ShowTitleOf(dialog);
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE) {
            ShowTitleOf(dialog);
            ShellRaiseFrontBar();
        }
        break;
    case WM_NCDESTROY:
        SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
        RemovePropW(dialog, kPreviousProcProp);
        RemovePropW(dialog, kFullScreenProp);
        ShellRaiseFrontBar();
        break;
    default:
        break;
    }
    return result;
}

BOOL CALLBACK PlaceOne(HWND window, LPARAM) {
    if (GetPropW(window, kFullScreenProp)) PlaceDialog(window);
    PlaceSoftKeyBar(window);
    return TRUE;
}

}  // namespace

int ShellScale(int pixels) { return MulDiv(pixels, ScreenDpi(), 96); }

HWND ShellScreen() { return g_screen; }

RECT ShellScreenRect() {
    RECT r{0, 0, ShellScale(kScreenWidth), ShellScale(kScreenHeight)};
    if (g_screen && IsWindow(g_screen)) {
        GetClientRect(g_screen, &r);
        MapWindowPoints(g_screen, nullptr, reinterpret_cast<POINT*>(&r), 2);
    }
    return r;
}

void ShellAttachScreen(HWND mainWindow) {
    g_screen = mainWindow;
    RECT r{0, 0, ShellScale(kScreenWidth), ShellScale(kScreenHeight)};
    AdjustWindowRectEx(&r, static_cast<DWORD>(GetWindowLongPtrW(mainWindow, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(mainWindow, GWL_EXSTYLE)));
    SetWindowPos(mainWindow, nullptr, 0, 0, r.right - r.left, r.bottom - r.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    StartKeyTranslation();
}

void ShellDetachScreen(HWND mainWindow) {
    if (g_screen != mainWindow) return;
    StopKeyTranslation();
    g_screen = nullptr;
}

void ShellLayoutScreen() {
    EnumThreadWindows(GetCurrentThreadId(), PlaceOne, 0);
    ShellRaiseFrontBar();
}

void ShellRaiseFrontBar() {
    // The bars share one strip: the one on top must be that of the dialog in front, even
    // after the screen window was raised over the owned windows of its dialogs.
    DWORD thread = GetCurrentThreadId();
    for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
        if (GetWindowThreadProcessId(w, nullptr) != thread || !IsWindowVisible(w)) continue;
        if (!GetPropW(w, kFullScreenProp)) continue;
        if (HWND bar = ShellMenuBar(w)) {
            // Shown again, it comes up on top here and on an X display under Wine too, whose
            // stacking can part from the window list when the screen window is raised.
            ShowWindow(bar, SW_HIDE);
            SetWindowPos(bar, HWND_TOP, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
        }
        return;
    }
}

bool ShellInitDialog(HWND dialog) {
    if (!IsWindow(dialog)) return false;
    // A full-screen dialog has no frame of its own: the screen around it is the frame.
    LONG_PTR style = GetWindowLongPtrW(dialog, GWL_STYLE);
    style &= ~static_cast<LONG_PTR>(WS_CAPTION | WS_THICKFRAME | WS_BORDER | WS_DLGFRAME |
                                    WS_SYSMENU | DS_MODALFRAME);
    SetWindowLongPtrW(dialog, GWL_STYLE, style | WS_POPUP);
    LONG_PTR exStyle = GetWindowLongPtrW(dialog, GWL_EXSTYLE);
    SetWindowLongPtrW(dialog, GWL_EXSTYLE,
                      exStyle & ~static_cast<LONG_PTR>(WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE |
                                                       WS_EX_CLIENTEDGE));
    if (!GetPropW(dialog, kFullScreenProp)) {
        SetPropW(dialog, kFullScreenProp, reinterpret_cast<HANDLE>(1));
        LONG_PTR previous = SetWindowLongPtrW(dialog, GWLP_WNDPROC,
                                              reinterpret_cast<LONG_PTR>(FullScreenProc));
        SetPropW(dialog, kPreviousProcProp, reinterpret_cast<HANDLE>(previous));
    }
    PlaceDialog(dialog);
    ShowTitleOf(dialog);
    return true;
}
