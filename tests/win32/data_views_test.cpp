// The data views in real windows: a chart painted into a bitmap, and the chart, its table and
// the CSV export run by OpenDataView on a thread of their own while the test drives them.
#include "dataview/csv_writer.h"
#include "dataview/win32/data_view.h"
#include "dataview/win32/data_views.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/utf.h"
#include "res/resource.h"
#include "shell/shell_state.h"
#include "shell/view_messages.h"
#include "tests/dataview/chart_records.h"
#include "tests/support/recorders.h"
#include "tests/support/temp_folder.h"

#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

namespace {

using dataview_testing::ChartRecord;
using dataview_testing::Int32Samples;
using testing_support::WaitUntil;

constexpr std::uint32_t kId = 7;

ControlRecord TwoSeries(std::int32_t counter, std::vector<std::int32_t> values) {
    ControlRecord r = ChartRecord(kSampleNumeric, 4, 2, counter, std::move(values),
                                  Int32Samples({1, 2, 3, 4}));
    r.label = u"Log";
    r.chart.axisCaption = u"N";
    r.chart.seriesNames = std::u16string(u"A\0B", 3);
    return r;
}

class DataViews : public ::testing::Test {
protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
        InitCommonControlsEx(&controls);
        Shell().instance = GetModuleHandleW(nullptr);
        SetSettingsPanelName(plat::Utf8ToUtf16(testing_support::UniqueName("views")));
        SwapInControls({TwoSeries(3, {10, 20, 30, 0, 5, 6, 7, 0})});
    }
    void TearDown() override {
        SwapInControls({});
        if (views_.joinable()) views_.join();
    }

    // OpenDataView on its own thread, with a main window of its own.
    void Open(std::int32_t style) {
        WriteDeviceSetting(kId, kSettingLayoutStyle, static_cast<std::uint32_t>(style));
        ControlRecord record;
        ASSERT_TRUE(CopyControl(kId, &record));
        ended_ = false;
        views_ = std::thread([this, record] {
            Shell().mainWindow = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0,
                                                 240, 320, nullptr, nullptr, nullptr, nullptr);
            OpenDataView(kId, record);
            DestroyWindow(Shell().mainWindow);
            ended_ = true;
        });
        ASSERT_TRUE(WaitUntil([] { return Shell().currentDialog != nullptr; }));
    }
    HWND Current() const { return Shell().currentDialog; }
    HWND WaitForNewView(HWND before) {
        WaitUntil([&] { return Current() && Current() != before && IsWindowVisible(Current()); });
        return Current();
    }
    void Post(HWND window, int command) {
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(command, 0), 0);
    }
    // The file-name dialog of an export: its proposal, answered with `name`.
    std::wstring Export(HWND table, int command, const std::wstring& name) {
        Post(table, command);
        HWND dialog = WaitForNewView(table);
        wchar_t proposed[600] = L"";
        GetDlgItemTextW(dialog, IDC_FILE_NAME, proposed, 600);
        SetDlgItemTextW(dialog, IDC_FILE_NAME, name.c_str());
        Post(dialog, IDC_DONE);
        EXPECT_TRUE(WaitUntil([&] { return Current() == table; }));
        return proposed;
    }

    std::thread views_;
    std::atomic<bool> ended_{false};
    testing_support::MessageBoxRecorder boxes;
    testing_support::TempFolder folder;
};

// The chart's paints, counted in its window procedure; and a burst of updates posted from the
// chart's own thread when a marker arrives, so that all of them are queued before any is read.
std::atomic<int> paints{0};
WNDPROC chartProcedure = nullptr;
constexpr LPARAM kBurstMarker = 0x5B5B;
constexpr int kBurst = 20;

LRESULT CALLBACK CountPaints(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) ++paints;
    return CallWindowProcW(chartProcedure, window, message, wParam, lParam);
}

