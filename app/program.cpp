#include "app/program.h"

#include "app/app_state.h"
#include "app/app_texts.h"
#include "app/device_table.h"
#include "app/main_window.h"
#include "app/single_instance.h"
#include "link/link_client.h"
#include "platform/message_box.h"
#include "platform/socket.h"
#include "shell/product_boxes.h"

#include <commctrl.h>

namespace {
}  // namespace

int TremolanthMain(HINSTANCE instance, int showCommand) {
    Shell().instance = instance;
    bool running = false;
    if (FAILED(CheckSingleInstance(kAppName, nullptr, &running)) || running) return 0;
    return RunProgram(instance, showCommand);
}

int RunProgram(HINSTANCE instance, int showCommand) {
    Shell().instance = instance;
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&controls);
    if (plat::SocketsStartup() != 0) {
        ShowProductBox(nullptr, L"Error in WSAStartup", MB_OK);
        return 0;
    }
    if (std::int32_t rc = LinkInit(); rc != 0) {
        plat::ShowFaultBox(fault::kLinkCreate, rc);
    }
    if (!RegisterMainWindowClass(instance)) return 0;
    HWND window = CreateMainWindow(instance);
    if (!window) {
        UnregisterClassW(kAppName, instance);
        return 0;
    }
    Shell().mainWindow = window;
    plat::SetBoxAnchor(window);
    ShowWindow(window, showCommand);
    UpdateWindow(window);

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }

    // After a failed search the loop ends with the window still there.
    if (IsWindow(window)) DestroyWindow(window);
    // A panel screen ended by the quit message leaves its socket behind; closing it lets
    // the receive worker end before the link goes.
    CloseDeviceSocket(Devices());
    if (std::int32_t rc = LinkShutdown(); rc != 0) {
        plat::ShowFaultBox(fault::kLinkDestroy, rc);
    }
    plat::SocketsCleanup();
    // The class goes with the window, so that the program can run again in one process.
    UnregisterClassW(kAppName, instance);
    Shell().mainWindow = nullptr;
    plat::SetBoxAnchor(nullptr);
    return static_cast<int>(message.wParam);
}
