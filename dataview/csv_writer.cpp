#include "dataview/csv_writer.h"

#include "platform/codepage.h"

namespace dataview {

namespace {

// A code-page cell never takes more than this many bytes.
constexpr int kNarrowRoom = 2048;

class Out {
public:
    explicit Out(const CsvFormat& format) : format_(format) {}

    void Units(std::u16string_view text) {
        if (format_.utf16) {
            for (char16_t u : text) {
                bytes_.push_back(static_cast<std::uint8_t>(u & 0xFF));
                bytes_.push_back(static_cast<std::uint8_t>(u >> 8));
            }
            return;
        }
        if (text.empty()) return;
        std::u16string whole(text);
        const int length = static_cast<int>(whole.size());
        int need = plat::WideToCodePage(whole.c_str(), length, nullptr, 0);
        std::vector<char> narrow(static_cast<std::size_t>(need > 0 ? need : 0));
        if (need > 0) plat::WideToCodePage(whole.c_str(), length, narrow.data(), need);
        std::size_t keep = std::min<std::size_t>(narrow.size(), kNarrowRoom - 1);
        bytes_.insert(bytes_.end(), narrow.begin(), narrow.begin() + static_cast<long>(keep));
    }
    void Cell(int column, const std::u16string& text) {
        if (column > 0) Units(format_.comma ? u"," : u";");
        Units(u"\"");
        Units(text);
        Units(u"\"");
    }
    void LineEnd() { Units(u"\r\n"); }
    std::vector<std::uint8_t> Take() { return std::move(bytes_); }

private:
    CsvFormat format_;
    std::vector<std::uint8_t> bytes_;
};

std::u16string& Name() {
    static std::u16string name = u"CSVdata.csv";
    return name;
}

}  // namespace

std::vector<std::uint8_t> WriteCsv(const CsvSource& source, const CsvFormat& format) {
    Out out(format);
    const int columns = source.ColumnCount();
    for (int k = 0; k < columns; ++k) out.Cell(k, source.ColumnTitle(k));
    out.LineEnd();
    // The first column of items 0..columns-1, the same for every line.
    std::vector<std::u16string> line;
    for (int k = 0; k < columns; ++k) line.push_back(source.ItemText(k, 0));
    for (int r = 0; r < source.RowCount(); ++r) {
        for (int k = 0; k < columns; ++k) out.Cell(k, line[static_cast<std::size_t>(k)]);
        out.LineEnd();
    }
    return out.Take();
}

const std::u16string& CsvFileName() { return Name(); }

void KeepCsvFileName(std::u16string_view typed) {
    Name() = std::u16string(typed.substr(0, kCsvNameRoom));
}

}  // namespace dataview
