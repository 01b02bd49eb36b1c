// The chart ring: where each value lands, how the row counter tells a wrapped ring, and what
// a value update carries for each sample kind.
#include "device/chart_ring.h"
#include "device/control_flags.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(DeviceChartRing, RowCounterCountsThenTurnsNegativeWhenTheRingWraps) {
    // (rows added, counter) in a ring of three rows.
    const std::pair<int, std::int32_t> cases[] = {{0, 0},  {2, 2}, {3, 3}, {4, -1},
                                                  {5, -2}, {6, 3}, {7, -1}};
    for (const auto& [rowsAdded, counter] : cases) {
        dev::ChartRing ring = dev::MakeChartRing(0, 3, 1);
        for (int i = 0; i < rowsAdded; ++i) dev::AddChartRow(ring, {}, {i});
        EXPECT_EQ(counter, dev::ChartRowCounter(ring)) << rowsAdded << " rows";
    }
}

TEST(DeviceChartRing, SeriesMajorTableNumericSamplesAndCounter) {
    dev::ChartRing ring = dev::MakeChartRing(
        dev::kSamplesNumeric | dev::kSampleWidth8 | dev::kDataWidth16, 2, 2);
    dev::ChartSample sample;
    sample.number = 7;
    dev::AddChartRow(ring, sample, {1, -2});
    EXPECT_EQ(Hex(U16(1) + U16(0) + U16(0xFFFE) + U16(0) + U8({7, 0}) + U32(1)),
              Hex(dev::ChartBlock(ring, false)));
    sample.number = 8;
    dev::AddChartRow(ring, sample, {3, 4});
    sample.number = 0x1FF;  // cut to its 8-bit width
    dev::AddChartRow(ring, sample, {5});  // overwrites row 0; the missing series is 0
    EXPECT_EQ(Hex(U16(5) + U16(3) + U16(0) + U16(4) + U8({0xFF, 8}) + U32(0xFFFFFFFF)),
              Hex(dev::ChartBlock(ring, false)));
}

TEST(DeviceChartRing, SampleKindsInTheBlockAndInAValueUpdate) {
    const dev::DateTime time{1, 2, 3, 4, 5, 6, 2007};
    const dev::ChartSample a{0, time, "a"}, b{0, time, "bc"};

    dev::ChartRing times = dev::MakeChartRing(dev::kSamplesDateTime | dev::kDataWidth8, 2, 1);
    dev::AddChartRow(times, a, {9});
    const Bytes timeBlock = U8({9, 0}) + U8({1, 2, 3, 4, 5, 6}) + U16(2007) +
                            U8({0, 0, 0, 1, 0, 1}) + U16(2000) + U32(1);
    EXPECT_EQ(Hex(timeBlock), Hex(dev::ChartBlock(times, false)));
    EXPECT_EQ(Hex(timeBlock), Hex(dev::ChartValue(times, false)));

    dev::ChartRing labels = dev::MakeChartRing(dev::kSamplesLabels | dev::kDataWidth8, 3, 1);
    dev::AddChartRow(labels, a, {1});
    dev::AddChartRow(labels, b, {2});
    EXPECT_EQ(Hex(U8({1, 2, 0}) + Utf16(u"a") + U8({0, 0}) + Utf16(u"bc") + U8({0, 0}) + U32(2)),
              Hex(dev::ChartBlock(labels, true)));
    EXPECT_EQ(Hex(U8({1, 2, 0}) + U32(2)), Hex(dev::ChartValue(labels, true)))
        << "the client keeps its labels and reads the counter after the table";

    dev::ChartRing none = dev::MakeChartRing(dev::kDataWidthNone, 2, 2);
    dev::AddChartRow(none, a, {1, 2});
    EXPECT_EQ(Hex(U32(1)), Hex(dev::ChartBlock(none, false))) << "width code 3 has no table";

    dev::ChartRing empty = dev::MakeChartRing(0, 0, 2);
    dev::AddChartRow(empty, a, {1, 2});
    EXPECT_EQ(Hex(U32(0)), Hex(dev::ChartBlock(empty, false)));
}
