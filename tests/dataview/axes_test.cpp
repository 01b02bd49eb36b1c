#include "dataview/axes.h"
#include "tests/dataview/chart_records.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

namespace {

using namespace dataview;
using namespace dataview_testing;

struct RangeCase {
    double lo, hi;
    std::optional<double> minimum, maximum;
    double axisMin, axisMax, step;
    bool fine;
};

TEST(AxisRange, RoundsToTheStepOfTheSpan) {
    const RangeCase cases[] = {
        {5, 5, {}, {}, 5, 6, 0.1, true},          // equal values widened by 1
        {0, 0, {}, {}, 0, 1, 0.1, true},          // no data
        {0, 1000, {}, {}, 0, 1000, 100, true},    // e = 3.3
        {0, 5000, {}, {}, 0, 5000, 100, false},   // e ~ 3.999
        {-37, 80, {}, {}, -40, 80, 10, true},     // a negative minimum rounds down
        {12, 87, {}, {}, 10, 90, 10, true},
        {5, 5, -20.0, 20.0, -20, 20, 1, false},   // overrides after the widening
        {0, 1000, {}, 250.0, 0, 250, 10, false},
        {0, 10, 50.0, {}, 50, 51, 0.1, true},     // an override past the other end: widened
    };
    for (const RangeCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.lo << ".." << c.hi);
        AxisRange r = ChooseAxisRange(c.lo, c.hi, c.minimum, c.maximum);
        EXPECT_NEAR(r.minimum, c.axisMin, 1e-9);
        EXPECT_NEAR(r.maximum, c.axisMax, 1e-9);
        EXPECT_NEAR(r.step, c.step, 1e-12);
        EXPECT_EQ(r.fine, c.fine);
    }
}

std::vector<std::pair<int, int>> TickMarks(const AxisRange& r, AxisKind kind) {
    std::vector<std::pair<int, int>> marks;  // (value, length)
    for (const Tick& t : AxisTicks(r, kind)) {
        marks.emplace_back(static_cast<int>(std::lround(r.minimum + t.fraction * (r.maximum - r.minimum))),
                           t.length);
    }
    return marks;
}

TEST(AxisTicks, FineAndCoarseRanges) {
    using Marks = std::vector<std::pair<int, int>>;
    EXPECT_EQ(TickMarks(ChooseAxisRange(0, 1000, {}, {}), AxisKind::kValue),
              (Marks{{0, 4}, {100, 1}, {200, 1}, {300, 1}, {400, 1}, {500, 2}, {600, 1},
                     {700, 1}, {800, 1}, {900, 1}, {1000, 4}}));
    // Coarse: the multiples of 500 that are not of 1000 go, the plain ticks stay.
    Marks coarse = TickMarks(ChooseAxisRange(0, 5000, {}, {}), AxisKind::kValue);
    EXPECT_EQ(coarse.size(), 51u - 5u);
    for (auto [value, length] : coarse) {
        EXPECT_FALSE(value % 500 == 0 && value % 1000 != 0) << value;
        if (value % 1000 == 0 && value != 0 && value != 5000) {
            EXPECT_EQ(length, 3) << value;
        }
    }
    // The sample axis doubles the lengths; the ends stay 4.
    EXPECT_EQ(TickMarks(ChooseAxisRange(0, 1000, {}, {}), AxisKind::kSample)[5].second, 4);
    EXPECT_EQ(TickMarks(ChooseAxisRange(0, 1000, {}, {}), AxisKind::kSample)[1].second, 2);
}

TEST(AxisRange, OverridesAreScaledLikeTheirValues) {
    ControlRecord r = ChartRecord(kSampleNumeric, 2, 1, 2, {10, 20}, Int32Samples({1, 2}));
    r.chart.dataExponent = -1;
    r.chart.sampleExponent = 2;
    MatrixView view(r);
    AxisOverrides o;
    o.valueMinimum = -30;  // -3.0
    o.sampleMaximum = 5;   // 500
    EXPECT_DOUBLE_EQ(ValueAxis(view, o).minimum, -3.0);
    EXPECT_DOUBLE_EQ(SampleAxis(view, o).maximum, 500);
}

Calendar At(int y, int mo, int d, int h = 0, int mi = 0, int s = 0) {
    Calendar c;
    c.year = y, c.month = mo, c.day = d, c.hour = h, c.minute = mi, c.second = s;
    return c;
}