LRESULT CALLBACK PostBurst(int code, WPARAM wParam, LPARAM lParam) {
    const auto* m = reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && m->message == WM_NULL && m->lParam == kBurstMarker) {
        for (int i = 0; i < kBurst; ++i) PostMessageW(m->hwnd, kValueChangedMessage, kId, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::wstring Cell(HWND list, int row, int column) {
    wchar_t text[256] = L"";
    ListView_GetItemText(list, row, column, text, 256);
    return text;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST_F(DataViews, ChartPaintsFrameAndSeriesIntoABitmap) {
    SwapInControls({ChartRecord(0, 2, 1, 2, {0, 10})});
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 240, 290);
    HGDIOBJ old = SelectObject(dc, bitmap);
    RECT client{0, 0, 240, 290};
    PaintControlChart(dc, client, kId);
    EXPECT_EQ(GetPixel(dc, 14, 150), RGB(0, 0, 0));         // the left edge of the plot
    EXPECT_EQ(GetPixel(dc, 100, 29), RGB(0, 0, 0));         // its top edge
    EXPECT_EQ(GetPixel(dc, 122, 154), RGB(0x80, 0, 0));     // the series, half way
    EXPECT_EQ(GetPixel(dc, 200, 100), RGB(255, 255, 255));  // the background
    // As points: a dot of the series colour at each row, nothing in between.
    WriteDeviceSetting(kId, kSettingLayoutStyle, 2);
    PaintControlChart(dc, client, kId);
    EXPECT_EQ(GetPixel(dc, 230, 217), RGB(0x80, 0, 0));
    EXPECT_EQ(GetPixel(dc, 230, 222), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(dc, 122, 154), RGB(255, 255, 255));
    // A control gone from the store paints nothing.
    SwapInControls({});
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
    PaintControlChart(dc, client, kId);
    EXPECT_NE(GetPixel(dc, 200, 100), RGB(255, 255, 255));
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
}

TEST_F(DataViews, TableOverAChartRefreshesAndExportsCsv) {
    Open(0);
    HWND chart = Current();
    Post(chart, IDC_TABLE);
    HWND table = WaitForNewView(chart);
    HWND list = GetDlgItem(table, IDC_TABLE_LIST);
    ASSERT_TRUE(WaitUntil([&] { return ListView_GetItemCount(list) == 3; }));
    EXPECT_EQ(Cell(list, 0, 0), L"1");
    EXPECT_EQ(Cell(list, 2, 2), L"7");
    wchar_t title[64] = L"";
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = title;
    column.cchTextMax = 64;
    ListView_GetColumn(list, 2, &column);
    EXPECT_STREQ(title, L"B");

    // An update that drops a row keeps the selection on the last line.
    ListView_SetItemState(list, 2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SwapInControls({TwoSeries(2, {11, 21, 0, 0, 51, 61, 0, 0})});
    SendMessageW(table, kValueChangedMessage, kId, 0);
    EXPECT_EQ(ListView_GetItemCount(list), 2);
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), 1);
    EXPECT_EQ(Cell(list, 1, 2), L"61");

    const std::string path = folder.Path() + "\\table.csv";
    const std::wstring wide(path.begin(), path.end());
    EXPECT_EQ(Export(table, IDC_SAVE_CSV_SEMICOLON, wide), L"CSVdata.csv");
    const std::string written = "\"N\";\"A\";\"B\"\r\n\"1\";\"2\";\"\"\r\n\"1\";\"2\";\"\"\r\n";
    EXPECT_TRUE(WaitUntil([&] { return ReadFile(path) == written; })) << ReadFile(path);
    EXPECT_EQ(Export(table, IDC_SAVE_CSV_COMMA, wide), wide);  // the name typed before
    EXPECT_TRUE(WaitUntil([&] { return ReadFile(path).substr(0, 12) == "\"N\",\"A\",\"B\"\r"; }));
    Export(table, IDC_SAVE_CSV_COMMA, wide + L"\\no\\such\\folder.csv");
    EXPECT_TRUE(boxes.WaitFor(u"File open error", std::chrono::seconds(5)));

    // Done hands the current view back to the chart; the close message ends it.
    Post(table, IDC_DONE);
    ASSERT_TRUE(WaitUntil([&] { return Current() == chart; }));
    SendMessageW(chart, kCloseViewsMessage, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return ended_.load(); }));
    EXPECT_EQ(Current(), nullptr);
}

TEST_F(DataViews, ABurstOfUpdatesRepaintsTheChartOnce) {
    Open(0);
    HWND chart = Current();
    ASSERT_TRUE(WaitUntil([&] { return IsWindowVisible(chart) && !GetUpdateRect(chart, nullptr, FALSE); }));
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, PostBurst, nullptr,
                                   GetWindowThreadProcessId(chart, nullptr));
    ASSERT_NE(hook, nullptr);
    chartProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(chart, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CountPaints)));
    paints = 0;
    PostMessageW(chart, WM_NULL, 0, kBurstMarker);
    EXPECT_TRUE(WaitUntil([&] { return paints > 0 && !GetUpdateRect(chart, nullptr, FALSE); }));
    SendMessageW(chart, WM_NULL, 0, 0);
    EXPECT_EQ(paints, 1);
    UnhookWindowsHookEx(hook);
    SetWindowLongPtrW(chart, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(chartProcedure));
    SendMessageW(chart, kCloseViewsMessage, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return ended_.load(); }));
}

TEST_F(DataViews, CloseEndsATableAndTheChartUnderIt) {
    Open(0);
    HWND chart = Current();
    Post(chart, IDC_TABLE);
    HWND table = WaitForNewView(chart);
    SendMessageW(table, kCloseViewsMessage, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return ended_.load(); }));
    EXPECT_EQ(Current(), nullptr);
}

TEST_F(DataViews, CloseInTheFileNameDialogMakesTheTableForgetTheChart) {
    Open(0);
    HWND chart = Current();
    Post(chart, IDC_TABLE);
    HWND table = WaitForNewView(chart);
    Post(table, IDC_SAVE_CSV_COMMA);
    HWND dialog = WaitForNewView(table);
    const std::string path = folder.Path() + "\\closed.csv";
    SetDlgItemTextW(dialog, IDC_FILE_NAME, std::wstring(path.begin(), path.end()).c_str());
    SendMessageW(dialog, kCloseViewsMessage, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return Current() == table; }));
    EXPECT_TRUE(WaitUntil([&] { return !ReadFile(path).empty(); }));  // written all the same
    // Done leaves no view current; the chart stays open under it.
    Post(table, IDC_DONE);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(table); }));
    EXPECT_EQ(Current(), nullptr);
    EXPECT_TRUE(IsWindow(chart));
    SendMessageW(chart, kCloseViewsMessage, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return ended_.load(); }));
}

}  // namespace
