// The names the user picks a control's layout from, and the style numbers the code acts on:
// per control type its styles (LayoutStyle, setting 336), the thirteen fast-key choices
// (LayoutFastKey, 480) and the five ways of showing the value (LayoutValueShow, 464). The
// Control Layout dialog lists them; the rows, the value keys and the data views read the
// stored number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Styles that change behaviour (every other type has the one style 0).
inline constexpr std::int32_t kStyleNumberNoSpin = 1;  // Number: left/right do not step it
inline constexpr std::int32_t kStyleListNoLoop = 1;    // List: stepping stops at the ends
inline constexpr std::int32_t kStyleListNoSpin = 2;    // List: left/right do not step it
inline constexpr std::int32_t kStyleChartLines = 0;
inline constexpr std::int32_t kStyleChartColumns = 1;
inline constexpr std::int32_t kStyleChartPoints = 2;
inline constexpr std::int32_t kStyleDataTable = 3;     // a table instead of a chart

// The styles of a type, in LayoutStyle order; empty for a type that is not valid.
std::span<const char16_t* const> StyleNames(std::uint16_t type);

// The fast-key choices, index = LayoutFastKey: "None", then "'1' key" to "'#' key".
std::span<const char16_t* const> FastKeyNames();

// The value-display choices, index = LayoutValueShow.
std::span<const char16_t* const> ValueShowNames();