TEST(TimeAxis, UnitPerSpan) {
    struct Case {
        Calendar earliest, latest;
        int unit;
    };
    const Case cases[] = {
        {At(2000, 1, 1), At(2006, 2, 1), 15},
        {At(2000, 1, 1), At(2001, 4, 1), 14},
        {At(2000, 1, 1), At(2002, 1, 1), 4},   // whole years fall through to seconds
        {At(2000, 1, 1), At(2000, 3, 5), 13},
        {At(2000, 1, 1), At(2000, 2, 5), 12},
        {At(2000, 1, 1), At(2000, 1, 9), 10},
        {At(2000, 1, 1), At(2000, 1, 2, 3), 9},
        {At(2000, 1, 1), At(2000, 1, 1, 7), 8},
        {At(2000, 1, 1), At(2000, 1, 1, 1), 7},
        {At(2000, 1, 1), At(2000, 1, 1, 0, 6), 6},
        {At(2000, 1, 1), At(2000, 1, 1, 0, 1), 5},
        {At(2000, 1, 1), At(2000, 1, 1, 0, 0, 40), 4},
        // Borrowing the earliest's month: Feb 28 2024 to Mar 2 is 3 days (leap year).
        {At(2024, 2, 28, 12), At(2024, 3, 2, 12), 9},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ChooseTimeUnit(c.earliest, c.latest), c.unit)
            << c.latest.year << "-" << c.latest.month << "-" << c.latest.day;
    }
}

TEST(TimeAxis, CalendarAndStepping) {
    EXPECT_EQ(DaysInMonth(2, 2024), 29);
    EXPECT_EQ(DaysInMonth(2, 1900), 28);
    EXPECT_EQ(DaysInMonth(2, 2000), 29);
    EXPECT_EQ(DaysInMonth(13, 2001), 31);
    EXPECT_EQ(DaysInYear(2024), 366);
    Calendar t = At(2024, 3, 1);
    t.dayOfWeek = 5;
    StepBack(t, 10);  // one day into a leap February
    EXPECT_EQ(CompareTimes(t, At(2024, 2, 29)), 0);
    EXPECT_EQ(t.dayOfWeek, 4);
    t = At(2000, 1, 1, 0, 0, 5);
    StepBack(t, 5);  // ten seconds back over the new year
    EXPECT_EQ(CompareTimes(t, At(1999, 12, 31, 23, 59, 55)), 0);
    t = At(2001, 3, 15);
    StepBack(t, 15);  // a month: the previous month's days
    EXPECT_EQ(CompareTimes(t, At(2001, 2, 15)), 0);
    EXPECT_EQ(CompareTimes(At(2001, 1, 1), At(2000, 12, 31)), -1);
    EXPECT_EQ(TimeTickLength(At(2000, 1, 8, 6), 9), 6);  // day mod 7 = 1 with hour != 0
    EXPECT_EQ(TimeTickLength(At(1, 1, 1), 14), 4);      // the literal year 1
    EXPECT_EQ(TimeTickLength(At(2000, 5, 2), 13), 0);
}

ControlRecord TimeChart(const std::vector<Calendar>& times) {
    std::vector<std::uint8_t> samples;
    for (const Calendar& c : times) {
        DateTimeValue v = Pack(c);
        auto* p = reinterpret_cast<const std::uint8_t*>(&v);
        samples.insert(samples.end(), p, p + 8);
    }
    auto rows = static_cast<std::uint32_t>(times.size());
    return ChartRecord(kSampleDateTime, rows, 0, static_cast<std::int32_t>(rows), {}, samples);
}

TEST(TimeAxis, EqualTimesGetARangeAndTicksRunBack) {
    struct Case {
        int second, earliest, latest;
    };
    for (Case c : {Case{30, 29, 31}, Case{0, 0, 1}, Case{59, 58, 59}}) {
        ControlRecord r = TimeChart({At(2020, 5, 5, 1, 2, c.second), At(2020, 5, 5, 1, 2, c.second)});
        auto axis = MakeTimeAxis(MatrixView(r));
        ASSERT_TRUE(axis);
        EXPECT_EQ(axis->earliest.second, c.earliest);
        EXPECT_EQ(axis->latest.second, c.latest);
    }
    ControlRecord r = TimeChart({At(2020, 5, 5, 1, 0, 50), At(2020, 5, 5, 1, 1, 2)});
    auto axis = MakeTimeAxis(MatrixView(r));
    ASSERT_EQ(axis->ticks.size(), 13u);
    EXPECT_EQ(axis->ticks.front().fraction, 1.0);
    EXPECT_EQ(axis->ticks.front().length, 4);
    EXPECT_EQ(axis->ticks[2].length, 6);  // 01:01:00
    EXPECT_EQ(axis->ticks.back().fraction, 0.0);
    EXPECT_EQ(axis->ticks.back().length, 4);
}

}  // namespace
