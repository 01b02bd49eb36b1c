// A chart record as the views read it: its table texts, the CSV, both axes and the layout.
// The first byte picks the style and which axis overrides apply; the next 16 bytes are the
// four overrides; the rest is the record body.
#include "dataview/chart_layout.h"
#include "dataview/csv_writer.h"
#include "dataview/view_texts.h"
#include "fuzz/fuzz_common.h"
#include "link/record_decoder.h"
#include "link/bytes.h"
#include "tests/support/recording_canvas.h"

#include <algorithm>
#include <vector>

namespace {

// Texts are made for the first rows only, and only small charts are laid out whole: the work
// per input stays small (the views' own ceilings are far larger).
constexpr std::uint32_t kTextRows = 512;
constexpr std::uint64_t kLayoutCells = 1 << 16;

class ViewTable : public dataview::CsvSource {
public:
    explicit ViewTable(const dataview::MatrixView& view)
        : view_(view), columns_(dataview::TableColumns(view, 240)) {}
    int ColumnCount() const override { return static_cast<int>(columns_.size()); }
    int RowCount() const override {
        return static_cast<int>(std::min(view_.Rows(), kTextRows));
    }
    std::u16string ColumnTitle(int k) const override {
        return columns_[static_cast<std::size_t>(k)].title;
    }
    std::u16string ItemText(int item, int sub) const override {
        if (item >= RowCount() || sub >= ColumnCount()) return {};
        return dataview::TableCellText(view_, static_cast<std::uint32_t>(item),
                                       static_cast<std::uint32_t>(sub));
    }

private:
    const dataview::MatrixView& view_;
    std::vector<dataview::TableColumn> columns_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    if (size < 17) return 0;
    std::vector<std::uint8_t> body(data + 17, data + size);
    ControlRecord record;
    if (DecodeRecord(body.data(), body.size(), record) != DecodeStatus::kOk || record.type != kTypeChart) {
        return 0;
    }
    dataview::ChartSettings settings;
    settings.style = data[0] & 3;
    std::optional<std::int32_t>* overrides[] = {
        &settings.overrides.valueMinimum, &settings.overrides.valueMaximum,
        &settings.overrides.sampleMinimum, &settings.overrides.sampleMaximum};
    for (int i = 0; i < 4; ++i) {
        if (data[0] & (4 << i)) {
            *overrides[i] = static_cast<std::int32_t>(bytes::Get32(data + 1 + 4 * i));
        }
    }

    dataview::MatrixView view(record);
    ViewTable table(view);
    for (int r = 0; r < table.RowCount(); ++r) {
        for (int c = 0; c < table.ColumnCount(); ++c) table.ItemText(r, c);
    }
    dataview::WriteCsv(table, dataview::CsvFormatFor(data[0] >> 7, record.flags));
    dataview::AxisRange values = dataview::ValueAxis(view, settings.overrides);
    dataview::AxisTicks(values, dataview::AxisKind::kValue);
    if (static_cast<std::uint64_t>(view.Rows()) * std::max<std::uint32_t>(view.Series(), 1) <=
        kLayoutCells) {
        testing_support::RecordingCanvas canvas;
        dataview::PaintChart(canvas, {0, 0, 240, 290}, view, settings);
    }
    return 0;
}
