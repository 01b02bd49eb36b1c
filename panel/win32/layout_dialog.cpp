#include "panel/win32/layout_dialog.h"

#include "panel/control_styles.h"
#include "panel/settings_forms.h"
#include "panel/win32/edit_backspace.h"
#include "panel/win32/settings_fields.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/view_messages.h"

#include <commctrl.h>

#include <span>

namespace {

struct LayoutDialogState {
    std::uint32_t controlId = 0;
    std::uint16_t type = 0;
};

// A one-line list with its spin: the spin moves the list's selection (the up arrow to the
// entry above).
void FillChoices(HWND dialog, int listId, int spinId, std::span<const char16_t* const> names,
                 std::int32_t selected) {
    HWND list = GetDlgItem(dialog, listId);
    // One entry fills the box, so the spin shows one choice at a time.
    RECT client;
    GetClientRect(list, &client);
    SendMessageW(list, LB_SETITEMHEIGHT, 0, MAKELPARAM(client.bottom, 0));
    for (const char16_t* name : names) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    }
    // An index the list does not have leaves it without a selection.
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(selected), 0);
    const auto last = static_cast<LPARAM>(names.empty() ? 0 : names.size() - 1);
    SendDlgItemMessageW(dialog, spinId, UDM_SETRANGE32, static_cast<WPARAM>(last), 0);
    const LRESULT current = SendMessageW(list, LB_GETCURSEL, 0, 0);
    SendDlgItemMessageW(dialog, spinId, UDM_SETPOS32, 0, current == LB_ERR ? 0 : current);
}

int Selection(HWND dialog, int listId) {
    return static_cast<int>(SendDlgItemMessageW(dialog, listId, LB_GETCURSEL, 0, 0));
}

BOOL OnInitDialog(HWND dialog, LayoutDialogState* state) {
    KeepDialogState(dialog, reinterpret_cast<LPARAM>(state));
    ShowPanelNameAsTitle(dialog);
    const LayoutChoice stored = ReadLayoutChoice(state->controlId);
    FillChoices(dialog, IDC_LAYOUT_STYLE, IDC_LAYOUT_STYLE_SPIN, StyleNames(state->type),
                stored.style);
    FillChoices(dialog, IDC_LAYOUT_FAST_KEY, IDC_LAYOUT_FAST_KEY_SPIN, FastKeyNames(),
                stored.fastKey);
    SetNumberField(dialog, IDC_LAYOUT_TITLE_LENGTH, NumberFieldText(stored.titleLength));
    FillChoices(dialog, IDC_LAYOUT_VALUE_SHOW, IDC_LAYOUT_VALUE_SHOW_SPIN, ValueShowNames(),
                stored.valueShow);
    ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView, kFocusTimer});
    return TRUE;
}

void OnDone(HWND dialog, const LayoutDialogState& state) {
    LayoutChoice choice;
    choice.titleLength = ParseNumberField(DialogItemText(dialog, IDC_LAYOUT_TITLE_LENGTH));
    choice.style = ChosenIndex(Selection(dialog, IDC_LAYOUT_STYLE));
    choice.fastKey = ChosenIndex(Selection(dialog, IDC_LAYOUT_FAST_KEY));
    choice.valueShow = ChosenIndex(Selection(dialog, IDC_LAYOUT_VALUE_SHOW));
    SaveLayoutChoice(state.controlId, choice);
    ShellEndDialog(dialog, IDOK);
}

BOOL OnCommand(HWND dialog, int id) {
    switch (id) {
    case IDC_DONE:
        OnDone(dialog, *DialogStateOf<LayoutDialogState>(dialog));
        return TRUE;
    case IDCANCEL:
        if (!BackspaceInFocusedEdit(dialog, {IDC_LAYOUT_TITLE_LENGTH})) {
            ShellEndDialog(dialog, IDCANCEL);
        }
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK LayoutDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, reinterpret_cast<LayoutDialogState*>(lParam));
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_LAYOUT_FAST_KEY));
        return TRUE;
    case kCloseViewsMessage:
        ShellEndDialog(dialog, IDCANCEL);
        return TRUE;
    case kValueChangedMessage:
        return TRUE;  // nothing here shows a value
    default:
        return FALSE;
    }
}

}  // namespace

void EditControlLayout(std::uint32_t controlId, const ControlRecord& record) {
    LayoutDialogState state{controlId, record.type};
    ShellRunDialog(IDD_CONTROL_LAYOUT, LayoutDialogProc, &state);
}
