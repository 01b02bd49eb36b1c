// Control records of a panel description (type 6), built by the device.
//
// A record body is: tag (2), flags (4), key (4), the type's fixed part, then the attribute
// block: a count K, K letters, and K counted values. Texts take the record's encoding (flag
// kUtf16, see control_flags.h). The builders below give every type the fixed part and the
// attributes the client reads; further attributes can be added with the Add* functions.
#pragma once

#include "device/date_time.h"
#include "device/out_bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dev {

struct Attribute {
    char letter = 0;
    Bytes value{};
};

struct Record {
    std::uint16_t tag = 0;  // 'T', 'B', ... (wire::RecordTag)
    std::uint32_t flags = 0;
    std::uint32_t key = 0;
    Bytes fixed;  // the type's fixed part, from body offset 10
    std::vector<Attribute> attributes;
};

// What every control has.
struct ControlHead {
    std::uint32_t key = 0;
    std::uint32_t flags = 0;
    std::string label;                        // "Z"
    std::optional<std::uint32_t> background{};  // "c", 0x00BBGGRR; absent: the type's default
};

// The body of one record (its byte count is written by the panel encoder).
Bytes EncodeRecord(const Record& record);

bool IsUtf16(const Record& record);
void AddAttribute(Record& record, char letter, Bytes value);
void AddTextAttribute(Record& record, char letter, std::string_view utf8);
void AddTextListAttribute(Record& record, char letter, const std::vector<std::string>& texts);
void AddU32Attribute(Record& record, char letter, std::uint32_t value);
void AddU8Attribute(Record& record, char letter, std::uint8_t value);

// Text: maxLength is the value's capacity in bytes ("m"), which the client sizes its buffer by
// and which every value update of it carries.
Record TextRecord(const ControlHead& head, std::string_view text, std::uint32_t maxLength);
// Message: a text shown in a box when a layout update unhides it; starts hidden usually.
Record MessageRecord(const ControlHead& head, std::string_view text, std::uint32_t maxLength);
Record ButtonRecord(const ControlHead& head);
// group ("r"): check boxes sharing a non-zero group behave as radio buttons.
Record CheckBoxRecord(const ControlHead& head, bool checked, std::uint32_t group);
Record SectionRecord(const ControlHead& head, bool open);
// format ("f"): the display template, tokens such as %dd% %MM% %yyyy% %HH% %mm% %ss%.
Record DateTimeRecord(const ControlHead& head, const DateTime& value, std::string_view format);

struct NumberParams {
    std::int32_t value = 0;                  // shown as value x 10^exponent
    std::optional<std::int32_t> minimum;     // "n", in force with kMinimumApplies
    std::optional<std::int32_t> maximum;     // "x", in force with kMaximumApplies
    std::int8_t decimals = 0;                // "d"
    std::int8_t exponent = 0;                // "m"
    std::string format = "%f";               // "f": the first "%" and the next character
                                             // stand for the number
};
Record NumberRecord(const ControlHead& head, const NumberParams& params);

// The attributes of a chart or data table; the sample kind, widths and styles are flag bits.
struct ChartParams {
    std::uint32_t rowCapacity = 0;         // "n"
    std::uint32_t seriesCount = 0;         // "N"
    std::string sampleUnits;               // "f": number template, or date-time template
    std::string dataUnits;                 // "F"
    std::string axisCaption;               // "a"
    std::vector<std::string> seriesNames;  // "A"
    std::uint8_t sampleDecimals = 0;       // "d"
    std::int8_t sampleExponent = 0;        // "m"
    std::uint8_t dataDecimals = 0;         // "D"
    std::int8_t dataExponent = 0;          // "M"
};
// block: the data block (chart_ring.h builds one).
Record ChartRecord(const ControlHead& head, const ChartParams& params, const Bytes& block);

Record PasswordRecord(const ControlHead& head, bool loggedIn);
Record ListRecord(const ControlHead& head, const std::vector<std::string>& items,
                  std::int32_t selected);
// Blob data as bytes. With kEditable and without kUtf16 the client takes them as 8-bit text.
Record BlobRecord(const ControlHead& head, const Bytes& data);
// A text blob (a web address, with kForBrowser): the text in the record's encoding, terminated.
Record BlobTextRecord(const ControlHead& head, std::string_view text);
Record FilesRecord(const ControlHead& head);
Record ImageRecord(const ControlHead& head, const Bytes& image);

}  // namespace dev
