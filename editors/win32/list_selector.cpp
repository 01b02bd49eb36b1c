// The list selector (dialog 119): the items in a list box, the control's value selected.
#include "editors/win32/editors.h"

#include "editors/list_selection.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <algorithm>

namespace {

struct ListSelector {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
};

HWND ListOf(HWND dialog) {
    return GetDlgItem(dialog, IDC_SELECTOR_LIST);
}

void AddItems(HWND list, const ControlRecord& r) {
    std::u16string_view items = r.items;
    for (std::uint32_t i = 0; i < r.itemCount; ++i) {
        const std::size_t end = std::min(items.find(u'\0'), items.size());
        const std::u16string item(items.substr(0, end));
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(item)));
        items.remove_prefix(std::min(end + 1, items.size()));
    }
}

// -1 tells the list box to select nothing: an index past its items could leave the old one.
void SelectValue(HWND dialog, const ListSelector& selector) {
    std::int32_t value = -1;
    std::size_t size = sizeof value;
    GetControlValue(selector.id, &value, &size);
    const int row = ListSelectionFor(value, selector.record->itemCount);
    SendMessageW(ListOf(dialog), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

void Accept(HWND dialog, const ListSelector& selector) {
    if (!LinkIsOpen()) return;
    const auto index = static_cast<std::int32_t>(SendMessageW(ListOf(dialog), LB_GETCURSEL, 0, 0));
    SetControlValue(selector.id, &index, sizeof index);
    LinkSendPendingValues();
}

BOOL OnInitDialog(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& selector = *reinterpret_cast<ListSelector*>(state);
    SetEditorTitles(dialog, Shell().deviceListWindow, selector.record->label);
    AddItems(ListOf(dialog), *selector.record);
    SelectValue(dialog, selector);
    if (!ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView})) return TRUE;
    RECT client;
    GetClientRect(dialog, &client);
    MoveWindow(ListOf(dialog), 0, 0, client.right, client.bottom, TRUE);
    return TRUE;
}

BOOL OnCommand(HWND dialog, int command) {
    switch (command) {
    case IDOK:
    case IDC_DONE:
        Accept(dialog, *DialogStateOf<ListSelector>(dialog));
        break;
    case IDCANCEL:
        break;
    default:
        return FALSE;
    }
    ShellEndDialog(dialog, 0);
    return TRUE;
}

INT_PTR CALLBACK ListSelectorProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, lParam);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, ListOf(dialog));
    case kValueChangedMessage: {
        const ListSelector& selector = *DialogStateOf<ListSelector>(dialog);
        if (static_cast<std::uint32_t>(wParam) == selector.id) SelectValue(dialog, selector);
        return TRUE;
    }
    case kCloseViewsMessage:
        ShellEndDialog(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

void SelectListItem(std::uint32_t controlId, const ControlRecord& record) {
    ListSelector selector{controlId, &record};
    ShellRunDialog(IDD_LIST_SELECTOR, ListSelectorProc, &selector);
}
