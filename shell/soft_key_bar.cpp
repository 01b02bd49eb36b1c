// The soft-key bar: a strip at the bottom of the screen with two keys labelled from a menu
// resource. It never takes the focus, so the keys act on the window it belongs to.
#include "shell/phone_shell.h"
#include "shell/shell_windows.h"

#include <atomic>

namespace {

const wchar_t kBarClass[] = L"TmqSoftKeyBar";
const wchar_t kBarProp[] = L"TmqSoftKeyBar";
constexpr UINT kPressMessage = WM_APP + 0x100;  // wParam: the key

std::atomic<bool> g_failBars{false};

struct KeyItem {
    UINT command = 0;
    HMENU popup = nullptr;
    wchar_t label[64] = {};
};

struct BarData {
    HWND owner = nullptr;
    HMENU menu = nullptr;
    KeyItem keys[2];
};

BarData* DataOf(HWND bar) {
    return reinterpret_cast<BarData*>(GetWindowLongPtrW(bar, GWLP_USERDATA));
}

bool IsBar(HWND window) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    return lstrcmpW(name, kBarClass) == 0;
}

void ReadKey(HMENU menu, int position, KeyItem* key) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    info.dwTypeData = key->label;
    info.cch = 63;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info)) return;
    key->command = info.wID;
    key->popup = info.hSubMenu;
}

void Press(HWND bar, int which) {
    BarData* data = DataOf(bar);
    if (!data || which < 0 || which > 1) return;
    const KeyItem& key = data->keys[which];
    HWND owner = data->owner;
    UINT command = key.command;
    if (key.popup) {
        RECT r;
        GetWindowRect(bar, &r);
        SetForegroundWindow(owner);
        command = static_cast<UINT>(TrackPopupMenuEx(
            key.popup, TPM_RETURNCMD | TPM_RIGHTALIGN | TPM_BOTTOMALIGN | TPM_NONOTIFY, r.right,
            r.top, owner, nullptr));
        PostMessageW(owner, WM_NULL, 0, 0);
    } else if (key.label[0] == 0) {
        return;  // a bar with one key: the right one is empty
    }
    if (command != 0) SendMessageW(owner, WM_COMMAND, MAKEWPARAM(command, 0), 0);
}

void Paint(HWND bar) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(bar, &ps);
    RECT r;
    GetClientRect(bar, &r);
    // The handset's bar: dark, with a lighter edge on top.
    HBRUSH back = CreateSolidBrush(RGB(40, 48, 64));
    FillRect(dc, &r, back);
    DeleteObject(back);
    RECT edge{r.left, r.top, r.right, r.top + 1};
    HBRUSH light = CreateSolidBrush(RGB(120, 136, 168));
    FillRect(dc, &edge, light);
    DeleteObject(light);
    if (BarData* data = DataOf(bar)) {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        metrics.lfMenuFont.lfWeight = FW_BOLD;
        HFONT font = CreateFontIndirectW(&metrics.lfMenuFont);
        HGDIOBJ old = SelectObject(dc, font);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, RGB(255, 255, 255));
        RECT text = r;
        InflateRect(&text, -ShellScale(8), 0);
        DrawTextW(dc, data->keys[0].label, -1, &text, DT_LEFT | DT_VCENTER | DT_SINGLELINE);
        DrawTextW(dc, data->keys[1].label, -1, &text, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
        SelectObject(dc, old);
        DeleteObject(font);
    }
    EndPaint(bar, &ps);
}

LRESULT CALLBACK BarProc(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint(bar);
        return 0;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONUP: {
        RECT r;
        GetClientRect(bar, &r);
        Press(bar, static_cast<short>(LOWORD(lParam)) < r.right / 2 ? 0 : 1);
        return 0;
    }
    case kPressMessage:
        Press(bar, static_cast<int>(wParam));
        return 0;
    case WM_DESTROY:
        if (BarData* data = DataOf(bar)) {
            if (GetPropW(data->owner, kBarProp) == bar) RemovePropW(data->owner, kBarProp);
        }
        return 0;
    case WM_NCDESTROY:
        if (BarData* data = DataOf(bar)) {
            DestroyMenu(data->menu);
            delete data;
            SetWindowLongPtrW(bar, GWLP_USERDATA, 0);
        }
        break;
    default:
        break;
    }
    return DefWindowProcW(bar, message, wParam, lParam);
}

void RegisterBarClass(HINSTANCE instance) {
    WNDCLASSW existing;
    if (GetClassInfoW(instance, kBarClass, &existing)) return;
    WNDCLASSW wc{};
    wc.lpfnWndProc = BarProc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = kBarClass;
    RegisterClassW(&wc);
}

}  // namespace

void ShellFailMenuBarsForTest(bool fail) { g_failBars = fail; }

void PlaceSoftKeyBar(HWND window) {
    if (!IsBar(window)) return;
    RECT r = ShellScreenRect();
    int height = ShellScale(kSoftKeyBarHeight);
    SetWindowPos(window, nullptr, r.left, r.bottom - height, r.right - r.left, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND ShellCreateMenuBar(HWND owner, int menuId) {
    if (g_failBars || !IsWindow(owner)) return nullptr;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    HMENU menu = LoadMenuW(instance, MAKEINTRESOURCEW(menuId));
    if (!menu) return nullptr;
    RegisterBarClass(instance);
    auto* data = new BarData;
    data->owner = owner;
    data->menu = menu;
    ReadKey(menu, 0, &data->keys[0]);
    if (GetMenuItemCount(menu) > 1) ReadKey(menu, 1, &data->keys[1]);
    HWND bar = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, kBarClass, L"", WS_POPUP,
                               0, 0, 0, 0, owner, nullptr, instance, nullptr);
    if (!bar) {
        DestroyMenu(menu);
        delete data;
        return nullptr;
    }
    SetWindowLongPtrW(bar, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(data));
    if (HWND old = ShellMenuBar(owner)) DestroyWindow(old);
    SetPropW(owner, kBarProp, bar);
    PlaceSoftKeyBar(bar);
    ShowWindow(bar, SW_SHOWNOACTIVATE);
    return bar;
}

HWND ShellMenuBar(HWND owner) { return static_cast<HWND>(GetPropW(owner, kBarProp)); }

void ShellPressSoftKey(HWND owner, SoftKey key) {
    if (HWND bar = ShellMenuBar(owner)) PostMessageW(bar, kPressMessage, key, 0);
}

std::wstring ShellSoftKeyLabel(HWND owner, SoftKey key) {
    HWND bar = ShellMenuBar(owner);
    BarData* data = bar ? DataOf(bar) : nullptr;
    return data ? std::wstring(data->keys[key].label) : std::wstring();
}
