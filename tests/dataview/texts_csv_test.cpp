#include "dataview/csv_writer.h"
#include "dataview/view_texts.h"
#include "tests/dataview/chart_records.h"

#include <gtest/gtest.h>

#include <string>

namespace {
using namespace std::string_literals;

using namespace dataview;
using namespace dataview_testing;

TEST(MatrixView, WrappedRingReadsOldestFirst) {
    // Capacity 4, counter -3: logical row 0 is physical row 3.
    ControlRecord r = ChartRecord(0, 4, 2, -3, {10, 11, 12, 13, 20, 21, 22, 23});
    MatrixView view(r);
    EXPECT_EQ(view.Rows(), 4u);
    EXPECT_EQ(view.RawData(0, 0), 13);
    EXPECT_EQ(view.RawData(1, 1), 20);
    // A counter beyond the capacity reads only the capacity; widths keep their sign.
    ControlRecord narrow = ChartRecord(0x200000, 2, 1, 99, {-1, 127});
    EXPECT_EQ(MatrixView(narrow).Rows(), 2u);
    EXPECT_EQ(MatrixView(narrow).RawData(0, 0), -1);
    ControlRecord none = ChartRecord(0x300000, 3, 2, 3, {});
    EXPECT_EQ(MatrixView(none).RawData(2, 1), 0);
}

TEST(TableTexts, ColumnsAndCells) {
    ControlRecord r = ChartRecord(kSampleNumeric | 0x1000000, 2, 1, 2, {1234, -150},
                                  Int32Samples({7, 8}));
    r.chart.axisCaption = u"Time";
    r.chart.seriesNames = std::u16string(u"A\0B", 3);
    r.chart.dataUnits = u"%f V";
    r.chart.dataDecimals = 1;
    r.chart.dataExponent = -2;
    r.chart.sampleUnits = u"#%d";
    MatrixView view(r);
    auto columns = TableColumns(view, 240);
    ASSERT_EQ(columns.size(), 2u);
    EXPECT_EQ(columns[0].title, u"Time");
    EXPECT_EQ(columns[0].width, 117);
    EXPECT_EQ(TableCellText(view, 0, 0), u"#7");
    EXPECT_EQ(TableCellText(view, 0, 1), u"12.3 V");
    EXPECT_EQ(TableCellText(view, 1, 1), u"-1.5 V");

    struct Widths {
        std::uint32_t kind, series;
        std::size_t columns;
        int width;
    };
    for (Widths c : {Widths{kSampleLabels, 2, 3, 106}, Widths{0, 1, 1, 234},
                     Widths{0, 2, 2, 117}, Widths{0, 3, 3, 106}}) {
        ControlRecord w = ChartRecord(c.kind, 0, c.series, 0, {});
        auto cols = TableColumns(MatrixView(w), 240);
        ASSERT_EQ(cols.size(), c.columns);
        EXPECT_EQ(cols.back().width, c.width) << c.kind << " " << c.series;
    }

    ControlRecord labels = ChartRecord(kSampleLabels, 3, 0, -1, {}, TextSamples(u"a\0bb\0c"s));
    EXPECT_EQ(SampleCellText(MatrixView(labels), 0), u"bb");  // physical row 1
    EXPECT_EQ(SampleCellText(MatrixView(labels), 2), u"a");
}

// A table as the list view hands it out: item i, sub-item k.
class FakeTable : public CsvSource {
public:
    std::vector<std::u16string> titles;
    std::vector<std::vector<std::u16string>> items;
    int ColumnCount() const override { return static_cast<int>(titles.size()); }
    int RowCount() const override { return static_cast<int>(items.size()); }
    std::u16string ColumnTitle(int k) const override { return titles[static_cast<std::size_t>(k)]; }
    std::u16string ItemText(int item, int sub) const override {
        if (item >= RowCount()) return {};
        return items[static_cast<std::size_t>(item)][static_cast<std::size_t>(sub)];
    }
};

std::string Bytes(const std::vector<std::uint8_t>& b) { return std::string(b.begin(), b.end()); }

TEST(Csv, HeaderThenTheFirstColumnOfTheFirstItemsOnEveryLine) {
    FakeTable t;
    t.titles = {u"Time", u"T \"in\""};
    t.items = {{u"1", u"10"}, {u"2", u"20"}, {u"3", u"30"}};
    EXPECT_EQ(Bytes(WriteCsv(t, {false, false})),
              "\"Time\";\"T \"in\"\"\r\n\"1\";\"2\"\r\n\"1\";\"2\"\r\n\"1\";\"2\"\r\n");
    t.titles = {u"\u00e9\u4e00"};
    t.items = {{u"x"}};
    EXPECT_EQ(Bytes(WriteCsv(t, {true, false})), "\"\xe9?\"\r\n\"x\"\r\n");
    std::vector<std::uint8_t> wide = WriteCsv(t, {true, true});
    EXPECT_EQ(wide, (std::vector<std::uint8_t>{'"', 0, 0xe9, 0, 0x00, 0x4e, '"', 0, '\r', 0,
                                                '\n', 0, '"', 0, 'x', 0, '"', 0, '\r', 0,
                                                '\n', 0}));
    t.titles = {u"A", u"B"};
    t.items.clear();
    EXPECT_EQ(Bytes(WriteCsv(t, {true, false})), "\"A\",\"B\"\r\n");
    EXPECT_EQ(CsvFormatFor(1, 0x4).comma, true);
    EXPECT_EQ(CsvFormatFor(0, 0x4).utf16, true);
}

TEST(Csv, FileNameIsKeptForTheNextExport) {
    EXPECT_EQ(CsvFileName(), u"CSVdata.csv");
    KeepCsvFileName(std::u16string(600, u'x'));
    EXPECT_EQ(CsvFileName().size(), kCsvNameRoom);
    KeepCsvFileName(u"log.csv");
    EXPECT_EQ(CsvFileName(), u"log.csv");
}

}  // namespace
