#include "dataview/chart_layout.h"

#include "dataview/view_texts.h"
#include "model/device_settings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

namespace dataview {

namespace {

constexpr int kLabelHeight = 12;
constexpr Pen kBlackPen{};
constexpr Brush kWhiteBrush{};

// A pixel from a real position; far-off points are pulled in (the clipping hides them).
int Pixel(double v) {
    constexpr double kFar = 1 << 24;
    if (!(v > -kFar)) return -(1 << 24);
    if (!(v < kFar)) return 1 << 24;
    return static_cast<int>(v);
}

int Width(const Rect& r) { return r.right - r.left; }
int Height(const Rect& r) { return r.bottom - r.top; }

std::optional<std::int32_t> Setting(std::uint32_t id, std::uint32_t kind) {
    if (!HasDeviceSetting(id, kind)) return std::nullopt;
    return ReadDeviceSetting(id, kind, 0);
}

void Caption(Canvas& canvas, const Rect& p, const std::u16string& caption) {
    if (caption.empty()) return;
    int length = canvas.Measure(caption).width;
    if (length > Height(p) - 4) length = Height(p) - 4;
    const int y = p.top + std::max(Height(p) / 2 - length / 2, 2);
    canvas.RotatedText({p.left - 24, y}, {length, kLabelHeight}, caption);
}

void Legend(Canvas& canvas, const Rect& p, const MatrixView& view) {
    if (view.Series() == 0) return;
    const int slot = Width(p) / static_cast<int>(view.Series());
    for (std::uint32_t i = 0; i < view.Series(); ++i) {
        const int x0 = p.left + static_cast<int>(i) * slot + 1;
        const int x1 = p.left + static_cast<int>(i + 1) * slot - 1;
        const std::u16string_view name = view.SeriesName(i);
        int width = canvas.Measure(name).width;
        int offset = (x1 - x0) / 2 - width / 2;
        if (offset < 3) offset = 2;
        if (width > x1 - x0 - 4) width = x1 - x0 - 4;
        canvas.Text({x0 + offset, p.top - 30}, {width, kLabelHeight}, name, SeriesColour(i));
    }
}

void ValueAxisMarks(Canvas& canvas, const Rect& p, const MatrixView& view, const AxisRange& range) {
    const int room = Width(p) / 2 - 4;
    const std::u16string low = ValueLabel(view, range.minimum);
    const int lowWidth = std::min(canvas.Measure(low).width, room);
    canvas.Text({p.left - 3, p.top - 18}, {lowWidth, kLabelHeight}, low, kBlack);
    const std::u16string high = ValueLabel(view, range.maximum);
    const int highWidth = std::min(canvas.Measure(high).width, room);
    canvas.Text({p.right - highWidth + 5, p.top - 18}, {highWidth, kLabelHeight}, high, kBlack);
    for (const Tick& t : AxisTicks(range, AxisKind::kValue)) {
        const int x = Pixel(p.left + t.fraction * Width(p));
        canvas.Rectangle({x, p.top + 1, x + 1, p.top - t.length}, kBlackPen, kWhiteBrush);
    }
}

void SampleTick(Canvas& canvas, const Rect& p, int y, int length) {
    canvas.Rectangle({p.left + 1, y, p.left - length, y + 1}, kBlackPen, kWhiteBrush);
}

// The labels at both ends of the sample axis.
void SampleEnds(Canvas& canvas, const Rect& p, const std::u16string& low,
                const std::u16string& high) {
    const int room = Height(p) / 2 - 4;
    const int lowLength = std::min(canvas.Measure(low).width, room);
    canvas.RotatedText({p.left - 16, p.top - 3}, {lowLength, kLabelHeight}, low);
    const int highLength = std::min(canvas.Measure(high).width, room);
    canvas.RotatedText({p.left - 16, p.bottom - highLength + 5}, {highLength, kLabelHeight}, high);
}

void LabelMarks(Canvas& canvas, const Rect& p, const MatrixView& view) {
    const std::uint32_t rows = view.Rows();
    if (rows == 0) return;
    const std::uint32_t n = (rows - 1) / 6 + 1;
    const int room = Height(p) / static_cast<int>(rows / n) - 2;
    for (std::uint32_t i = 0; i < rows; i += n) {
        const int y = Pixel(p.top + ((i + 0.5) / rows) * Height(p));
        SampleTick(canvas, p, y, 4);
        const std::u16string_view label = view.Label(i);
        const int length = std::min(canvas.Measure(label).width, room);
        canvas.RotatedText({p.left - 16, y - length / 2}, {length, kLabelHeight}, label);
    }
}

// One tick per pixel: the longest of those that fall on it.
void TimeMarks(Canvas& canvas, const Rect& p, const MatrixView& view, const TimeAxis& axis) {
    SampleEnds(canvas, p, TimeLabel(view, axis.earliest), TimeLabel(view, axis.latest));
    std::map<int, int> longest;
    for (const Tick& t : axis.ticks) {
        int& length = longest[Pixel(p.top + t.fraction * Height(p))];
        length = std::max(length, t.length);
    }
    for (auto [y, length] : longest) SampleTick(canvas, p, y, length);
}

struct Positions {
    AxisRange values;
    AxisRange samples;
    std::optional<TimeAxis> times;
};

double RowPosition(const MatrixView& view, const Positions& at, std::uint32_t r) {
    switch (view.SampleKind()) {
    case kSampleNumeric:
        return AxisFraction(at.samples, view.SampleValue(r));
    case kSampleDateTime:
        return at.times ? TimeFraction(Unpack(*view.RowTime(r)), at.times->earliest,
                                       at.times->latest)
                        : 0;
    default:
        return (r + 0.5) / view.Rows();
    }
}

void Series(Canvas& canvas, const Rect& p, const MatrixView& view, const Positions& at,
            std::int32_t style) {
    const std::uint32_t rows = view.Rows();
    const int series = static_cast<int>(view.Series());
    int band = rows ? Height(p) / static_cast<int>(std::min<std::uint32_t>(rows, 1u << 30)) - 2 : 1;
    if (band < 2) band = 1;
    for (std::uint32_t s = 0; s < view.Series(); ++s) {
        const Colour colour = SeriesColour(s);
        Point previous;
        for (std::uint32_t r = 0; r < rows; ++r) {
            const double u = AxisFraction(at.values, view.DataValue(r, s));
            const double v = RowPosition(view, at, r);
            const Point point{Pixel(p.left + u * Width(p)), Pixel(p.top + v * Height(p))};
            if (style == kStyleChartPoints) {
                canvas.Ellipse({point.x - 3, point.y - 3, point.x + 4, point.y + 4},
                               {1, colour, false}, {colour});
            } else if (style == kStyleChartColumns) {
                const int top = point.y - band / 2 + 1;
                const int si = static_cast<int>(s);
                canvas.Rectangle({p.left, top + (si * band) / series, point.x,
                                  top + ((si + 1) * band) / series},
                                 {1, colour, true}, {colour});
            } else if (r > 0) {
                Point end = point;
                if (end == previous) end = {end.x + 1, end.y + 1};
                canvas.Line(previous, end, {3, colour, false});
            }
            previous = point;
        }
    }
}

}  // namespace

ChartSettings ReadChartSettings(std::uint32_t controlId) {
    ChartSettings settings;
    settings.style = ReadDeviceSetting(controlId, kSettingLayoutStyle, 0);
    settings.overrides.valueMinimum = Setting(controlId, kSettingChartValueMin);
    settings.overrides.valueMaximum = Setting(controlId, kSettingChartValueMax);
    settings.overrides.sampleMinimum = Setting(controlId, kSettingChartSampleMin);
    settings.overrides.sampleMaximum = Setting(controlId, kSettingChartSampleMax);
    return settings;
}

Rect PlotRect(const Rect& client, const MatrixView& view) {
    const int left = view.SampleKind() != kSampleNone ? 25 : 14;
    return {client.left + left, client.top + 29, client.right - 10, client.bottom - 10};
}

void PaintChart(Canvas& canvas, const Rect& client, const MatrixView& view,
                const ChartSettings& settings) {
    canvas.Rectangle(client, {1, kWhite, true}, kWhiteBrush);
    const Rect p = PlotRect(client, view);
    Caption(canvas, p, view.Chart().axisCaption);
    Legend(canvas, p, view);

    Positions at;
    at.values = ValueAxis(view, settings.overrides);
    ValueAxisMarks(canvas, p, view, at.values);
    switch (view.SampleKind()) {
    case kSampleNumeric:
        at.samples = SampleAxis(view, settings.overrides);
        SampleEnds(canvas, p, SampleLabel(view, at.samples.minimum),
                   SampleLabel(view, at.samples.maximum));
        for (const Tick& t : AxisTicks(at.samples, AxisKind::kSample)) {
            SampleTick(canvas, p, Pixel(p.top + t.fraction * Height(p)), t.length);
        }
        break;
    case kSampleLabels:
        LabelMarks(canvas, p, view);
        break;
    case kSampleDateTime:
        at.times = MakeTimeAxis(view);
        if (at.times) TimeMarks(canvas, p, view, *at.times);
        break;
    default:
        break;
    }

    canvas.Rectangle({p.left, p.top, p.right, p.top + 1}, kBlackPen, kWhiteBrush);
    canvas.Rectangle({p.left, p.top, p.left + 1, p.bottom}, kBlackPen, kWhiteBrush);
    canvas.Clip({p.left - 2, p.top - 2, p.right + 2, p.bottom + 2});
    Series(canvas, p, view, at, settings.style);
    canvas.Unclip();
}

}  // namespace dataview
