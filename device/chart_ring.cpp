#include "device/chart_ring.h"

#include "device/control_flags.h"
#include "device/wire_text.h"

namespace dev {

namespace {

// Bytes of one data value by flag bits 20-21 (the fourth code carries no table at all).
std::size_t DataWidth(std::uint32_t flags) {
    switch (flags & kDataWidthMask) {
    case kDataWidth16: return 2;
    case kDataWidth8: return 1;
    case kDataWidthNone: return 0;
    default: return 4;
    }
}

// Bytes of one numeric sample by flag bits 18-19.
std::size_t SampleWidth(std::uint32_t flags) {
    switch (flags & kSampleWidthMask) {
    case kSampleWidth16: return 2;
    case kSampleWidth8: return 1;
    default: return 4;
    }
}

void PutWidth(Bytes& out, std::int32_t value, std::size_t width) {
    const auto v = static_cast<std::uint32_t>(value);
    for (std::size_t i = 0; i < width; ++i) out.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
}

std::size_t FilledRows(const ChartRing& ring) {
    return ring.rowsAdded < ring.rowCapacity ? static_cast<std::size_t>(ring.rowsAdded)
                                             : ring.rowCapacity;
}

void PutTable(Bytes& out, const ChartRing& ring) {
    const std::size_t width = DataWidth(ring.flags);
    for (std::int32_t v : ring.values) PutWidth(out, v, width);
}

void PutSamples(Bytes& out, const ChartRing& ring, bool utf16) {
    switch (ring.flags & kSampleKindMask) {
    case kSamplesNumeric:
        for (const ChartSample& s : ring.samples) PutWidth(out, s.number, SampleWidth(ring.flags));
        break;
    case kSamplesDateTime:
        for (const ChartSample& s : ring.samples) PutBytes(out, EncodeDateTime(s.time));
        break;
    case kSamplesLabels:
        for (std::size_t r = 0; r < FilledRows(ring); ++r) {
            PutBytes(out, TextBytes(ring.samples[r].label, utf16, true));
        }
        break;
    default:
        break;
    }
}

}  // namespace

ChartRing MakeChartRing(std::uint32_t flags, std::uint32_t rowCapacity, std::uint32_t seriesCount) {
    ChartRing ring;
    ring.flags = flags;
    ring.rowCapacity = rowCapacity;
    ring.seriesCount = seriesCount;
    ring.values.assign(static_cast<std::size_t>(rowCapacity) * seriesCount, 0);
    ring.samples.assign(rowCapacity, ChartSample{});
    return ring;
}

void AddChartRow(ChartRing& ring, const ChartSample& sample, const std::vector<std::int32_t>& values) {
    if (ring.rowCapacity == 0) return;
    const std::size_t row = static_cast<std::size_t>(ring.rowsAdded % ring.rowCapacity);
    for (std::size_t s = 0; s < ring.seriesCount; ++s) {
        ring.values[row + static_cast<std::size_t>(ring.rowCapacity) * s] =
            s < values.size() ? values[s] : 0;
    }
    ring.samples[row] = sample;
    ++ring.rowsAdded;
}

std::int32_t ChartRowCounter(const ChartRing& ring) {
    if (ring.rowsAdded <= ring.rowCapacity) return static_cast<std::int32_t>(ring.rowsAdded);
    const auto oldest = static_cast<std::int32_t>(ring.rowsAdded % ring.rowCapacity);
    // With the oldest row back at index 0 the ring reads in order: a full, unwrapped ring.
    return oldest == 0 ? static_cast<std::int32_t>(ring.rowCapacity) : -oldest;
}

Bytes ChartBlock(const ChartRing& ring, bool utf16) {
    Bytes out;
    PutTable(out, ring);
    PutSamples(out, ring, utf16);
    Put32(out, static_cast<std::uint32_t>(ChartRowCounter(ring)));
    return out;
}

Bytes ChartValue(const ChartRing& ring, bool utf16) {
    if ((ring.flags & kSampleKindMask) != kSamplesLabels) return ChartBlock(ring, utf16);
    Bytes out;
    PutTable(out, ring);
    Put32(out, static_cast<std::uint32_t>(ChartRowCounter(ring)));
    return out;
}

}  // namespace dev
