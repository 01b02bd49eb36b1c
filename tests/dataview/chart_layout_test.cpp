#include "dataview/chart_layout.h"
#include "tests/dataview/chart_records.h"
#include "tests/support/recording_canvas.h"

#include <gtest/gtest.h>

namespace {
using namespace std::string_literals;

using namespace dataview;
using namespace dataview_testing;
using testing_support::CanvasCall;
using testing_support::RecordingCanvas;

constexpr Rect kClient{0, 0, 240, 290};

RecordingCanvas Paint(const ControlRecord& r, std::int32_t style = 0) {
    RecordingCanvas canvas;
    ChartSettings settings;
    settings.style = style;
    PaintChart(canvas, kClient, MatrixView(r), settings);
    return canvas;
}

TEST(ChartLayout, EmptyChartStillHasAxisFrameAndClip) {
    ControlRecord r = ChartRecord(0, 0, 0, 0, {});
    r.chart.axisCaption = u"Caption";
    RecordingCanvas c = Paint(r);
    // Plot: 14, 29, 230, 280.
    std::vector<CanvasCall> texts = c.Of(CanvasCall::kText);
    ASSERT_EQ(texts.size(), 2u);  // no legend: the value axis ends 0 and 1
    EXPECT_EQ(texts[0].text, u"0");
    EXPECT_EQ(texts[0].rect, (Rect{11, 11, 17, 23}));
    EXPECT_EQ(texts[1].text, u"1");
    EXPECT_EQ(texts[1].rect.left, 230 - 6 + 5);
    std::vector<CanvasCall> caption = c.Of(CanvasCall::kRotatedText);
    ASSERT_EQ(caption.size(), 1u);
    EXPECT_EQ(caption[0].rect, (Rect{-10, 133, 2, 175}));
    std::vector<CanvasCall> clip = c.Of(CanvasCall::kClip);
    ASSERT_EQ(clip.size(), 1u);
    EXPECT_EQ(clip[0].rect, (Rect{12, 27, 232, 282}));
    EXPECT_EQ(c.calls.front().rect, kClient);  // the background first
    EXPECT_EQ(c.calls.back().kind, CanvasCall::kUnclip);
    const auto rects = c.Of(CanvasCall::kRectangle);
    EXPECT_EQ(rects[rects.size() - 2].rect, (Rect{14, 29, 230, 30}));  // the frame
    EXPECT_EQ(rects.back().rect, (Rect{14, 29, 15, 280}));
}

TEST(ChartLayout, WrappedRingDrawsOldestRowAtTheTop) {
    // Values by physical row 0..2 = 30, 10, 20; counter -1: the oldest is physical row 1.
    ControlRecord r = ChartRecord(0, 3, 1, -1, {30, 10, 20});
    std::vector<CanvasCall> lines = Paint(r).Of(CanvasCall::kLine);
    ASSERT_EQ(lines.size(), 2u);
    // Axis 10..30, plot 14..230 wide 216: 10 -> x 14, 20 -> 122, 30 -> 230.
    EXPECT_EQ(lines[0].rect, (Rect{14, 29 + 41, 122, 29 + 125}));
    EXPECT_EQ(lines[1].rect.right, 230);
    EXPECT_EQ(lines[0].pen, (Pen{3, 0x000080, false}));
}

TEST(ChartLayout, StylesAndColours) {
    std::vector<std::int32_t> values(7 * 2, 5);
    values[1] = 6;
    ControlRecord r = ChartRecord(0, 2, 7, 2, values);
    r.chart.seriesNames = std::u16string(u"a\0b\0c\0d\0e\0f\0g", 13);
    RecordingCanvas lines = Paint(r, 9);  // unknown styles draw lines
    std::vector<CanvasCall> segments = lines.Of(CanvasCall::kLine);
    ASSERT_EQ(segments.size(), 7u);
    EXPECT_EQ(segments[6].pen.colour, segments[0].pen.colour);  // the seventh reuses the first
    std::vector<CanvasCall> legend = lines.Of(CanvasCall::kText);
    ASSERT_EQ(legend.size(), 7u + 2u);
    EXPECT_EQ(legend[6].colour, 0x000080u);
    EXPECT_EQ(legend[6].rect.top, -1);  // one pixel above the client area

    // Rows closer than a pixel: the segment's end is nudged so that something shows.
    ControlRecord dense = ChartRecord(0, 600, 1, 600, std::vector<std::int32_t>(600, 3));
    EXPECT_EQ(Paint(dense).Of(CanvasCall::kLine)[0].rect, (Rect{14, 29, 15, 30}));

    std::vector<CanvasCall> dots = Paint(r, kStyleChartPoints).Of(CanvasCall::kEllipse);
    ASSERT_EQ(dots.size(), 14u);
    EXPECT_EQ(dots[0].rect.right - dots[0].rect.left, 7);

    RecordingCanvas columns = Paint(r, kStyleChartColumns);
    std::vector<CanvasCall> bars;
    for (const CanvasCall& c : columns.Of(CanvasCall::kRectangle)) {
        if (c.pen.none && c.colour != kWhite) bars.push_back(c);
    }
    ASSERT_EQ(bars.size(), 14u);
    // Band 251 / 2 - 2 = 123 shared by 7 series around row 0's y = 91.
    EXPECT_EQ(bars[0].rect.top, 91 - 61 + 1);
    EXPECT_EQ(bars[0].rect.bottom, 91 - 61 + 1 + 123 / 7);
    EXPECT_EQ(bars[0].rect.left, 14);
}

TEST(ChartLayout, LabelAndNumericSampleAxes) {
    ControlRecord labels = ChartRecord(kSampleLabels, 13, 1, 13, std::vector<std::int32_t>(13, 1),
                                       TextSamples(u"r0\0r1\0r2\0r3\0r4\0r5\0r6\0r7\0r8\0r9\0ra\0rb\0rc"s));
    std::vector<CanvasCall> marks = Paint(labels).Of(CanvasCall::kRotatedText);
    ASSERT_EQ(marks.size(), 5u);  // every third row: 0, 3, 6, 9, 12
    EXPECT_EQ(marks[1].text, u"r3");

    ControlRecord numeric = ChartRecord(kSampleNumeric, 2, 1, 2, {1, 2}, Int32Samples({0, 1000}));
    RecordingCanvas c = Paint(numeric);
    std::vector<CanvasCall> ends = c.Of(CanvasCall::kRotatedText);
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_EQ(ends[0].text, u"0");
    EXPECT_EQ(ends[1].text, u"1000");
    EXPECT_EQ(ends[1].rect.bottom, 280 + 5);
    std::vector<CanvasCall> lines = c.Of(CanvasCall::kLine);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].rect.top, 29);
    EXPECT_EQ(lines[0].rect.bottom, 280);
}

}  // namespace
