// The date-time editor: number fields with spin buttons and a weekday list (dialog 120) for
// a control the user may change; the formatted value (dialog 109) for one they may not.
#include "editors/win32/editors.h"

#include "editors/datetime_entry.h"
#include "editors/win32/editor_window.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "panel/datetime_text.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <commctrl.h>

namespace {

struct DateTimeEditor {
    std::uint32_t id = 0;
    const ControlRecord* record = nullptr;
    bool editable = false;
};

struct Field {
    int edit, spin, label;
    std::uint32_t bit;
    int lowest, highest;
};
// The spins run from their highest value at the bottom to the lowest at the top.
constexpr Field kTimeFields[] = {
    {IDC_HOUR, IDC_HOUR_SPIN, IDC_HOUR_LABEL, kDateTimeHour, 0, 23},
    {IDC_MINUTE, IDC_MINUTE_SPIN, IDC_MINUTE_LABEL, kDateTimeMinute, 0, 59},
    {IDC_SECOND, IDC_SECOND_SPIN, IDC_SECOND_LABEL, kDateTimeSecond, 0, 59},
};
constexpr Field kDateFields[] = {
    {IDC_DAY, IDC_DAY_SPIN, IDC_DAY_LABEL, kDateTimeDay, 1, 31},
    {IDC_MONTH, IDC_MONTH_SPIN, IDC_MONTH_LABEL, kDateTimeMonth, 1, 12},
    {IDC_YEAR, IDC_YEAR_SPIN, IDC_YEAR_LABEL, kDateTimeYear, 0, kLatestYear},
};
constexpr int kWeekdayControls[] = {IDC_WEEKDAY, IDC_WEEKDAY_SPIN, IDC_WEEKDAY_LABEL};

DateTimeValue ReadValue(std::uint32_t id) {
    DateTimeValue value;
    std::size_t size = sizeof value;
    GetControlValue(id, &value, &size);
    return value;
}

// Plain digits: a year shown as 2,005 would read back as 2.
void ShowField(HWND dialog, const Field& field, int value) {
    SendDlgItemMessageW(dialog, field.spin, UDM_SETPOS32, 0, value);
    SetDlgItemInt(dialog, field.edit, static_cast<UINT>(value), FALSE);
}

void ShowValue(HWND dialog, const DateTimeEditor& editor) {
    const DateTimeValue v = ReadValue(editor.id);
    if (!editor.editable) {
        char16_t text[1024] = {};
        ExpandDateTimeTemplate(text, 1024, v, editor.record->format);
        SetControlText(dialog, IDC_CONTROL_VALUE, text);
        return;
    }
    ShowField(dialog, kTimeFields[0], v.hour);
    ShowField(dialog, kTimeFields[1], v.minute);
    ShowField(dialog, kTimeFields[2], static_cast<std::uint8_t>(v.second));
    ShowField(dialog, kDateFields[0], v.day);
    ShowField(dialog, kDateFields[1], v.month);
    ShowField(dialog, kDateFields[2], v.year);
    const WPARAM weekday = v.weekday < kNoWeekday ? v.weekday : static_cast<WPARAM>(-1);
    SendDlgItemMessageW(dialog, IDC_WEEKDAY, LB_SETCURSEL, weekday, 0);
}

void FillWeekdays(HWND dialog) {
    for (std::uint8_t day = 0; day < kNoWeekday; ++day) {
        DateTimeValue v;
        v.day = 1;
        v.month = 1;
        v.year = 2000;
        v.weekday = day;
        char16_t name[128] = {};
        ExpandDateTimeTemplate(name, 128, v, u"%dddd%");
        SendDlgItemMessageW(dialog, IDC_WEEKDAY, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    }
}

void ShowGroup(HWND dialog, const Field (&fields)[3], bool shown, std::uint32_t flags) {
    for (const Field& field : fields) {
        for (int id : {field.edit, field.spin, field.label}) {
            HWND control = GetDlgItem(dialog, id);
            ShowWindow(control, shown ? SW_SHOW : SW_HIDE);
            EnableWindow(control, (flags & field.bit) != 0);
        }
    }
}

void SetUpFields(HWND dialog, std::uint32_t flags) {
    for (const auto* group : {&kTimeFields, &kDateFields}) {
        for (const Field& field : *group) {
            SendDlgItemMessageW(dialog, field.spin, UDM_SETRANGE32, field.highest, field.lowest);
        }
    }
    FillWeekdays(dialog);
    const DateTimeLayout layout = PlanDateTimeLayout(flags);
    ShowGroup(dialog, kTimeFields, layout.timeShown, flags);
    ShowGroup(dialog, kDateFields, layout.dateShown, flags);
    for (int id : kWeekdayControls) {
        ShowWindow(GetDlgItem(dialog, id), layout.weekdayShown ? SW_SHOW : SW_HIDE);
    }
}

void Accept(HWND dialog, const DateTimeEditor& editor) {
    if (!LinkIsOpen()) return;
    DateTimeFieldTexts texts{DialogItemText(dialog, IDC_SECOND), DialogItemText(dialog, IDC_MINUTE),
                             DialogItemText(dialog, IDC_HOUR),   DialogItemText(dialog, IDC_DAY),
                             DialogItemText(dialog, IDC_MONTH),  DialogItemText(dialog, IDC_YEAR)};
    const int weekday =
        static_cast<int>(SendDlgItemMessageW(dialog, IDC_WEEKDAY, LB_GETCURSEL, 0, 0));
    const DateTimeValue v =
        AcceptDateTimeFields(ReadValue(editor.id), editor.record->flags, texts, weekday);
    SetControlValue(editor.id, &v, sizeof v);
    LinkSendPendingValues();
}

BOOL OnInitDialog(HWND dialog, LPARAM state) {
    KeepDialogState(dialog, state);
    auto& editor = *reinterpret_cast<DateTimeEditor*>(state);
    SetEditorTitles(dialog, Shell().deviceListWindow, LinkPanelId());
    SetControlText(dialog, IDC_CONTROL_TITLE, editor.record->label);
    if (editor.editable) SetUpFields(dialog, editor.record->flags);
    ShowValue(dialog, editor);
    if (!ShellStartDialog(dialog, {IDM_DONE, DialogRole::kView})) return TRUE;
    if (!editor.editable) LayOutTitleAndValue(dialog, false);
    return TRUE;
}

// The weekday list has no buddy to count in: its spin moves the selection.
INT_PTR OnNotify(HWND dialog, const NMHDR* header) {
    if (header->idFrom != IDC_WEEKDAY_SPIN || header->code != UDN_DELTAPOS) return FALSE;
    const auto* change = reinterpret_cast<const NMUPDOWN*>(header);
    auto row = static_cast<int>(SendDlgItemMessageW(dialog, IDC_WEEKDAY, LB_GETCURSEL, 0, 0));
    row = row < 0 ? 0 : row + (change->iDelta > 0 ? 1 : -1);
    if (row >= 0 && row < kNoWeekday) {
        SendDlgItemMessageW(dialog, IDC_WEEKDAY, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
    return NotifyResult(dialog, TRUE);
}

BOOL OnCommand(HWND dialog, int command) {
    const DateTimeEditor& editor = *DialogStateOf<DateTimeEditor>(dialog);
    switch (command) {
    case IDOK:
    case IDC_DONE:
        if (editor.editable) Accept(dialog, editor);
        break;
    case IDCANCEL:
        break;
    default:
        return FALSE;
    }
    ShellEndDialog(dialog, 0);
    return TRUE;
}

// The first field the control offers takes the focus.
HWND FirstField(HWND dialog, const DateTimeEditor& editor) {
    if (!editor.editable) return GetDlgItem(dialog, IDC_CONTROL_VALUE);
    for (const auto* group : {&kTimeFields, &kDateFields}) {
        for (const Field& field : *group) {
            if (editor.record->flags & field.bit) return GetDlgItem(dialog, field.edit);
        }
    }
    return GetDlgItem(dialog, IDC_WEEKDAY);
}

INT_PTR CALLBACK DateTimeProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog, lParam);
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case WM_NOTIFY:
        return OnNotify(dialog, reinterpret_cast<const NMHDR*>(lParam));
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam,
                              FirstField(dialog, *DialogStateOf<DateTimeEditor>(dialog)));
    case kValueChangedMessage: {
        const DateTimeEditor& editor = *DialogStateOf<DateTimeEditor>(dialog);
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

void EditDateTime(std::uint32_t controlId, const ControlRecord& record) {
    DateTimeEditor editor{controlId, &record, (record.flags & kFlagVariant) != 0};
    ShellRunDialog(editor.editable ? IDD_DATE_TIME : IDD_STATIC_TEXT, DateTimeProc, &editor);
}
