// Speed of the data views natively: the whole layout of a 10,000-row, 6-series chart into the
// recording canvas, the texts of its table, and its CSV.
#include "bench/big_chart.h"
#include "dataview/chart_layout.h"
#include "dataview/csv_writer.h"
#include "dataview/view_texts.h"
#include "tests/support/recording_canvas.h"

#include <benchmark/benchmark.h>

namespace {

using bench::BigChart;
using bench::kRows;
using bench::kSeries;

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
