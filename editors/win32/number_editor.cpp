// The number editor: an edit box of the bare scaled number for a number the user may change
// (dialog 110), the row's text for one they may not (dialog 109).
#include "editors/win32/editors.h"

#include "editors/number_entry.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "panel/win32/edit_backspace.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

namespace {

struct NumberEditor {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
    bool editable = false;
};

NumberLook LookOf(const ControlRecord& r) {
    return {r.flags, r.format, r.decimals, r.exponent};
}

void ShowValue(HWND dialog, const NumberEditor& editor) {
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    GetControlValue(editor.id, &value, &size);
    SetControlText(dialog, IDC_CONTROL_VALUE,
                   NumberEditorText(value, LookOf(*editor.record), editor.editable));
    if (editor.editable) SelectAllText(dialog, IDC_CONTROL_VALUE);
}

// Stores what was typed, when it is a number and the link is still there to send it.
void Accept(HWND dialog, const NumberEditor& editor) {
    const ControlRecord& r = *editor.record;
    const NumberEntry entry = ConvertNumberEntry(ControlText(dialog, IDC_CONTROL_VALUE), r.exponent,
                                                 {r.flags, r.minimum, r.maximum});
    if (entry.store && LinkIsOpen()) {
        SetControlValue(editor.id, &entry.value, sizeof entry.value);
        LinkSendPendingValues();
    }
}

BOOL OnInitDialog(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& editor = *reinterpret_cast<NumberEditor*>(state);
    SetEditorTitles(dialog, Shell().mainWindow, LinkPanelId());
    SetControlText(dialog, IDC_CONTROL_TITLE, editor.record->label);
    ShowValue(dialog, editor);
    if (!ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView})) return TRUE;
    LayOutTitleAndValue(dialog, editor.editable);
    return TRUE;
}

BOOL OnCommand(HWND dialog, int command) {
    const NumberEditor& editor = *DialogStateOf<NumberEditor>(dialog);
    switch (command) {
    case IDCANCEL:
        if (!editor.editable) break;
        BackspaceEdit(GetDlgItem(dialog, IDC_CONTROL_VALUE));
        return TRUE;
    case IDOK:
    case IDC_DONE:
        if (editor.editable) Accept(dialog, editor);
        break;
    default:
        return FALSE;
    }
    ShellEndDialog(dialog, 0);
    return TRUE;
}

INT_PTR CALLBACK NumberEditorProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, lParam);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_CONTROL_VALUE));
    case kValueChangedMessage: {
        const NumberEditor& editor = *DialogStateOf<NumberEditor>(dialog);
        if (static_cast<std::uint32_t>(wParam) == editor.id) ShowValue(dialog, editor);
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

void EditNumber(std::uint32_t controlId, const ControlRecord& record) {
    NumberEditor editor{controlId, &record, (record.flags & kFlagVariant) != 0};
    ShellRunDialog(editor.editable ? IDD_EDIT_TEXT : IDD_STATIC_TEXT, NumberEditorProc, &editor);
}
