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

std::u16string FieldText(HWND dialog, int id) {
    HWND field = GetDlgItem(dialog, id);
    const int length = GetWindowTextLengthW(field);
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    GetWindowTextW(field, reinterpret_cast<LPWSTR>(text.data()), length + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}
