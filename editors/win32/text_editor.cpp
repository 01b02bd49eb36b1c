// The text editor: the text shown whole (dialog 109), or in an edit box limited to the
// control's capacity, plain (110) or masked (111).
#include "editors/win32/editors.h"

#include "editors/text_entry.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "res/resource.h"

namespace {

std::u16string ReadText(std::uint32_t id) {
    ControlsHold hold;
    std::size_t size = 0;
    GetControlValue(id, nullptr, &size);
    std::u16string text(size / 2, u'\0');
    size = text.size() * 2;
    GetControlValue(id, text.data(), &size);
    return text.substr(0, text.find(u'\0'));
}

void ShowValue(HWND dialog, const ValueBoxEditor& editor) {
    SetControlText(dialog, IDC_CONTROL_VALUE, ReadText(editor.id));
    if (!editor.editable) return;
    const std::size_t limit = TextTypingLimit(editor.capacity);
    // A limit of 0 would mean "no limit" to the edit box: a text without room takes nothing.
    SendDlgItemMessageW(dialog, IDC_CONTROL_VALUE, EM_SETREADONLY, limit == 0, 0);
    SendDlgItemMessageW(dialog, IDC_CONTROL_VALUE, EM_LIMITTEXT, limit, 0);
    SelectAllText(dialog, IDC_CONTROL_VALUE);
}

void Accept(HWND dialog, const ValueBoxEditor& editor) {
    if (!LinkIsOpen()) return;
    const std::vector<char16_t> units =
        TextUnitsToStore(DialogItemText(dialog, IDC_CONTROL_VALUE), editor.capacity);
    SetControlValue(editor.id, units.data(), units.size() * 2);
    LinkSendPendingValues();
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
    ValueBoxEditor editor{controlId, &record, kind != TextDialogKind::kReadOnly,
                          TextCapacityChars(record.maxLength, record.flags), ShowValue, Accept};
    RunValueBoxEditor(DialogFor(kind), editor);
}
