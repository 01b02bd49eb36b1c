// The data of a chart or data table kept as the client reads it: a ring of rowCapacity rows,
// each with one value per series and, by the sample kind of the record's flags, a sample (a
// number, a label or a date and time).
//
// Data block: the numeric table (seriesCount x rowCapacity values, series-major: row r of
// series s at r + rowCapacity x s, of the data width of the flags), then the sample array
// (rowCapacity samples of the sample width, or 8-byte date-times, or the labels of the filled
// rows, each terminated), then the 32-bit row counter: the rows filled while the ring has not
// wrapped, else minus the physical index of the oldest row.
#pragma once

#include "device/date_time.h"
#include "device/out_bytes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dev {

struct ChartSample {
    std::int32_t number = 0;  // numeric samples
    DateTime time;            // date-time samples
    std::string label;        // label samples
};

struct ChartRing {
    std::uint32_t flags = 0;  // the record's flags: sample kind and widths
    std::uint32_t rowCapacity = 0;
    std::uint32_t seriesCount = 0;
    std::vector<std::int32_t> values;   // physical rows, series-major
    std::vector<ChartSample> samples;   // physical rows
    std::uint64_t rowsAdded = 0;
};

ChartRing MakeChartRing(std::uint32_t flags, std::uint32_t rowCapacity, std::uint32_t seriesCount);

// Appends one row, overwriting the oldest once the ring is full. Missing values are 0; values
// beyond seriesCount are ignored. Values and numeric samples are cut to their width on the wire.
void AddChartRow(ChartRing& ring, const ChartSample& sample, const std::vector<std::int32_t>& values);

// The row counter as the block carries it.
std::int32_t ChartRowCounter(const ChartRing& ring);

// The data block of the record (records.h ChartRecord).
Bytes ChartBlock(const ChartRing& ring, bool utf16);

// The data of a value update: the block, but without the labels for label samples (the client
// keeps the labels it got with the panel and reads the counter right after the table).
Bytes ChartValue(const ChartRing& ring, bool utf16);

}  // namespace dev
