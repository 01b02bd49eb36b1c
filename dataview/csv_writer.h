// Saving a data table as CSV: the column titles, then row-count lines, every cell quoted as
// it stands (a quote inside is not doubled), CR LF after every line, in UTF-16 LE without a
// byte-order mark or in the system code page.
//
// The cells are read back from the table the way the list asks them: each line takes, for
// column k, the first column of item k. So every data line repeats the first column of the
// first items; files written so far read this way and stay so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dataview {

// What the table shows, as the list hands it out.
class CsvSource {
public:
    virtual ~CsvSource() = default;
    virtual int ColumnCount() const = 0;
    virtual int RowCount() const = 0;
    virtual std::u16string ColumnTitle(int column) const = 0;
    // Empty for an item or sub-item the table does not have.
    virtual std::u16string ItemText(int item, int subItem) const = 0;
};

struct CsvFormat {
    bool comma = false;  // else ';'
    bool utf16 = false;  // else the system code page
};

// The export's two menu commands: 0 for ';', 1 for ','.
inline CsvFormat CsvFormatFor(int separatorFlag, std::uint32_t recordFlags) {
    return {separatorFlag == 1, (recordFlags & 0x4) != 0};
}

std::vector<std::uint8_t> WriteCsv(const CsvSource& source, const CsvFormat& format);

// The file name offered by the next export: "CSVdata.csv" at first, then the last one typed
// (at most 511 characters), for the life of the program.
inline constexpr std::size_t kCsvNameRoom = 511;
const std::u16string& CsvFileName();
void KeepCsvFileName(std::u16string_view typed);

}  // namespace dataview
