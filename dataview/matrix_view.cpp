#include "dataview/matrix_view.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace dataview {

namespace {

std::size_t DataWidth(std::uint32_t flags) {
    switch (flags & kMaskDataWidth) {
    case 0x000000: return 4;
    case 0x100000: return 2;
    case 0x200000: return 1;
    default: return 0;  // no table: every value is 0
    }
}

std::size_t SampleWidth(std::uint32_t flags) {
    switch (flags & kMaskSampleWidth) {
    case 0x00000: return 4;
    case 0x40000: return 2;
    case 0x80000: return 1;
    default: return 0;
    }
}

// A signed little-endian integer of `width` bytes at element `index`, 0 beyond the array.
std::int32_t ReadSigned(const std::vector<std::uint8_t>& bytes, std::uint64_t index,
                        std::size_t width) {
    if (width == 0) return 0;
    std::uint64_t at = index * width;
    if (at + width > bytes.size()) return 0;
    const std::uint8_t* p = bytes.data() + at;
    switch (width) {
    case 1: return static_cast<std::int8_t>(p[0]);
    case 2: return static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0] | (p[1] << 8)));
    default: {
        std::uint32_t v = static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
                          (static_cast<std::uint32_t>(p[2]) << 16) |
                          (static_cast<std::uint32_t>(p[3]) << 24);
        return static_cast<std::int32_t>(v);
    }
    }
}

double Scale(std::int32_t raw, int exponent) {
    return static_cast<double>(raw) * std::pow(10.0, exponent);
}

}  // namespace

std::vector<std::u16string_view> SplitTexts(std::u16string_view block, std::size_t limit) {
    std::vector<std::u16string_view> texts;
    std::size_t at = 0;
    while (at < block.size() && texts.size() < limit) {
        std::size_t end = block.find(u'\0', at);
        if (end == std::u16string_view::npos) end = block.size();
        texts.push_back(block.substr(at, end - at));
        at = end + 1;
    }
    return texts;
}

MatrixView::MatrixView(const ControlRecord& record) : record_(record) {
    const ChartData& c = record.chart;
    series_ = std::min(c.seriesCount, kMaxSeries);
    const auto counter = static_cast<std::int32_t>(c.trailingWord);
    std::uint64_t rows = c.rowCapacity;
    if (counter >= 0) {
        rows = std::min<std::uint64_t>(rows, static_cast<std::uint64_t>(counter));
    } else if (c.rowCapacity != 0) {
        std::uint64_t magnitude = 0 - static_cast<std::int64_t>(counter);
        start_ = static_cast<std::uint32_t>(magnitude % c.rowCapacity);
    }
    rows_ = static_cast<std::uint32_t>(std::min(rows, kMaxCells / std::max<std::uint32_t>(series_, 1)));

    names_ = SplitTexts(c.seriesNames, series_);
    if (SampleKind() == kSampleLabels) {
        std::u16string_view units(reinterpret_cast<const char16_t*>(c.textPart.data()),
                                  c.textPart.size() / 2);
        labels_ = SplitTexts(units, c.rowCapacity);
    }
}

std::uint32_t MatrixView::PhysicalRow(std::uint32_t r) const {
    const std::uint32_t capacity = record_.chart.rowCapacity;
    if (start_ == 0 || capacity == 0) return r;
    return static_cast<std::uint32_t>((static_cast<std::uint64_t>(r) + start_) % capacity);
}

std::int32_t MatrixView::RawData(std::uint32_t r, std::uint32_t s) const {
    const std::uint64_t index =
        PhysicalRow(r) + static_cast<std::uint64_t>(record_.chart.rowCapacity) * s;
    return ReadSigned(record_.chart.table, index, DataWidth(record_.flags));
}

double MatrixView::DataValue(std::uint32_t r, std::uint32_t s) const {
    return ScaleData(RawData(r, s));
}

std::int32_t MatrixView::RawSample(std::uint32_t r) const {
    return ReadSigned(record_.chart.textPart, PhysicalRow(r), SampleWidth(record_.flags));
}

double MatrixView::SampleValue(std::uint32_t r) const { return ScaleSample(RawSample(r)); }

std::u16string_view MatrixView::Label(std::uint32_t r) const {
    std::uint32_t p = PhysicalRow(r);
    return p < labels_.size() ? labels_[p] : std::u16string_view();
}

std::optional<DateTimeValue> MatrixView::RowTime(std::uint32_t r) const {
    if (SampleKind() != kSampleDateTime) return std::nullopt;
    DateTimeValue value;
    const std::uint64_t at = static_cast<std::uint64_t>(PhysicalRow(r)) * 8;
    if (at + 8 <= record_.chart.textPart.size()) {
        std::memcpy(&value, record_.chart.textPart.data() + at, 8);
    }
    return value;
}

std::u16string_view MatrixView::SeriesName(std::uint32_t s) const {
    return s < names_.size() ? names_[s] : std::u16string_view();
}

double MatrixView::ScaleData(std::int32_t raw) const {
    return Scale(raw, record_.chart.dataExponent);
}

double MatrixView::ScaleSample(std::int32_t raw) const {
    return Scale(raw, record_.chart.sampleExponent);
}

}  // namespace dataview
