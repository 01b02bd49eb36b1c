#include "shell/product_boxes.h"

#include "platform/message_box.h"

namespace {
std::u16string U16(const std::wstring& text) {
    return std::u16string(reinterpret_cast<const char16_t*>(text.data()), text.size());
}
}  // namespace

int ShowProductBox(HWND owner, const std::wstring& text, unsigned flags) {
    return plat::ShowMessageBox(owner, U16(text), U16(kProductName), flags);
}

void ShowMenubarFailed(HWND owner) { ShowProductBox(owner, L"Menubar failed", MB_OK); }
