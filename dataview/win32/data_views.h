// The pieces of the data views: the chart window, the data table, the CSV export, and the
// view state they share (one data view at a time).
#pragma once

#include "dataview/chart_layout.h"
#include "model/control_record.h"

#include <windows.h>

#include <cstdint>

// The control the open view shows, as the entry point was given it, with its style and axis
// overrides (they cannot change while a view is open: the layout dialog is not reachable).
struct DataViewState {
    std::uint32_t controlId = 0;
    ControlRecord record;
    dataview::ChartSettings settings;
};
DataViewState& CurrentDataView();

// Paints the chart of the control as it is now in the store into the DC; nothing at all when
// the control is gone.
void PaintControlChart(HDC dc, const RECT& client, std::uint32_t controlId,
                       const dataview::ChartSettings& settings);
// The same with the settings read from the device settings now.
void PaintControlChart(HDC dc, const RECT& client, std::uint32_t controlId);

// Modal over the screen window (the table over the current view: a chart when there is one).
void RunChartDialog();
void RunDataTable();

// Asks for a file name and writes the table's list as CSV; separatorFlag 0 is ';', 1 is ','.
// True when the close message ended the file-name dialog (the file is written all the same).
bool ExportTableCsv(HWND table, HWND list, int separatorFlag);
// The writing half of the export: the list as CSV into the file at `path`; false when the file
// cannot be created (nothing written then).
bool WriteTableCsv(HWND list, const wchar_t* path, int separatorFlag);

// Timers of the chart window: the focus, and the repaint a burst of updates collapses into.
inline constexpr UINT_PTR kChartFocusTimer = 69;
inline constexpr UINT_PTR kChartRepaintTimer = 79;
inline constexpr UINT kChartRepaintDelay = 10;
