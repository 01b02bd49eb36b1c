// The texts of the data views: table cells and columns, axis labels.
#pragma once

#include "dataview/axes.h"
#include "dataview/matrix_view.h"

#include <string>
#include <vector>

namespace dataview {

// Number styles 1-4 of the data (flag bits 24-25) and of numeric samples (bits 22-23).
int DataNumberStyle(std::uint32_t flags);
int SampleNumberStyle(std::uint32_t flags);

std::u16string DataCellText(const MatrixView& view, std::uint32_t r, std::uint32_t s);
// Number, label or date and time by the sample kind; empty for kind 0.
std::u16string SampleCellText(const MatrixView& view, std::uint32_t r);

std::u16string ValueLabel(const MatrixView& view, double value);
std::u16string SampleLabel(const MatrixView& view, double value);  // empty unless numeric
std::u16string TimeLabel(const MatrixView& view, const Calendar& time);

struct TableColumn {
    std::u16string title;
    int width = 0;
};
// The sample column (when the record has samples) then one per series, for a list of client
// width w.
std::vector<TableColumn> TableColumns(const MatrixView& view, int w);

// Column c of logical row r as the table shows it.
std::u16string TableCellText(const MatrixView& view, std::uint32_t r, std::uint32_t c);

}  // namespace dataview
