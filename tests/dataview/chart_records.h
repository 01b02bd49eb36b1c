// Chart records for the data-view tests, built the way the decoder leaves them.
#pragma once

#include "model/control_record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dataview_testing {

// Values are physical rows, series-major, written at the data width of the flags.
inline ControlRecord ChartRecord(std::uint32_t flags, std::uint32_t capacity,
                                 std::uint32_t series, std::int32_t counter,
                                 const std::vector<std::int32_t>& values,
                                 std::vector<std::uint8_t> samples = {}) {
    ControlRecord r;
    r.controlKey = 7;
    r.type = kTypeChart;
    r.flags = flags;
    const std::size_t width = (flags & kMaskDataWidth) == 0x100000 ? 2
                              : (flags & kMaskDataWidth) == 0x200000 ? 1
                              : (flags & kMaskDataWidth) == 0x300000 ? 0 : 4;
    for (std::int32_t v : values) {
        for (std::size_t i = 0; i < width; ++i) {
            r.chart.table.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(v) >> (8 * i)));
        }
    }
    r.chart.textPart = std::move(samples);
    r.chart.trailingWord = static_cast<std::uint32_t>(counter);
    r.chart.rowCapacity = capacity;
    r.chart.seriesCount = series;
    r.chart.dataUnits = u"%f";
    r.chart.sampleUnits = u"%f";
    return r;
}

inline std::vector<std::uint8_t> Int32Samples(const std::vector<std::int32_t>& samples) {
    std::vector<std::uint8_t> out;
    for (std::int32_t v : samples) {
        for (int i = 0; i < 4; ++i) out.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(v) >> (8 * i)));
    }
    return out;
}

inline std::vector<std::uint8_t> TextSamples(const std::u16string& zeroSeparated) {
    std::vector<std::uint8_t> out;
    for (char16_t u : zeroSeparated) {
        out.push_back(static_cast<std::uint8_t>(u & 0xFF));
        out.push_back(static_cast<std::uint8_t>(u >> 8));
    }
    return out;
}

}  // namespace dataview_testing
