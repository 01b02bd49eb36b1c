// The whole chart of a matrix control laid out on a canvas: white background, legend,
// vertical caption, value axis along the top of the plot, sample axis down its left edge,
// frame, and the series as lines, points or horizontal columns. Values grow to the right and
// rows run downward (a portrait screen).
#pragma once

#include "dataview/axes.h"
#include "dataview/chart_canvas.h"
#include "dataview/matrix_view.h"
#include "panel/control_styles.h"

#include <cstdint>

namespace dataview {

// Series colours by index modulo 6.
inline constexpr Colour kSeriesColours[6] = {0x000080, 0x008000, 0x800000,
                                             0x800080, 0x008080, 0x808000};
inline Colour SeriesColour(std::uint32_t s) { return kSeriesColours[s % 6]; }

// LayoutStyle (kStyleChart* and kStyleDataTable of the style table; any unknown value draws
// lines) and the axis overrides of a chart control.
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
