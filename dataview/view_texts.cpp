#include "dataview/view_texts.h"

#include "panel/datetime_text.h"
#include "panel/number_text.h"

namespace dataview {

namespace {

constexpr std::size_t kTextRoom = 1024;

std::u16string Scaled(std::int32_t raw, int style, const std::u16string& units, int decimals,
                      int exponent) {
    char16_t out[kTextRoom];
    return FormatScaledNumber(out, kTextRoom, raw, style, units, decimals, exponent, false);
}

std::u16string Number(double value, int style, const std::u16string& units, int decimals) {
    char16_t out[kTextRoom];
    return FormatNumberText(out, kTextRoom, value, style, units, decimals, false);
}

}  // namespace

int DataNumberStyle(std::uint32_t flags) {
    return static_cast<int>((flags & kMaskDataStyle) >> 24) + 1;
}

int SampleNumberStyle(std::uint32_t flags) {
    return static_cast<int>((flags & kMaskSampleStyle) >> 22) + 1;
}

std::u16string DataCellText(const MatrixView& view, std::uint32_t r, std::uint32_t s) {
    const ChartData& c = view.Chart();
    return Scaled(view.RawData(r, s), DataNumberStyle(view.Flags()), c.dataUnits,
                  c.dataDecimals, c.dataExponent);
}

std::u16string SampleCellText(const MatrixView& view, std::uint32_t r) {
    const ChartData& c = view.Chart();
    switch (view.SampleKind()) {
    case kSampleLabels:
        return std::u16string(view.Label(r));
    case kSampleNumeric:
        return Scaled(view.RawSample(r), SampleNumberStyle(view.Flags()), c.sampleUnits,
                      c.sampleDecimals, c.sampleExponent);
    case kSampleDateTime: {
        char16_t out[kTextRoom];
        return ExpandDateTimeTemplate(out, kTextRoom, *view.RowTime(r), c.sampleUnits);
    }
    default:
        return {};
    }
}

std::u16string ValueLabel(const MatrixView& view, double value) {
    const ChartData& c = view.Chart();
    return Number(value, DataNumberStyle(view.Flags()), c.dataUnits, c.dataDecimals);
}

std::u16string SampleLabel(const MatrixView& view, double value) {
    if (view.SampleKind() != kSampleNumeric) return {};
    const ChartData& c = view.Chart();
    return Number(value, SampleNumberStyle(view.Flags()), c.sampleUnits, c.sampleDecimals);
}

std::u16string TimeLabel(const MatrixView& view, const Calendar& time) {
    char16_t out[kTextRoom];
    return ExpandDateTimeTemplate(out, kTextRoom, Pack(time), view.Chart().sampleUnits);
}

std::vector<TableColumn> TableColumns(const MatrixView& view, int w) {
    const bool samples = view.SampleKind() != kSampleNone;
    const std::uint32_t series = view.Series();
    int width = 4 * w / 9;
    if (samples ? series <= 1 : series == 2) width = (w - 6) / 2;
    if (!samples && series == 1) width = w - 6;
    std::vector<TableColumn> columns;
    if (samples) columns.push_back({view.Chart().axisCaption, width});
    for (std::uint32_t s = 0; s < series; ++s) {
        columns.push_back({std::u16string(view.SeriesName(s)), width});
    }
    return columns;
}

std::u16string TableCellText(const MatrixView& view, std::uint32_t r, std::uint32_t c) {
    if (view.SampleKind() != kSampleNone) {
        if (c == 0) return SampleCellText(view, r);
        --c;
    }
    return DataCellText(view, r, c);
}

}  // namespace dataview
