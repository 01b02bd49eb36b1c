// The chart's two axes: rounded ranges with their ticks for values and numeric samples, and
// the calendar behind a date-and-time sample axis.
#pragma once

#include "dataview/matrix_view.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace dataview {

struct AxisRange {
    double minimum = 0;  // the rounded ends
    double maximum = 1;
    double step = 0.1;
    bool fine = true;    // false: the mid ticks (multiples of 5 steps) are left out
};

// What the device settings say about the axes (raw values, scaled like the data they bound).
struct AxisOverrides {
    std::optional<std::int32_t> valueMinimum, valueMaximum;    // settings 512, 528
    std::optional<std::int32_t> sampleMinimum, sampleMaximum;  // settings 544, 560
};

// Rounds the range lo..hi (equal ends are widened by 1 above; the overrides replace the ends
// afterwards). A range the overrides leave empty, reversed or not finite is widened too.
AxisRange ChooseAxisRange(double lo, double hi, std::optional<double> minimum,
                          std::optional<double> maximum);

enum class AxisKind { kValue, kSample };

struct Tick {
    double fraction = 0;  // 0 at the axis minimum, 1 at its maximum
    int length = 0;
};
// The ticks that are drawn, from the minimum up.
std::vector<Tick> AxisTicks(const AxisRange& range, AxisKind kind);

// The value axis over every row and series, and the numeric sample axis over every row.
AxisRange ValueAxis(const MatrixView& view, const AxisOverrides& overrides);
AxisRange SampleAxis(const MatrixView& view, const AxisOverrides& overrides);

// Fraction of a value within a range (0 when the range is empty).
double AxisFraction(const AxisRange& range, double value);

// A date and time as 16-bit-style fields, in this order; spans use the same fields.
struct Calendar {
    int year = 0, month = 0, dayOfWeek = 0, day = 0, hour = 0, minute = 0, second = 0,
        milliseconds = 0;
};
Calendar Unpack(const DateTimeValue& value);
DateTimeValue Pack(const Calendar& time);

bool IsLeapYear(int year);
int DaysInYear(int year);
int DaysInMonth(int month, int year);  // 31 for numbers outside 1-12
// -1 when a is later, 1 when a is earlier, 0 when equal (day of week ignored).
int CompareTimes(const Calendar& a, const Calendar& b);
Calendar TimeSpan(const Calendar& earliest, const Calendar& latest);

// Units 4 (seconds) to 15 (months), as the span between the two times asks.
int ChooseTimeUnit(const Calendar& earliest, const Calendar& latest);
int TimeTickLength(const Calendar& time, int unit);  // 0, 2, 4 or 6
void StepBack(Calendar& time, int unit);
double TimeFraction(const Calendar& time, const Calendar& earliest, const Calendar& latest);

// Ticks laid back from the latest time stop after this many steps: an absurd span leaves its
// oldest part without ticks rather than stalling the paint.
inline constexpr int kMaxTimeSteps = 1 << 16;

struct TimeAxis {
    Calendar earliest, latest;
    int unit = 4;
    std::vector<Tick> ticks;  // from the latest back
};
// None when there are no rows.
std::optional<TimeAxis> MakeTimeAxis(const MatrixView& view);

}  // namespace dataview
