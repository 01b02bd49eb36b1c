#include "app/about_box.h"

#include "app/app_state.h"
#include "app/message_boxes.h"
#include "link/link_client.h"
#include "platform/win32/phone_shell.h"
#include "res/resource.h"

namespace {

BOOL OnInitDialog(HWND dialog) {
    std::u16string title = LinkPanelId();
    auto text = reinterpret_cast<const wchar_t*>(title.c_str());
    SetWindowTextW(dialog, text);
    if (App().deviceListWindow) SetWindowTextW(App().deviceListWindow, text);
    SetDlgItemTextW(dialog, IDC_COMPILED, __DATE__ L", " __TIME__);
    ShellInitDialog(dialog);
    if (!ShellCreateMenuBar(dialog, IDM_DONE)) {
        ShowMenubarFailed(dialog);
        DestroyWindow(dialog);
    }
    return TRUE;
}

INT_PTR CALLBACK AboutProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL || LOWORD(wParam) == IDC_DONE) {
            EndDialog(dialog, 0);
            return TRUE;
        }
        break;
    default:
        break;
    }
    return FALSE;
}

}  // namespace

void ShowAboutBox() {
    DialogBoxW(App().instance, MAKEINTRESOURCEW(IDD_ABOUT), App().mainWindow, AboutProc);
}
