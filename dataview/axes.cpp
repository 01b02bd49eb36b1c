#include "dataview/axes.h"

#include <algorithm>
#include <cmath>

namespace dataview {

namespace {

// Bounds the tick loops even when rounding leaves a step too small to move an index.
constexpr int kMaxAxisTicks = 1000;

bool IsMultiple(double t, double of) { return std::fmod(t, of) == 0; }

std::optional<double> Scaled(const std::optional<std::int32_t>& raw, double (MatrixView::*scale)(std::int32_t) const,
                             const MatrixView& view) {
    if (!raw) return std::nullopt;
    return (view.*scale)(*raw);
}

int PlainTickLength(double t, AxisKind kind, bool* midClass) {
    const int unit = kind == AxisKind::kValue ? 1 : 2;
    *midClass = false;
    if (IsMultiple(t, 10)) return 3 * unit;
    if (IsMultiple(t, 5)) {
        *midClass = true;
        return 2 * unit;
    }
    return unit;
}

// Seconds from a fixed origin, by the same calendar rules (months outside 1-12 as 31 days).
double Seconds(const Calendar& t) {
    double days = 0;
    const int y = t.year;
    // Whole years before y from year 0: leap days counted arithmetically.
    auto leapsBefore = [](double year) {
        return std::floor((year - 1) / 4) - std::floor((year - 1) / 100) +
               std::floor((year - 1) / 400) + 1;  // year 0 is a leap year
    };
    days += 365.0 * y + leapsBefore(y);
    for (int m = 1; m < std::min(t.month, 13); ++m) days += DaysInMonth(m, y);
    days += t.day;
    return ((days * 24 + t.hour) * 60 + t.minute) * 60 + t.second + t.milliseconds / 1000.0;
}

}  // namespace

AxisRange ChooseAxisRange(double lo, double hi, std::optional<double> minimum,
                          std::optional<double> maximum) {
    if (lo == hi) hi += 1.0;
    if (minimum) lo = *minimum;
    if (maximum) hi = *maximum;
    if (!(hi > lo) || !std::isfinite(hi - lo)) {
        if (!std::isfinite(lo)) lo = 0;
        hi = lo + 1.0;
    }
    AxisRange range;
    const double e = std::log10(hi - lo) + 0.3;
    const double k = std::trunc(e);
    range.step = std::pow(10.0, k - 1);
    range.fine = (e - k) < 0.5;
    const double i = std::trunc(hi * (1 / range.step));
    range.maximum = i * range.step;
    if (!(range.maximum >= hi)) range.maximum = (i + 1) * range.step;
    const double j = std::trunc(lo * (1 / range.step));
    range.minimum = j * range.step;
    if (!(range.minimum <= lo)) range.minimum = (j - 1) * range.step;
    return range;
}

std::vector<Tick> AxisTicks(const AxisRange& range, AxisKind kind) {
    std::vector<Tick> ticks;
    const double span = range.maximum - range.minimum;
    if (!(span > 0) || !(range.step > 0)) return ticks;
    double t = std::trunc(range.minimum * (1 / range.step)) - 2;
    for (int n = 0; t * range.step < range.minimum && n < kMaxAxisTicks; ++n) t += 1;
    const double first = t;
    for (int n = 0; t * range.step <= range.maximum && n < kMaxAxisTicks; ++n, t += 1) {
        const bool last = (t + 1) * range.step > range.maximum;
        bool midClass = false;
        int length = PlainTickLength(t, kind, &midClass);
        if (t == first || last) {
            length = 4;
        } else if (midClass && !range.fine) {
            continue;
        }
        ticks.push_back({(t * range.step - range.minimum) / span, length});
    }
    return ticks;
}

AxisRange ValueAxis(const MatrixView& view, const AxisOverrides& overrides) {
    double lo = 0, hi = 0;
    bool seeded = false;
    for (std::uint32_t s = 0; s < view.Series(); ++s) {
        for (std::uint32_t r = 0; r < view.Rows(); ++r) {
            const double v = view.DataValue(r, s);
            if (!seeded) {
                lo = hi = v;
                seeded = true;
            } else if (v < lo) {
                lo = v;
            } else if (v > hi) {
                hi = v;
            }
        }
    }
    return ChooseAxisRange(lo, hi, Scaled(overrides.valueMinimum, &MatrixView::ScaleData, view),
                           Scaled(overrides.valueMaximum, &MatrixView::ScaleData, view));
}

AxisRange SampleAxis(const MatrixView& view, const AxisOverrides& overrides) {
    double lo = 0, hi = 0;
    for (std::uint32_t r = 0; r < view.Rows(); ++r) {
        const double v = view.SampleValue(r);
        if (r == 0) {
            lo = hi = v;
        } else if (v < lo) {
            lo = v;
        } else if (v > hi) {
            hi = v;
        }
    }
    const bool numeric = view.SampleKind() == kSampleNumeric;
    auto pick = [&](const std::optional<std::int32_t>& raw) -> std::optional<double> {
        if (!raw) return std::nullopt;
        return numeric ? view.ScaleSample(*raw) : 0.0;
    };
    return ChooseAxisRange(lo, hi, pick(overrides.sampleMinimum), pick(overrides.sampleMaximum));
}

double AxisFraction(const AxisRange& range, double value) {
    const double span = range.maximum - range.minimum;
    return span > 0 ? (value - range.minimum) / span : 0;
}

Calendar Unpack(const DateTimeValue& value) {
    Calendar t;
    t.second = static_cast<std::uint8_t>(value.second);
    t.minute = value.minute;
    t.hour = value.hour;
    t.day = value.day;
    t.dayOfWeek = value.weekday;
    t.month = value.month;
    t.year = value.year;
    return t;
}

DateTimeValue Pack(const Calendar& t) {
    DateTimeValue v;
    v.second = static_cast<std::int8_t>(static_cast<std::uint8_t>(t.second));
    v.minute = static_cast<std::uint8_t>(t.minute);
    v.hour = static_cast<std::uint8_t>(t.hour);
    v.day = static_cast<std::uint8_t>(t.day);
    v.weekday = static_cast<std::uint8_t>(t.dayOfWeek);
    v.month = static_cast<std::uint8_t>(t.month);
    v.year = static_cast<std::uint16_t>(t.year);
    return v;
}

bool IsLeapYear(int year) {
    return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
}

int DaysInYear(int year) { return IsLeapYear(year) ? 366 : 365; }

int DaysInMonth(int month, int year) {
    switch (month) {
    case 2: return IsLeapYear(year) ? 29 : 28;
    case 4: case 6: case 9: case 11: return 30;
    default: return 31;
    }
}

int CompareTimes(const Calendar& a, const Calendar& b) {
    const int fa[] = {a.year, a.month, a.day, a.hour, a.minute, a.second, a.milliseconds};
    const int fb[] = {b.year, b.month, b.day, b.hour, b.minute, b.second, b.milliseconds};
    for (int i = 0; i < 7; ++i) {
        if (fa[i] > fb[i]) return -1;
        if (fa[i] < fb[i]) return 1;
    }
    return 0;
}

Calendar TimeSpan(const Calendar& earliest, const Calendar& latest) {
    Calendar s;
    s.milliseconds = latest.milliseconds - earliest.milliseconds;
    s.second = latest.second - earliest.second;
    s.minute = latest.minute - earliest.minute;
    s.hour = latest.hour - earliest.hour;
    s.day = latest.day - earliest.day;
    s.month = latest.month - earliest.month;
    s.year = latest.year - earliest.year;
    if (s.milliseconds < 0) { s.milliseconds += 1000; --s.second; }
    if (s.second < 0) { s.second += 60; --s.minute; }
    if (s.minute < 0) { s.minute += 60; --s.hour; }
    if (s.hour < 0) { s.hour += 24; --s.day; }
    if (s.day < 0) { s.day += DaysInMonth(earliest.month, earliest.year); --s.month; }
    if (s.month < 0) { s.month += 12; --s.year; }
    return s;
}

int ChooseTimeUnit(const Calendar& earliest, const Calendar& latest) {
    const Calendar s = TimeSpan(earliest, latest);
    if (s.year > 5) return 15;
    if (s.year >= 1 && s.month == 3 && s.day == 0) return 14;
    if (s.month > 1) return 13;
    if (s.month == 1) return 12;
    if (s.day > 5) return 10;
    if (s.day >= 1) return 9;
    if (s.hour > 6) return 8;
    if (s.hour >= 1) return 7;
    if (s.minute > 5) return 6;
    if (s.minute >= 1) return 5;
    return 4;
}

int TimeTickLength(const Calendar& t, int unit) {
    auto pick = [](bool six, bool four, bool two) { return six ? 6 : four ? 4 : two ? 2 : 0; };
    switch (unit) {
    case 4: return pick(t.second == 0, t.second % 10 == 0, true);
    case 5: return pick(t.minute % 10 == 0 && t.second == 0, t.second == 0, true);
    case 6: return pick(t.minute == 0, t.minute % 10 == 0, true);
    case 7: return pick(t.hour % 6 == 0 && t.minute == 0, t.minute == 0, true);
    case 8: return pick(t.hour == 0, t.hour % 6 == 0, true);
    case 9: return pick(t.day % 7 == 1 && t.hour != 0, t.hour == 0, true);
    case 10:
    case 12: return pick(t.day == 1, t.day % 7 == 1, true);
    case 13: return pick(t.month == 1 && t.day == 1, t.month % 3 == 1 && t.day == 1, t.day == 1);
    case 14:
        return pick(t.year % 10 == 0 && t.month == 1 && t.day == 1,
                    t.year == 1 && t.month == 1 && t.day == 1, t.month % 3 == 1 && t.day == 1);
    case 15: return pick(t.year % 10 == 0 && t.month == 1, t.month == 1, false);
    default: return 2;
    }
}

void StepBack(Calendar& t, int unit) {
    int seconds = 0, minutes = 0, hours = 0, days = 0;
    switch (unit) {
    case 15: {
        const int previous = t.month <= 1 ? 12 : t.month - 1;
        days = DaysInMonth(previous, t.month <= 1 ? t.year - 1 : t.year);
        break;
    }
    case 14: case 13: case 12: case 10: days = 1; break;
    case 9: hours = 6; break;
    case 8: hours = 1; break;
    case 7: minutes = 10; break;
    case 6: minutes = 1; break;
    case 5: seconds = 10; break;
    default: seconds = 1; break;
    }
    t.second -= seconds;
    while (t.second < 0) { t.second += 60; ++minutes; }
    t.minute -= minutes;
    while (t.minute < 0) { t.minute += 60; ++hours; }
    t.hour -= hours;
    while (t.hour < 0) { t.hour += 24; ++days; }
    t.day -= days;
    t.dayOfWeek = ((t.dayOfWeek - days) % 7 + 7) % 7;
    while (t.day < 1) {
        if (t.month <= 1) {
            t.month = 12;
            --t.year;
        } else {
            --t.month;
        }
        t.day += DaysInMonth(t.month, t.year);
    }
}

double TimeFraction(const Calendar& time, const Calendar& earliest, const Calendar& latest) {
    const double span = Seconds(latest) - Seconds(earliest);
    return span > 0 ? (Seconds(time) - Seconds(earliest)) / span : 0;
}

std::optional<TimeAxis> MakeTimeAxis(const MatrixView& view) {
    if (view.Rows() == 0 || view.SampleKind() != kSampleDateTime) return std::nullopt;
    TimeAxis axis;
    for (std::uint32_t r = 0; r < view.Rows(); ++r) {
        const Calendar t = Unpack(*view.RowTime(r));
        if (r == 0) {
            axis.earliest = axis.latest = t;
        } else if (CompareTimes(t, axis.earliest) > 0) {
            axis.earliest = t;
        } else if (CompareTimes(t, axis.latest) < 0) {
            axis.latest = t;
        }
    }
    if (CompareTimes(axis.earliest, axis.latest) == 0) {
        if (axis.latest.second < 59) ++axis.latest.second;
        if (axis.earliest.second != 0) --axis.earliest.second;
    }
    axis.unit = ChooseTimeUnit(axis.earliest, axis.latest);
    Calendar cursor = axis.latest;
    for (int n = 0; n < kMaxTimeSteps && CompareTimes(cursor, axis.earliest) <= 0; ++n) {
        Calendar next = cursor;
        StepBack(next, axis.unit);
        const bool first = n == 0;
        const bool last = CompareTimes(next, axis.earliest) > 0;
        const int length = first || last ? 4 : TimeTickLength(cursor, axis.unit);
        axis.ticks.push_back({TimeFraction(cursor, axis.earliest, axis.latest), length});
        cursor = next;
    }
    return axis;
}

}  // namespace dataview
