// The whole chart of a matrix control laid out on a canvas: white background, legend,
// vertical caption, value axis along the top of the plot, sample axis down its left edge,
// frame, and the series as lines, points or horizontal columns. Values grow to the right and
// rows run downward (a portrait screen).
#pragma once

#include "dataview/axes.h"
#include "dataview/chart_canvas.h"
#include "dataview/matrix_view.h"

#include <cstdint>

namespace dataview {

// Series colours by index modulo 6.
inline constexpr Colour kSeriesColours[6] = {0x000080, 0x008000, 0x800000,
                                             0x800080, 0x008080, 0x808000};
inline Colour SeriesColour(std::uint32_t s) { return kSeriesColours[s % 6]; }

// LayoutStyle of a chart control: 0 lines (and any unknown value), 1 columns, 2 points,
// 3 the data table instead of a chart.
inline constexpr std::int32_t kStyleColumns = 1;
inline constexpr std::int32_t kStylePoints = 2;
inline constexpr std::int32_t kStyleDataTable = 3;

struct ChartSettings {
    std::int32_t style = 0;
    AxisOverrides overrides;
};
// The control's LayoutStyle and axis overrides from the device settings.
ChartSettings ReadChartSettings(std::uint32_t controlId);

// The plot rectangle inside the client area.
Rect PlotRect(const Rect& client, const MatrixView& view);

void PaintChart(Canvas& canvas, const Rect& client, const MatrixView& view,
                const ChartSettings& settings);

}  // namespace dataview
