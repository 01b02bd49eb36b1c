#include "dataview/csv_writer.h"
#include "dataview/matrix_view.h"
#include "dataview/win32/data_views.h"
#include "panel/win32/edit_backspace.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/product_boxes.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <commctrl.h>

#include <string>

namespace {

constexpr int kListTextRoom = 1024;

// The table's texts exactly as its list view holds them.
class ListSource : public dataview::CsvSource {
public:
    ListSource(HWND list, int columns, int rows) : list_(list), columns_(columns), rows_(rows) {}
    int ColumnCount() const override { return columns_; }
    int RowCount() const override { return rows_; }
    std::u16string ColumnTitle(int k) const override {
        wchar_t text[kListTextRoom] = L"";
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = text;
        column.cchTextMax = kListTextRoom;
        SendMessageW(list_, LVM_GETCOLUMNW, static_cast<WPARAM>(k), reinterpret_cast<LPARAM>(&column));
        return Text(text);
    }
    std::u16string ItemText(int item, int subItem) const override {
        wchar_t text[kListTextRoom] = L"";
        LVITEMW request{};
        request.iSubItem = subItem;
        request.pszText = text;
        request.cchTextMax = kListTextRoom;
        SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&request));
        return Text(text);
    }

private:
    static std::u16string Text(const wchar_t* text) {
        return std::u16string(reinterpret_cast<const char16_t*>(text));
    }
    HWND list_;
    int columns_, rows_;
};

void KeepTypedName(HWND dialog) {
    wchar_t typed[dataview::kCsvNameRoom + 1] = L"";
    GetDlgItemTextW(dialog, IDC_FILE_NAME, typed, static_cast<int>(dataview::kCsvNameRoom + 1));
    dataview::KeepCsvFileName(reinterpret_cast<const char16_t*>(typed));
}

// What the file-name dialog tells the export when it ends.
struct FileNameState {
    bool closedByMessage = false;
};

INT_PTR CALLBACK FileNameProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        KeepDialogState(dialog, lParam);
        SetWindowTextW(dialog, L"File Name");
        if (Shell().mainWindow) SetWindowTextW(Shell().mainWindow, L"File Name");
        SetDlgItemTextW(dialog, IDC_FILE_NAME,
                        reinterpret_cast<const wchar_t*>(dataview::CsvFileName().c_str()));
        ShellStartDialog(dialog, {IDM_TABLE, DialogRole::kView, kFocusTimer});
        return TRUE;
    case WM_TIMER:
        return ShellTakeFocus(dialog, wParam, GetDlgItem(dialog, IDC_FILE_NAME)) ? TRUE : FALSE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL && BackspaceInFocusedEdit(dialog, {IDC_FILE_NAME})) {
            return TRUE;
        }
        if (LOWORD(wParam) != IDC_DONE && LOWORD(wParam) != IDCANCEL) return FALSE;
        break;
    case kCloseViewsMessage:
        if (auto* state = DialogStateOf<FileNameState>(dialog)) state->closedByMessage = true;
        break;
    default:
        return FALSE;
    }
    // Every way out keeps the name and writes the file.
    KeepTypedName(dialog);
    ShellEndDialog(dialog, 0);
    return TRUE;
}

}  // namespace

bool ExportTableCsv(HWND table, HWND list, int separatorFlag) {
    FileNameState state;
    ShellRunDialog(IDD_FILE_NAME, FileNameProc, &state);
    const auto* name = reinterpret_cast<const wchar_t*>(dataview::CsvFileName().c_str());
    if (!WriteTableCsv(list, name, separatorFlag)) ShowProductBox(table, L"File open error", MB_OK);
    return state.closedByMessage;
}

bool WriteTableCsv(HWND list, const wchar_t* path, int separatorFlag) {
    HANDLE file = CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const ControlRecord& record = CurrentDataView().record;
    dataview::MatrixView view(record);
    const int columns = static_cast<int>(view.Series()) +
                        (view.SampleKind() != kSampleNone ? 1 : 0);
    const int rows = ListView_GetItemCount(list);
    std::vector<std::uint8_t> bytes = dataview::WriteCsv(
        ListSource(list, columns, rows), dataview::CsvFormatFor(separatorFlag, record.flags));
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return true;
}
