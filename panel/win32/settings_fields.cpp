#include "panel/win32/settings_fields.h"

#include "link/link_client.h"

namespace {

constexpr int kNumberFieldLimit = 6;

}  // namespace

void ShowPanelNameAsTitle(HWND dialog) {
    std::u16string name = LinkPanelId();
    SetWindowTextW(dialog, reinterpret_cast<const wchar_t*>(name.c_str()));
}

void SetNumberField(HWND dialog, int id, const std::u16string& text) {
    SetDlgItemTextW(dialog, id, reinterpret_cast<const wchar_t*>(text.c_str()));
    SendDlgItemMessageW(dialog, id, EM_LIMITTEXT, kNumberFieldLimit, 0);
    SendDlgItemMessageW(dialog, id, EM_SETSEL, 0, -1);
}
