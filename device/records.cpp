#include "device/records.h"

#include "device/control_flags.h"
#include "device/wire_text.h"
#include "link/wire.h"

namespace dev {

namespace {

Record Start(std::uint16_t tag, const ControlHead& head) {
    Record r;
    r.tag = tag;
    r.flags = head.flags;
    r.key = head.key;
    return r;
}

void Finish(Record& r, const ControlHead& head) {
    AddTextAttribute(r, 'Z', head.label);
    if (head.background) AddU32Attribute(r, 'c', *head.background);
}

// A one-byte value behind its size word.
Record ByteRecord(std::uint16_t tag, const ControlHead& head, std::uint8_t value) {
    Record r = Start(tag, head);
    Put32(r.fixed, 1);
    Put8(r.fixed, value);
    Finish(r, head);
    return r;
}

Record TextLike(std::uint16_t tag, const ControlHead& head, std::string_view text,
                std::uint32_t maxLength) {
    Record r = Start(tag, head);
    PutCounted(r.fixed, TextBytes(text, IsUtf16(r), true));
    Finish(r, head);
    AddU32Attribute(r, 'm', maxLength);
    return r;
}

Record CountedRecord(std::uint16_t tag, const ControlHead& head, const Bytes& data) {
    Record r = Start(tag, head);
    PutCounted(r.fixed, data);
    Finish(r, head);
    return r;
}

}  // namespace

Bytes EncodeRecord(const Record& record) {
    Bytes out;
    TrmWriter w = WriterInto(out);
    w.recordHead(record.tag, record.flags, record.key);
    w.bytes(record.fixed.data(), record.fixed.size());
    w.u32(static_cast<std::uint32_t>(record.attributes.size()));
    for (const Attribute& a : record.attributes) w.u8(static_cast<std::uint8_t>(a.letter));
    for (const Attribute& a : record.attributes) {
        w.u32(static_cast<std::uint32_t>(a.value.size()));
        w.bytes(a.value.data(), a.value.size());
    }
    return out;
}

bool IsUtf16(const Record& record) { return (record.flags & kUtf16) != 0; }

void AddAttribute(Record& record, char letter, Bytes value) {
    record.attributes.push_back({letter, std::move(value)});
}

void AddTextAttribute(Record& record, char letter, std::string_view utf8) {
    AddAttribute(record, letter, TextBytes(utf8, IsUtf16(record)));
}

void AddTextListAttribute(Record& record, char letter, const std::vector<std::string>& texts) {
    AddAttribute(record, letter, TextListBytes(texts, IsUtf16(record)));
}

void AddU32Attribute(Record& record, char letter, std::uint32_t value) {
    Bytes b;
    Put32(b, value);
    AddAttribute(record, letter, std::move(b));
}

void AddU8Attribute(Record& record, char letter, std::uint8_t value) {
    AddAttribute(record, letter, Bytes{value});
}

Record TextRecord(const ControlHead& head, std::string_view text, std::uint32_t maxLength) {
    return TextLike(wire::kTagText, head, text, maxLength);
}

Record MessageRecord(const ControlHead& head, std::string_view text, std::uint32_t maxLength) {
    return TextLike(wire::kTagMessage, head, text, maxLength);
}

Record ButtonRecord(const ControlHead& head) { return ByteRecord(wire::kTagButton, head, 0); }

Record CheckBoxRecord(const ControlHead& head, bool checked, std::uint32_t group) {
    Record r = ByteRecord(wire::kTagCheckBox, head, checked ? 255 : 0);
    AddU32Attribute(r, 'r', group);
    return r;
}

Record SectionRecord(const ControlHead& head, bool open) {
    return ByteRecord(wire::kTagSection, head, open ? 255 : 0);
}

Record DateTimeRecord(const ControlHead& head, const DateTime& value, std::string_view format) {
    Record r = CountedRecord(wire::kTagDateTime, head, EncodeDateTime(value));
    AddTextAttribute(r, 'f', format);
    return r;
}

Record NumberRecord(const ControlHead& head, const NumberParams& params) {
    Bytes value;
    Put32(value, static_cast<std::uint32_t>(params.value));
    Record r = CountedRecord(wire::kTagNumber, head, value);
    AddTextAttribute(r, 'f', params.format);
    if (params.minimum) AddU32Attribute(r, 'n', static_cast<std::uint32_t>(*params.minimum));
    if (params.maximum) AddU32Attribute(r, 'x', static_cast<std::uint32_t>(*params.maximum));
    AddU8Attribute(r, 'd', static_cast<std::uint8_t>(params.decimals));
    AddU8Attribute(r, 'm', static_cast<std::uint8_t>(params.exponent));
    return r;
}

Record ChartRecord(const ControlHead& head, const ChartParams& params, const Bytes& block) {
    Record r = CountedRecord(wire::kTagChart, head, block);
    AddU32Attribute(r, 'n', params.rowCapacity);
    AddU32Attribute(r, 'N', params.seriesCount);
    AddTextAttribute(r, 'f', params.sampleUnits);
    AddTextAttribute(r, 'F', params.dataUnits);
    AddTextAttribute(r, 'a', params.axisCaption);
    AddTextListAttribute(r, 'A', params.seriesNames);
    AddU8Attribute(r, 'd', params.sampleDecimals);
    AddU8Attribute(r, 'm', static_cast<std::uint8_t>(params.sampleExponent));
    AddU8Attribute(r, 'D', params.dataDecimals);
    AddU8Attribute(r, 'M', static_cast<std::uint8_t>(params.dataExponent));
    return r;
}

Record PasswordRecord(const ControlHead& head, bool loggedIn) {
    return ByteRecord(wire::kTagPassword, head, loggedIn ? 1 : 0);
}

Record ListRecord(const ControlHead& head, const std::vector<std::string>& items,
                  std::int32_t selected) {
    Bytes value;
    Put32(value, static_cast<std::uint32_t>(selected));
    Record r = CountedRecord(wire::kTagList, head, value);
    AddTextListAttribute(r, 'I', items);
    AddU32Attribute(r, 'n', static_cast<std::uint32_t>(items.size()));
    return r;
}

Record BlobRecord(const ControlHead& head, const Bytes& data) {
    return CountedRecord(wire::kTagBlob, head, data);
}

Record BlobTextRecord(const ControlHead& head, std::string_view text) {
    return BlobRecord(head, TextBytes(text, (head.flags & kUtf16) != 0, true));
}

Record FilesRecord(const ControlHead& head) { return CountedRecord(wire::kTagFiles, head, {}); }

Record ImageRecord(const ControlHead& head, const Bytes& image) {
    return CountedRecord(wire::kTagImage, head, image);
}

}  // namespace dev
