#include "dataview/chart_layout.h"
#include "dataview/win32/data_views.h"
#include "dataview/win32/gdi_canvas.h"
#include "model/control_store.h"
#include "res/resource.h"
#include "shell/full_screen_dialog.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

namespace {

BOOL OnInitDialog(HWND dialog) {
    auto title = reinterpret_cast<const wchar_t*>(CurrentDataView().record.label.c_str());
    SetWindowTextW(dialog, title);
    if (Shell().mainWindow) SetWindowTextW(Shell().mainWindow, title);
    ShellStartDialog(dialog, {IDM_CHART, DialogRole::kView, kChartFocusTimer});
    return TRUE;
}

void OnPaint(HWND dialog) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(dialog, &paint);
    RECT client;
    GetClientRect(dialog, &client);
    PaintControlChart(dc, client, CurrentDataView().controlId, CurrentDataView().settings);
    EndPaint(dialog, &paint);
}

void OnTimer(HWND dialog, UINT_PTR timer) {
    if (ShellTakeFocus(dialog, timer, dialog, kChartFocusTimer)) return;
    if (timer == kChartRepaintTimer) {
        KillTimer(dialog, kChartRepaintTimer);
        InvalidateRect(dialog, nullptr, FALSE);
    }
}

BOOL OnCommand(HWND dialog, int id) {
    switch (id) {
    case IDC_DONE:
    case IDCANCEL:
        ShellEndDialog(dialog, 0);
        return TRUE;
    case IDC_TABLE:
        RunDataTable();
        SetFocus(dialog);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK ChartProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        return OnInitDialog(dialog);
    case WM_PAINT:
        OnPaint(dialog);
        return TRUE;
    case WM_TIMER:
        OnTimer(dialog, wParam);
        return TRUE;
    case WM_COMMAND:
        return OnCommand(dialog, LOWORD(wParam));
    case kValueChangedMessage:
        // A burst of updates becomes one paint, 10 ms after the last.
        if (static_cast<std::uint32_t>(wParam) == CurrentDataView().controlId) {
            SetTimer(dialog, kChartRepaintTimer, kChartRepaintDelay, nullptr);
        }
        return TRUE;
    case kCloseViewsMessage:
        ShellEndDialog(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

void PaintControlChart(HDC dc, const RECT& client, std::uint32_t controlId,
                       const dataview::ChartSettings& settings) {
    // The arrays are read from a copy taken under the lock: the receive side may write the
    // store's record meanwhile.
    ControlRecord copy;
    if (!CopyControl(controlId, &copy)) return;
    dataview::MatrixView view(copy);
    GdiCanvas canvas(dc);
    dataview::PaintChart(canvas, {client.left, client.top, client.right, client.bottom}, view,
                         settings);
}

void PaintControlChart(HDC dc, const RECT& client, std::uint32_t controlId) {
    PaintControlChart(dc, client, controlId, dataview::ReadChartSettings(controlId));
}

void RunChartDialog() { ShellRunDialog(IDD_CHART, ChartProc); }
