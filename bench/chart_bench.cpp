// Speed of the data views natively: the whole layout of a 10,000-row, 6-series chart into the
// recording canvas, the texts of its table, and its CSV.
#include "dataview/chart_layout.h"
#include "dataview/csv_writer.h"
#include "dataview/view_texts.h"
#include "tests/support/recording_canvas.h"

#include <benchmark/benchmark.h>

namespace {

constexpr std::uint32_t kRows = 10000;
constexpr std::uint32_t kSeries = 6;

ControlRecord BigChart(std::uint32_t flags) {
    ControlRecord r;
    r.type = kTypeChart;
    r.flags = flags;
    r.chart.rowCapacity = kRows;
    r.chart.seriesCount = kSeries;
    r.chart.trailingWord = static_cast<std::uint32_t>(-1234);  // a wrapped ring
    r.chart.dataUnits = u"%f \u00B0C";
    r.chart.sampleUnits = u"#%d";
    r.chart.dataExponent = -1;
    r.chart.dataDecimals = 1;
    r.chart.axisCaption = u"Reading";
    r.chart.seriesNames = std::u16string(u"A\0B\0C\0D\0E\0F", 11);
    for (std::uint32_t s = 0; s < kSeries; ++s) {
        for (std::uint32_t i = 0; i < kRows; ++i) {
            const auto v = static_cast<std::uint32_t>((i * 37 + s * 1000) % 5000);
            for (int b = 0; b < 4; ++b) r.chart.table.push_back(static_cast<std::uint8_t>(v >> (8 * b)));
        }
    }
    for (std::uint32_t i = 0; i < kRows; ++i) {
        for (int b = 0; b < 4; ++b) r.chart.textPart.push_back(static_cast<std::uint8_t>(i >> (8 * b)));
    }
    return r;
}

void ChartLayoutIntoRecordingCanvas(benchmark::State& state) {
    ControlRecord r = BigChart(kSampleNumeric);
    dataview::MatrixView view(r);
    dataview::ChartSettings settings;
    settings.style = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        testing_support::RecordingCanvas canvas;
        canvas.calls.reserve(kRows * kSeries + 200);
        dataview::PaintChart(canvas, {0, 0, 240, 290}, view, settings);
        benchmark::DoNotOptimize(canvas.calls.data());
    }
}
BENCHMARK(ChartLayoutIntoRecordingCanvas)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void TableTexts(benchmark::State& state) {
    ControlRecord r = BigChart(kSampleNumeric);
    dataview::MatrixView view(r);
    for (auto _ : state) {
        for (std::uint32_t row = 0; row < kRows; ++row) {
            for (std::uint32_t c = 0; c <= kSeries; ++c) {
                benchmark::DoNotOptimize(dataview::TableCellText(view, row, c));
            }
        }
    }
}
BENCHMARK(TableTexts)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
