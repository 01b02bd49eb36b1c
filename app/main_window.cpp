#include "app/main_window.h"

#include "app/app_state.h"
#include "app/app_texts.h"
#include "app/device_inquiry.h"
#include "app/device_list.h"
#include "res/resource.h"
#include "shell/phone_shell.h"
#include "shell/product_boxes.h"

namespace {

constexpr UINT_PTR kOpenTimer = 1;

// A desktop window needs a caption and a close box; the handset's had neither.
constexpr DWORD kMainWindowStyle = WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

LRESULT OnCreate(HWND window) {
    ShellAttachScreen(window);
    if (!ShellCreateMenuBar(window, IDM_DEVICES)) return -1;
    LOGFONTW font{};
    HDC dc = GetDC(window);
    font.lfHeight = -(GetDeviceCaps(dc, LOGPIXELSY) * 11 / 72);  // 11 points
    ReleaseDC(window, dc);
    font.lfWeight = 600;
    Shell().listFont = CreateFontIndirectW(&font);
    SetTimer(window, kOpenTimer, 1, nullptr);
    return 0;
}

void OnDestroy(HWND window) {
    DeleteObject(Shell().listFont);
    Shell().listFont = nullptr;
    ShellDetachScreen(window);
    PostQuitMessage(0);
}

}  // namespace

bool RegisterMainWindowClass(HINSTANCE instance) {
    WNDCLASSW wc{};
    wc.style = CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = MainWindowProc;
    wc.hInstance = instance;
    wc.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_TREMOLANTH));
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    wc.lpszClassName = kAppName;
    return RegisterClassW(&wc) != 0;
}

HWND CreateMainWindow(HINSTANCE instance) {
    return CreateWindowExW(0, kAppName, kProductName, kMainWindowStyle, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                           instance, nullptr);
}

void OpenDeviceList(HWND mainWindow) {
    std::int32_t rc = InquireDevices(Devices(), kInquiryLength);
    if ((rc & 0xFFFF) != 0) {
        ShowProductBox(mainWindow,
                       L"Bluetooth can't be activated.  Check the radio is switched on and no "
                       L"other programs are using Bluetooth.",
                       MB_OKCANCEL);
        PostQuitMessage(0);
        return;
    }
    RunDeviceList(mainWindow);
    PostMessageW(mainWindow, WM_COMMAND, IDC_DONE_DEVICES, 0);
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return OnCreate(window);
    case WM_PAINT: {
        PAINTSTRUCT ps;
        BeginPaint(window, &ps);
        EndPaint(window, &ps);
        return 0;
    }
    case WM_WINDOWPOSCHANGED:
        ShellLayoutScreen();
        break;
    case WM_TIMER:
        KillTimer(window, kOpenTimer);
        OpenDeviceList(window);
        return 1;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_DONE_DEVICES) {
            DestroyWindow(window);
            return 1;
        }
        if (LOWORD(wParam) == IDC_SCAN) {
            OpenDeviceList(window);
            return 1;
        }
        break;
    case WM_DESTROY:
        OnDestroy(window);
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}
