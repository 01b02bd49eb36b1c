// Ceilings on counts and lengths read from the wire. The device is not trusted: a count or
// length beyond its ceiling is a decoding failure, never an allocation.
#pragma once

#include <cstddef>
#include <cstdint>

namespace limits {

inline constexpr std::uint32_t kMaxRecords = 10000;                // records of one panel
inline constexpr std::uint32_t kMaxRecordBytes = 17u << 20;        // one record body (images)
inline constexpr std::uint64_t kMaxPanelBytes = 64u << 20;         // all bodies of one panel
inline constexpr std::uint32_t kMaxAttributes = 1024;              // attributes of one record
inline constexpr std::uint32_t kMaxTextBytes = 1u << 20;           // a Text or Message size "m"
inline constexpr std::uint32_t kMaxChartTable = 16u << 20;         // a chart's numeric table
inline constexpr std::uint32_t kMaxIdentityText = 64u << 10;       // each identity text
inline constexpr std::uint32_t kMaxItemBytes = 17u << 20;          // one value-update item
inline constexpr std::uint32_t kMaxFileNameBytes = 2048;           // a received file's name
inline constexpr std::int32_t kMaxSettingsRecords = 4096;          // records of one settings message
inline constexpr std::uint32_t kImageCeiling = 0x1000000;          // image data at or above: none

}  // namespace limits
