// The text editor: the text shown whole (dialog 109), or in an edit box limited to the
// control's capacity, plain (110) or masked (111).
#include "editors/win32/editors.h"

#include "editors/text_entry.h"
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

struct TextEditor {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
    bool editable = false;
    std::size_t capacity = 0; // characters, the terminator included
};

std::u16string ReadText(std::uint32_t id) {
    ControlsHold hold;
    std::size_t size = 0;
    GetControlValue(id, nullptr, &size);
    std::u16string text(size / 2, u'\0');
    size = text.size() * 2;
    GetControlValue(id, text.data(), &size);
    return text.substr(0, text.find(u'\0'));
}

void ShowValue(HWND dialog, const TextEditor& editor) {
    SetControlText(dialog, IDC_CONTROL_VALUE, ReadText(editor.id));
    if (!editor.editable) return;
    const std::size_t limit = TextTypingLimit(editor.capacity);
    // A limit of 0 would mean "no limit" to the edit box: a text without room takes nothing.
    SendDlgItemMessageW(dialog, IDC_CONTROL_VALUE, EM_SETREADONLY, limit == 0, 0);
    SendDlgItemMessageW(dialog, IDC_CONTROL_VALUE, EM_LIMITTEXT, limit, 0);
    SelectAllText(dialog, IDC_CONTROL_VALUE);
}

void Accept(HWND dialog, const TextEditor& editor) {
    if (!LinkIsOpen()) return;
    const std::vector<char16_t> units =
        TextUnitsToStore(ControlText(dialog, IDC_CONTROL_VALUE), editor.capacity);
    SetControlValue(editor.id, units.data(), units.size() * 2);
    LinkSendPendingValues();
}

BOOL OnInitDialog(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& editor = *reinterpret_cast<TextEditor*>(state);
    SetEditorTitles(dialog, Shell().mainWindow, LinkPanelId());
    SetControlText(dialog, IDC_CONTROL_TITLE, editor.record->label);
    ShowValue(dialog, editor);
    if (!ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView})) return TRUE;
    LayOutTitleAndValue(dialog, editor.editable);
    return TRUE;
}

BOOL OnCommand(HWND dialog, int command) {
    const TextEditor& editor = *DialogStateOf<TextEditor>(dialog);
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

INT_PTR CALLBACK TextEditorProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, lParam);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_CONTROL_VALUE));
    case kValueChangedMessage: {
        const TextEditor& editor = *DialogStateOf<TextEditor>(dialog);
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

int DialogFor(TextDialogKind kind) {
    switch (kind) {
    case TextDialogKind::kPlain:
        return IDD_EDIT_TEXT;
    case TextDialogKind::kMasked:
        return IDD_MASKED_TEXT;
    case TextDialogKind::kReadOnly:
    default:
        return IDD_STATIC_TEXT;
    }
}

} // namespace

void EditText(std::uint32_t controlId, const ControlRecord& record) {
    const TextDialogKind kind = PlanTextDialog(record.flags);
    TextEditor editor{controlId, &record, kind != TextDialogKind::kReadOnly,
                      TextCapacityChars(record.maxLength, record.flags)};
    ShellRunDialog(DialogFor(kind), TextEditorProc, &editor);
}
