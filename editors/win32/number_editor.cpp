// The number editor: an edit box of the bare scaled number for a number the user may change
// (dialog 110), the row's text for one they may not (dialog 109).
#include "editors/win32/editors.h"

#include "editors/number_entry.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "res/resource.h"

namespace {

NumberLook LookOf(const ControlRecord& r) {
    return {r.flags, r.format, r.decimals, r.exponent};
}

void ShowValue(HWND dialog, const ValueBoxEditor& editor) {
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    GetControlValue(editor.id, &value, &size);
    SetControlText(dialog, IDC_CONTROL_VALUE,
                   NumberEditorText(value, LookOf(*editor.record), editor.editable));
    if (editor.editable) SelectAllText(dialog, IDC_CONTROL_VALUE);
}

// Stores what was typed, when it is a number and the link is still there to send it.
void Accept(HWND dialog, const ValueBoxEditor& editor) {
    const ControlRecord& r = *editor.record;
    const NumberEntry entry = ConvertNumberEntry(DialogItemText(dialog, IDC_CONTROL_VALUE), r.exponent,
                                                 {r.flags, r.minimum, r.maximum});
    if (entry.store && LinkIsOpen()) {
        SetControlValue(editor.id, &entry.value, sizeof entry.value);
        LinkSendPendingValues();
    }
}

} // namespace

void EditNumber(std::uint32_t controlId, const ControlRecord& record) {
    ValueBoxEditor editor{controlId, &record, (record.flags & kFlagVariant) != 0, 0, ShowValue,
                          Accept};
    RunValueBoxEditor(editor.editable ? IDD_EDIT_TEXT : IDD_STATIC_TEXT, editor);
}
