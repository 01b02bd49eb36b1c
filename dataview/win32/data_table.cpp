#include "dataview/matrix_view.h"
#include "dataview/view_texts.h"
#include "dataview/win32/data_views.h"
#include "model/control_store.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/list_view.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <commctrl.h>

#include <memory>

namespace {

// The table's lines are the list view's own data: the texts are made when the list asks for
// them, from a copy of the control taken at the last refill.
struct TableState {
    HWND parentChart = nullptr;
    ControlRecord snapshot;
    std::unique_ptr<dataview::MatrixView> view;
};

HWND List(HWND dialog) { return GetDlgItem(dialog, IDC_TABLE_LIST); }

int ListWidth(HWND dialog) {
    if (Shell().listWidth > 0) return Shell().listWidth;
    RECT client;
    GetClientRect(dialog, &client);
    return client.right;
}

void TakeSnapshot(TableState& state) {
    state.view.reset();
    if (!CopyControl(CurrentDataView().controlId, &state.snapshot)) {
        state.snapshot = ControlRecord{};
        return;
    }
    state.view = std::make_unique<dataview::MatrixView>(state.snapshot);
}

void Refill(HWND dialog, TableState& state) {
    HWND list = List(dialog);
    const int selected = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    ListView_SetItemCountEx(list, 0, 0);
    TakeSnapshot(state);
    const int rows = state.view ? static_cast<int>(state.view->Rows()) : 0;
    ListView_SetItemCountEx(list, rows, 0);
    if (selected >= 0 && rows > 0) {
        const int row = selected < rows ? selected : rows - 1;
        SelectAndFocusRow(list, row);
        ListView_EnsureVisible(list, row, FALSE);
    }
}

void InsertColumns(HWND dialog, const TableState& state) {
    if (!state.view) return;
    auto columns = dataview::TableColumns(*state.view, ListWidth(dialog));
    for (std::size_t k = 0; k < columns.size(); ++k) {
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
        column.fmt = LVCFMT_RIGHT;
        column.cx = columns[k].width;
        column.pszText = const_cast<wchar_t*>(reinterpret_cast<const wchar_t*>(columns[k].title.c_str()));
        ListView_InsertColumn(List(dialog), static_cast<int>(k), &column);
    }
}

BOOL OnInitDialog(HWND dialog, TableState* state) {
    KeepDialogState(dialog, reinterpret_cast<LPARAM>(state));
    state->parentChart = Shell().currentDialog;
    auto title = reinterpret_cast<const wchar_t*>(CurrentDataView().record.label.c_str());
    SetWindowTextW(dialog, title);
    if (Shell().mainWindow) SetWindowTextW(Shell().mainWindow, title);
    if (!ShellStartDialog(dialog, {IDM_TABLE, DialogRole::kView, kFocusTimer})) return TRUE;
    HWND list = List(dialog);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    RECT client;
    GetClientRect(dialog, &client);
    MoveWindow(list, 0, 0, client.right, client.bottom, FALSE);
    ListView_SetBkColor(list, CLR_NONE);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    Refill(dialog, *state);  // takes the copy the columns are made from
    InsertColumns(dialog, *state);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    return TRUE;
}

void OnDisplayInfo(const TableState& state, NMLVDISPINFOW* info) {
    LVITEMW& item = info->item;
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0) return;
    item.pszText[0] = L'\0';
    if (!state.view || item.iItem < 0 || item.iSubItem < 0) return;
    std::u16string text = dataview::TableCellText(*state.view, static_cast<std::uint32_t>(item.iItem),
                                                  static_cast<std::uint32_t>(item.iSubItem));
    const std::size_t room = static_cast<std::size_t>(item.cchTextMax) - 1;
    const std::size_t n = text.size() < room ? text.size() : room;
    text.copy(reinterpret_cast<char16_t*>(item.pszText), n);
    item.pszText[n] = L'\0';
}

void CloseAll(HWND dialog, TableState& state) {
    ShellEndDialog(dialog, 0);
    if (state.parentChart && IsWindow(state.parentChart)) ShellEndDialog(state.parentChart, 0);
    state.parentChart = nullptr;
    Shell().currentDialog = nullptr;
}

BOOL OnCommand(HWND dialog, TableState& state, int id) {
    switch (id) {
    case IDC_SAVE_CSV_SEMICOLON:
    case IDC_SAVE_CSV_COMMA:
        // A close that reached the file-name dialog leaves the table without its chart: Done
        // then makes no view current, and a later close ends the table alone.
        if (ExportTableCsv(dialog, List(dialog), id == IDC_SAVE_CSV_COMMA ? 1 : 0)) {
            state.parentChart = nullptr;
        }
        SetFocus(List(dialog));
        return TRUE;
    case IDC_DONE:
    case IDCANCEL: {
        // The chart under the table is the current view again, unless it was forgotten.
        const bool current = Shell().currentDialog == dialog;
        ShellEndDialog(dialog, 0);
        if (current) {
            Shell().currentDialog =
                state.parentChart && IsWindow(state.parentChart) ? state.parentChart : nullptr;
        }
        state.parentChart = nullptr;
        return TRUE;
    }
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK TableProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog, reinterpret_cast<TableState*>(lParam));
    TableState* state = DialogStateOf<TableState>(dialog);
    if (!state) return FALSE;
    switch (message) {
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, List(dialog)) ? TRUE : FALSE;
    case WM_NOTIFY: {
        auto* header = reinterpret_cast<NMHDR*>(lParam);
        if (header->idFrom == IDC_TABLE_LIST && header->code == LVN_GETDISPINFOW) {
            OnDisplayInfo(*state, reinterpret_cast<NMLVDISPINFOW*>(lParam));
            return TRUE;
        }
        return FALSE;
    }
    case WM_COMMAND:
        return OnCommand(dialog, *state, LOWORD(wParam));
    case kValueChangedMessage:
        if (static_cast<std::uint32_t>(wParam) == CurrentDataView().controlId) {
            HWND list = List(dialog);
            SendMessageW(list, WM_SETREDRAW, FALSE, 0);
            Refill(dialog, *state);
            SendMessageW(list, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(list, nullptr, TRUE);
        }
        return TRUE;
    case kCloseViewsMessage:
        CloseAll(dialog, *state);
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

void RunDataTable() {
    TableState state;
    ShellRunDialog(IDD_DATA_TABLE, TableProc, &state);
}
