// Speed of the data views in real GDI and list views (run under Wine by tools/wine-bench):
// a 10,000-row, 6-series chart painted into a memory bitmap, its data table refilled after an
// update, and that table written as CSV. Medians over repeated runs, in milliseconds.
#include "bench/big_chart.h"
#include "dataview/chart_layout.h"
#include "dataview/win32/data_view.h"
#include "dataview/win32/data_views.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "res/resource.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t kId = 7;
constexpr int kRuns = 20;

double Now() {
    static const double ticksPerMs = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return static_cast<double>(f.QuadPart) / 1000.0;
    }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return static_cast<double>(t.QuadPart) / ticksPerMs;
}

double MedianMs(const std::function<void()>& run) {
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) {
        const double start = Now();
        run();
        times.push_back(Now() - start);
    }
    std::sort(times.begin(), times.end());
    return (times[kRuns / 2 - 1] + times[kRuns / 2]) / 2;
}

void Report(const char* what, double ms, const char* goal) {
    std::printf("%-44s %8.2f ms  (median of %d; goal %s)\n", what, ms, kRuns, goal);
}

void ChartPaints() {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 240, 290);
    HGDIOBJ old = SelectObject(dc, bitmap);
    const RECT client{0, 0, 240, 290};
    const struct { std::int32_t style; const char* name; } styles[] = {
        {0, "chart paint, lines, 10,000 x 6"},
        {kStyleChartColumns, "chart paint, columns, 10,000 x 6"},
        {kStyleChartPoints, "chart paint, points, 10,000 x 6"}};
    for (const auto& s : styles) {
        WriteDeviceSetting(kId, kSettingLayoutStyle, static_cast<std::uint32_t>(s.style));
        Report(s.name, MedianMs([&] { PaintControlChart(dc, client, kId); }), "< 50 ms");
    }
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
}

// Runs on the table's own thread, from inside its modal loop, once the table shows.
void CALLBACK MeasureTable(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND table = Shell().currentDialog;
    if (!table || !IsWindowVisible(table)) return;
    KillTimer(nullptr, timer);
    HWND list = GetDlgItem(table, IDC_TABLE_LIST);
    // A selected line in the middle: the refill keeps it and scrolls to it.
    ListView_SetItemState(list, 5000, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Report("table refill after an update, 10,000 x 6", MedianMs([&] {
               SendMessageW(table, kValueChangedMessage, kId, 0);
               UpdateWindow(list);
           }), "< 100 ms");

    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"view_bench.csv";
    Report("CSV export of that table (';')",
           MedianMs([&] { WriteTableCsv(list, path.c_str(), 0); }), "none");
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
        std::printf("%-44s %8lu bytes\n", "CSV file size", data.nFileSizeLow);
    }
    DeleteFileW(path.c_str());
    PostMessageW(table, WM_COMMAND, MAKEWPARAM(IDC_DONE, 0), 0);
}

void TableRefills() {
    WriteDeviceSetting(kId, kSettingLayoutStyle, static_cast<std::uint32_t>(kStyleDataTable));
    Shell().mainWindow = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 240, 320,
                                         nullptr, nullptr, nullptr, nullptr);
    ControlRecord record;
    CopyControl(kId, &record);
    SetTimer(nullptr, 0, 1, MeasureTable);
    OpenDataView(kId, record);
    DestroyWindow(Shell().mainWindow);
}

}  // namespace

int main() {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    Shell().instance = GetModuleHandleW(nullptr);
    SetSettingsPanelName(u"view-bench");
    SwapInControls({bench::BigChart(kSampleNumeric, kId)});
    ChartPaints();
    TableRefills();
    return 0;
}
