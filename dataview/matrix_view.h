// The numbers of a chart or data-table control read as a matrix: rows of a ring buffer, one
// value per series and an optional sample per row. Everything the device sent is bounded
// here: rows and series are capped, and a read beyond an array gives 0 or an empty text.
#pragma once

#include "model/control_record.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace dataview {

// A view shows at most this many series and 2^20 cells (rows x series): more than a screen
// or a table can show, and a table of no width carries no bytes to bound its row capacity.
inline constexpr std::uint32_t kMaxSeries = 1024;
inline constexpr std::uint64_t kMaxCells = 1u << 20;

// The sample kind of a record's flags (0, kSampleNumeric, kSampleLabels, kSampleDateTime).
inline std::uint32_t SampleKindOf(std::uint32_t flags) { return flags & kMaskSampleKind; }

class MatrixView {
public:
    // The record must outlive the view (views work on a copy taken under the store's lock).
    explicit MatrixView(const ControlRecord& record);

    const ControlRecord& Record() const { return record_; }
    const ChartData& Chart() const { return record_.chart; }
    std::uint32_t Flags() const { return record_.flags; }
    std::uint32_t SampleKind() const { return SampleKindOf(record_.flags); }
    std::uint32_t Rows() const { return rows_; }
    std::uint32_t Series() const { return series_; }

    // Logical row r (0 = the oldest retained row) in the ring buffer.
    std::uint32_t PhysicalRow(std::uint32_t r) const;

    std::int32_t RawData(std::uint32_t r, std::uint32_t s) const;
    double DataValue(std::uint32_t r, std::uint32_t s) const;
    std::int32_t RawSample(std::uint32_t r) const;  // numeric samples
    double SampleValue(std::uint32_t r) const;
    std::u16string_view Label(std::uint32_t r) const;            // label samples
    std::optional<DateTimeValue> RowTime(std::uint32_t r) const;  // date-time samples only
    std::u16string_view SeriesName(std::uint32_t s) const;

    double ScaleData(std::int32_t raw) const;
    double ScaleSample(std::int32_t raw) const;

private:
    const ControlRecord& record_;
    std::uint32_t rows_ = 0;
    std::uint32_t series_ = 0;
    std::uint32_t start_ = 0;  // physical index of logical row 0
    std::vector<std::u16string_view> labels_;  // by physical row
    std::vector<std::u16string_view> names_;
};

// Splits zero-terminated texts laid one after another, at most `limit` of them.
std::vector<std::u16string_view> SplitTexts(std::u16string_view block, std::size_t limit);

}  // namespace dataview
