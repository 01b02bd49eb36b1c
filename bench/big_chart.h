// The chart the data-view benchmarks measure: 10,000 rows of 6 series with a numeric sample
// per row, its ring buffer wrapped.
#pragma once

#include "model/control_record.h"

#include <cstdint>

namespace bench {

inline constexpr std::uint32_t kRows = 10000;
inline constexpr std::uint32_t kSeries = 6;

inline ControlRecord BigChart(std::uint32_t flags, std::uint32_t controlKey = 0) {
    ControlRecord r;
    r.controlKey = controlKey;
    r.type = kTypeChart;
    r.flags = flags;
    r.label = u"Big chart";
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

}  // namespace bench
