// The list-view side of the panel rows; what the rows hold is decided in the portable
// panel/ files.
#include "panel/win32/control_rows.h"

#include "link/link_client.h"
#include "model/control_store.h"
#include "panel/check_toggle.h"
#include "panel/fast_keys.h"
#include "panel/layout_changes.h"
#include "panel/message_control.h"
#include "panel/row_plan.h"
#include "panel/row_text.h"
#include "platform/message_box.h"
#include "res/resource.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <commctrl.h>

#include <string>
#include <vector>

namespace {

constexpr int kRowHeight = 18;  // pixels one remembered top row scrolls

LPWSTR Wide(const char16_t* text) {
    return reinterpret_cast<LPWSTR>(const_cast<char16_t*>(text));
}

HWND ListOf(HWND dialog) { return GetDlgItem(dialog, IDC_PANEL_LIST); }

int RowCount(HWND list) { return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); }

std::vector<std::uint32_t> RowControlIds(HWND list) {
    std::vector<std::uint32_t> ids;
    for (int row = 0, count = RowCount(list); row < count; ++row) {
        ids.push_back(RowControlId(list, row));
    }
    return ids;
}

void SetRowImage(HWND list, int row, int image) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = image;
    SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void SetRowTextAndImage(HWND list, int row, const std::u16string& text, int image) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = row;
    item.pszText = Wide(text.c_str());
    item.iImage = image;
    SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void InsertRow(HWND list, int row, const PlannedRow& planned) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = row;
    item.pszText = Wide(planned.text.c_str());
    item.iImage = planned.image;
    item.lParam = static_cast<LPARAM>(planned.controlId);
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));

    LVITEMW key{};
    key.iSubItem = 1;
    key.pszText = Wide(FastKeyLabel(planned.fastKey));
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&key));
}

// The row's current text and image.
void ReadRow(HWND list, int row, std::u16string* text, int* image) {
    char16_t buffer[kRowTextSize] = {};
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = row;
    item.pszText = reinterpret_cast<LPWSTR>(buffer);
    item.cchTextMax = static_cast<int>(kRowTextSize);
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    *text = buffer;
    *image = item.iImage;
}

void SelectRow(HWND list, int row) {
    LVITEMW state{};
    state.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    state.state = LVIS_FOCUSED | LVIS_SELECTED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
}

void NotifyDataView(UINT message, std::uint32_t controlId) {
    if (HWND view = Shell().currentDialog) SendMessageW(view, message, controlId, 0);
}

// Runs on the box thread that closed the last box: the list lives on the UI thread, whose
// input state this thread borrows for the moment of the focus change.
void ReturnFocusToList() {
    HWND list = GetDlgItem(Shell().panelScreen, IDC_PANEL_LIST);
    if (!list) return;
    DWORD mine = GetCurrentThreadId();
    DWORD owner = GetWindowThreadProcessId(list, nullptr);
    bool attached = owner != mine && AttachThreadInput(mine, owner, TRUE);
    SetFocus(list);
    if (attached) AttachThreadInput(mine, owner, FALSE);
}

// A desktop scroll bar is wider than the room the handset leaves for its own: narrow the title
// column so that both columns stay inside the list and no sideways scroll bar appears.
void FitFirstColumn(HWND list) {
    RECT inside;
    GetClientRect(list, &inside);
    const int fit = inside.right - static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, 1, 0));
    if (fit > 0 && SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0) > fit) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(fit, 0));
    }
}

}  // namespace

std::uint32_t RowControlId(HWND list, int row) {
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return static_cast<std::uint32_t>(item.lParam);
}

void FillControlRows(HWND dialog) {
    HWND list = ListOf(dialog);
    int remembered = static_cast<int>(
        SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (remembered < 0) remembered = 0;
    int top = static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0));

    ControlsHold hold;
    std::u16string name = LinkPanelId();
    SetWindowTextW(dialog, Wide(name.c_str()));
    if (Shell().mainWindow) SetWindowTextW(Shell().mainWindow, Wide(name.c_str()));

    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    std::vector<PlannedRow> rows = PlanControlRows();
    const int count = static_cast<int>(rows.size());
    SendMessageW(list, LVM_SETCOLUMNWIDTH, 0,
                 MAKELPARAM(FirstColumnWidth(Shell().listWidth, rows.size()), 0));
    SendMessageW(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), 0);
    for (int row = 0; row < count; ++row) InsertRow(list, row, rows[row]);
    RecordFastKeys(rows, FastKeys());

    SelectRow(list, remembered < count ? remembered : 0);
    if (top >= count) top = 0;
    SendMessageW(list, LVM_SCROLL, 0, top * kRowHeight);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    FitFirstColumn(list);
    SetFocus(list);
}

void RefreshChangedRows(HWND dialog) {
    HWND list = ListOf(dialog);
    ControlsHold hold;
    for (int row = 0, count = RowCount(list); row < count; ++row) {
        const std::uint32_t id = RowControlId(list, row);
        if (FindControlIndex(id) < 0 || !IsValueChanged(id)) continue;
        if (GetControlType(id) == kTypeMessage) {
            plat::ShowFaultBox(fault::kMessageRow, kTypeMessage);
            continue;
        }
        const int image = RowImage(id);
        const std::u16string text = ComposeRowText(id);
        std::u16string shownText;
        int shownImage = 0;
        ReadRow(list, row, &shownText, &shownImage);
        if (text != shownText || image != shownImage) SetRowTextAndImage(list, row, text, image);
        NotifyDataView(kValueChangedMessage, id);
    }
}

void RefreshLayoutChanges(HWND dialog) {
    HWND list = ListOf(dialog);
    LayoutChangePlan plan;
    {
        ControlsHold hold;
        plan = PlanLayoutChanges(RowControlIds(list));
        for (int row : plan.rowsIntoView) {
            NotifyDataView(kCloseViewsMessage, 0);
            SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        }
        if (plan.rebuild) FillControlRows(dialog);
    }
    for (std::uint32_t id : plan.messageIds) ShowMessageControl(id);
}

void ShowMessageControl(std::uint32_t controlId) {
    StartMessageBox(controlId, &ReturnFocusToList);
}

void ToggleCheckRow(HWND dialog, std::uint32_t controlId, int row) {
    HWND list = ListOf(dialog);
    const CheckToggle toggle = ToggleCheckControl(controlId);  // sends, so not under the lock
    if (!toggle.done) return;
    ControlsHold hold;
    if (toggle.group != 0) {
        for (int other = 0, count = RowCount(list); other < count; ++other) {
            const ControlRecord* r = FindControl(RowControlId(list, other));
            if (r && r->type == kTypeCheckBox && r->group == toggle.group) {
                SetRowImage(list, other, kImageRadioOff);
            }
        }
    }
    SetRowImage(list, row, toggle.image);
}
