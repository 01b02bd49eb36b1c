// One control of the connected panel, as the panel description built it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum ControlType : std::uint16_t {
    kTypeText = 1,
    kTypeButton = 2,
    kTypeCheckBox = 3,
    kTypeSection = 4,
    kTypeDateTime = 5,
    kTypeNumber = 6,
    kTypeChart = 7,  // line, points or column chart, or data table
    kTypePassword = 8,
    kTypeList = 9,
    kTypeMessage = 10,
    kTypeBlob = 11,
    kTypeFiles = 12,
    kTypeUnknown = 13,
    kTypeImage = 14,
};

inline bool IsValidControlType(std::uint32_t type) { return type >= 1 && type <= 14; }

// Flag bits of a record.
inline constexpr std::uint32_t kFlagHidden = 0x1;
inline constexpr std::uint32_t kFlagUtf16 = 0x4;          // texts of the record are UTF-16
inline constexpr std::uint32_t kFlagBringIntoView = 0x10;
inline constexpr std::uint32_t kFlagVariant = 0x10000;    // writable or active variant
inline constexpr std::uint32_t kFlagMinimum = 0x20000;    // number minimum; masked text
inline constexpr std::uint32_t kFlagMaximum = 0x40000;    // number maximum
inline constexpr std::uint32_t kMaskMessageIcon = 0x70000;
inline constexpr std::uint32_t kMaskSampleKind = 0x30000;    // chart samples
inline constexpr std::uint32_t kMaskSampleWidth = 0xC0000;   // chart numeric sample width
inline constexpr std::uint32_t kMaskDataWidth = 0x300000;    // chart data width; number style
inline constexpr std::uint32_t kMaskSampleStyle = 0xC00000;  // chart sample number style
inline constexpr std::uint32_t kMaskDataStyle = 0x3000000;   // chart data number style
inline constexpr std::uint32_t kMaskForBrowser = 0xFFF00000; // == kForBrowser: blob/files
inline constexpr std::uint32_t kForBrowser = 0x00100000;

inline constexpr std::uint32_t kSampleNone = 0x00000;
inline constexpr std::uint32_t kSampleNumeric = 0x10000;
inline constexpr std::uint32_t kSampleLabels = 0x20000;
inline constexpr std::uint32_t kSampleDateTime = 0x30000;

// A date and time as carried on the wire (8 bytes).
struct DateTimeValue {
    std::int8_t second = 0;
    std::uint8_t minute = 0;
    std::uint8_t hour = 0;
    std::uint8_t day = 0;
    std::uint8_t weekday = 0;  // 0 = Sunday
    std::uint8_t month = 0;
    std::uint16_t year = 0;
};
static_assert(sizeof(DateTimeValue) == 8);

// A text buffer measured in bytes, as the wire sizes it, that always ends in a zero unit
// beyond its capacity: whatever the device writes into it, reading up to the terminator
// stays inside.
class TextBuffer {
public:
    void Resize(std::size_t bytes);  // keeps what fits, zero-fills the rest
    std::size_t Bytes() const { return bytes_; }
    std::size_t UnitCapacity() const { return (bytes_ + 1) / 2; }  // units a text may use
    char16_t* Units() { return units_.data(); }
    const char16_t* Units() const { return units_.empty() ? u"" : units_.data(); }
    std::uint8_t* Data() { return reinterpret_cast<std::uint8_t*>(units_.data()); }
    const std::uint8_t* Data() const { return reinterpret_cast<const std::uint8_t*>(units_.data()); }
    std::size_t Length() const;  // units up to the first zero
    std::u16string Text() const { return std::u16string(Units(), Length()); }
    bool Allocated() const { return !units_.empty(); }

private:
    std::vector<char16_t> units_;
    std::size_t bytes_ = 0;
};

// The data of a chart or data table control.
struct ChartData {
    std::vector<std::uint8_t> table;     // rowCapacity x seriesCount values, series-major
    std::vector<std::uint8_t> textPart;  // the sample array (labels as UTF-16 when converted)
    std::uint32_t trailingWord = 0;      // the row counter (negative: wrapped)
    std::u16string sampleUnits;          // "f"
    std::u16string dataUnits;            // "F"
    std::u16string axisCaption;          // "a"
    std::u16string seriesNames;          // "A": seriesCount zero-terminated names
    std::uint32_t rowCapacity = 0;       // "n"
    std::uint32_t seriesCount = 0;       // "N"
    std::uint8_t sampleDecimals = 0;     // "d"
    std::int8_t sampleExponent = 0;      // "m"
    std::uint8_t dataDecimals = 0;       // "D"
    std::int8_t dataExponent = 0;        // "M"
};

struct ControlRecord {
    std::uint32_t controlKey = 0;
    std::uint32_t flags = 0;
    std::uint8_t valueChanged = 0;   // the device changed the value
    std::uint8_t sendPending = 0;    // the user changed it: send it
    std::uint8_t layoutChanged = 0;  // the device changed how it is shown
    std::uint32_t background = 0;    // 0x00BBGGRR
    std::uint16_t type = 0;
    std::u16string label;

    // Text, Message
    std::uint32_t maxLength = 0;
    TextBuffer text;
    // One-byte values
    std::uint8_t pressByte = 0;     // Button
    std::uint8_t checkByte = 0;     // Check Box
    std::uint8_t sectionByte = 0;   // Section
    std::uint8_t loggedInByte = 0;  // Password
    std::uint8_t answerByte = 0;    // Message
    std::uint32_t group = 0;        // Check Box radio group ("r"), 0 for none
    // Date Time
    DateTimeValue dateTime;
    // Date Time, Number: the display template ("f")
    std::u16string format;
    bool hasFormat = false;
    // Number
    std::int32_t rawValue = 0;
    std::int32_t minimum = 0;  // "n"
    std::int32_t maximum = 0;  // "x"
    std::int8_t decimals = 0;  // "d"
    std::int8_t exponent = 0;  // "m"
    // Chart / Data Table
    ChartData chart;
    // Password: texts attached only while a password message is being sent
    const char16_t* outPassword1 = nullptr;
    const char16_t* outPassword2 = nullptr;
    // List
    std::int32_t selectedIndex = 0;
    std::u16string items;  // zero-terminated items one after another ("I")
    std::uint32_t itemCount = 0;  // "n"
    // Blob, Image
    std::vector<std::uint8_t> data;
    std::uint32_t dataLength = 0;
    std::uint32_t dataCapacity = 0;
    std::uint32_t blobN = 0;  // "n"
    std::uint32_t blobM = 0;  // "m"
    // Files
    std::u16string receivedPath;
    bool hasReceivedPath = false;
};

