#include "app/about_box.h"

#include "link/link_client.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"

namespace {

BOOL OnInitDialog(HWND dialog) {
    std::u16string title = LinkPanelId();
    auto text = reinterpret_cast<const wchar_t*>(title.c_str());
    SetWindowTextW(dialog, text);
    if (Shell().deviceListWindow) SetWindowTextW(Shell().deviceListWindow, text);
    SetDlgItemTextW(dialog, IDC_COMPILED, __DATE__ L", " __TIME__);
    ShellStartDialog(dialog, {IDM_DONE, DialogRole::kScreen, 0});
    return TRUE;
}

BOOL OnCommand(HWND dialog, int id) {
    if (id != IDCANCEL && id != IDC_DONE) return FALSE;
    ShellEndDialog(dialog, 0);
    return TRUE;
}

INT_PTR CALLBACK AboutProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    default:
        return FALSE;
    }
}

}  // namespace

void ShowAboutBox() { ShellRunDialog(IDD_ABOUT, AboutProc); }
