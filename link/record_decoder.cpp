#include "link/record_decoder.h"

#include "link/bytes.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/record_reader.h"
#include "link/text_convert.h"
#include "link/wire.h"
#include "platform/message_box.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kGrey = 0xC0C0C0;

// Offsets within a body.
constexpr std::size_t kFlagsAt = 2;
constexpr std::size_t kKeyAt = 6;
constexpr std::size_t kSizeAt = 10;
constexpr std::size_t kValueAt = 14;

struct Context {
    RecordBody body;
    ControlRecord& r;
    bool utf16;
    AttributeBlock attributes;
};

bool Attributes(Context& c, std::size_t offset) { return c.attributes.Parse(c.body, offset); }

void LabelAndBackground(Context& c, std::uint32_t fallback) {
    c.r.label = c.attributes.SingleText('Z', c.utf16);
    c.r.background = c.attributes.Word('c', fallback);
}

// Text and Message: the initial text, then the buffer sized by "m".
DecodeStatus DecodeTextual(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t s = c.body.Word(kSizeAt);
    if (!c.body.Has(kValueAt, s)) return DecodeStatus::kMalformed;
    const std::uint8_t* initial = c.body.data + kValueAt;
    if (c.utf16) {
        c.r.text.Resize(s);
        std::memcpy(c.r.text.Data(), initial, s);
    } else {
        c.r.text.Resize(2 * static_cast<std::size_t>(s));
        CodePageTextInto(initial, s, c.r.text.Units(), s);
    }
    if (!Attributes(c, kValueAt + s)) return DecodeStatus::kMalformed;
    c.r.label = c.attributes.SingleText('Z', c.utf16);
    if (c.attributes.Has('m')) {
        std::uint32_t m = c.attributes.Word('m', 0);
        if (m > limits::kMaxTextBytes) return DecodeStatus::kMalformed;
        c.r.maxLength = m;
        // The UTF-16 buffer is m bytes, the 8-bit one m characters: not doubled, deliberately.
        c.r.text.Resize(c.utf16 ? m : 2 * static_cast<std::size_t>(m));
    } else {
        plat::ShowFaultBox(fault::kTextWithoutMaximum, 0);
    }
    return DecodeStatus::kOk;
}

// Button, Check Box, Section, Password: one byte at offset 14.
DecodeStatus DecodeOneByte(Context& c, std::uint8_t* slot, std::uint32_t background) {
    if (!c.body.Has(kValueAt, 1)) return DecodeStatus::kMalformed;
    *slot = c.body.Byte(kValueAt);
    if (!Attributes(c, kValueAt + 1)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, background);
    return DecodeStatus::kOk;
}

DecodeStatus DecodeDateTime(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t size = c.body.Word(kSizeAt);
    if (size != 8) {
        plat::ShowFaultBox(fault::kDateTimeSize, static_cast<long>(size));
        return DecodeStatus::kOk;  // only the common part is kept
    }
    if (!c.body.Has(kValueAt, 8)) return DecodeStatus::kMalformed;
    std::memcpy(&c.r.dateTime, c.body.data + kValueAt, 8);
    if (!Attributes(c, kValueAt + 8)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, (c.r.flags & kFlagVariant) ? kGrey : kWhite);
    if (c.attributes.Has('f')) {
        c.r.format = c.attributes.SingleText('f', c.utf16);
        c.r.hasFormat = true;
    } else {
        plat::ShowFaultBox(fault::kDateTimeWithoutFormat, 0);
    }
    return DecodeStatus::kOk;
}

DecodeStatus DecodeNumber(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t size = c.body.Word(kSizeAt);
    if (size != 4) plat::ShowFaultBox(fault::kNumberSize, static_cast<long>(size));
    if (!c.body.Has(kValueAt, 4)) return DecodeStatus::kMalformed;
    c.r.rawValue = static_cast<std::int32_t>(c.body.Word(kValueAt));
    if (!Attributes(c, kValueAt + 4)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, (c.r.flags & kFlagVariant) ? kGrey : kWhite);
    if (c.attributes.Has('f')) {
        c.r.format = c.attributes.SingleText('f', c.utf16);
        c.r.hasFormat = true;
    }
    c.r.minimum = static_cast<std::int32_t>(c.attributes.Word('n', 0));
    c.r.maximum = static_cast<std::int32_t>(c.attributes.Word('x', 0));
    c.r.decimals = static_cast<std::int8_t>(c.attributes.Byte('d', 0));
    c.r.exponent = static_cast<std::int8_t>(c.attributes.Byte('m', 0));
    return DecodeStatus::kOk;
}

std::size_t ElementWidth(std::uint32_t flags) {
    switch (flags & kMaskDataWidth) {
    case 0x000000: return 4;
    case 0x100000: return 2;
    case 0x200000: return 1;
    default: return 0;  // a table of size 0
    }
}

DecodeStatus DecodeChart(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t s = c.body.Word(kSizeAt);
    if (!c.body.Has(kValueAt, s)) return DecodeStatus::kMalformed;
    if (!Attributes(c, kValueAt + s)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, kGrey);
    ChartData& chart = c.r.chart;
    chart.sampleUnits = c.attributes.SingleText('f', c.utf16);
    chart.dataUnits = c.attributes.SingleText('F', c.utf16);
    chart.axisCaption = c.attributes.SingleText('a', c.utf16);
    chart.seriesNames = c.attributes.Text('A', c.utf16);
    chart.rowCapacity = c.attributes.Word('n', 0);
    chart.seriesCount = c.attributes.Word('N', 0);
    chart.sampleDecimals = c.attributes.Byte('d', 0);
    chart.sampleExponent = static_cast<std::int8_t>(c.attributes.Byte('m', 0));
    chart.dataDecimals = c.attributes.Byte('D', 0);
    chart.dataExponent = static_cast<std::int8_t>(c.attributes.Byte('M', 0));

    // The block: the numeric table, the sample array, then the row counter.
    std::uint64_t table = static_cast<std::uint64_t>(chart.seriesCount) * chart.rowCapacity *
                          ElementWidth(c.r.flags);
    if (table > limits::kMaxChartTable || table + 4 > s) return DecodeStatus::kMalformed;
    const std::uint8_t* block = c.body.data + kValueAt;
    chart.table.assign(block, block + table);
    std::size_t textBytes = s - static_cast<std::size_t>(table) - 4;
    const std::uint8_t* text = block + table;
    if ((c.r.flags & kMaskSampleKind) == kSampleLabels && !c.utf16) {
        std::u16string labels = WireText(text, textBytes, false);
        chart.textPart.resize(labels.size() * 2);
        std::memcpy(chart.textPart.data(), labels.data(), labels.size() * 2);
    } else {
        chart.textPart.assign(text, text + textBytes);
    }
    chart.trailingWord = bytes::Get32(block + s - 4);
    return DecodeStatus::kOk;
}

DecodeStatus DecodePassword(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t size = c.body.Word(kSizeAt);
    if (size != 1) {
        plat::ShowFaultBox(fault::kPasswordSize, static_cast<long>(size));
        return DecodeStatus::kOk;  // the record ends there
    }
    return DecodeOneByte(c, &c.r.loggedInByte, kWhite);
}

DecodeStatus DecodeList(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t size = c.body.Word(kSizeAt);
    if (size != 4) plat::ShowFaultBox(fault::kListSize, static_cast<long>(size));
    if (!c.body.Has(kValueAt, 4) || !c.body.Has(kValueAt, size)) return DecodeStatus::kMalformed;
    c.r.selectedIndex = static_cast<std::int32_t>(c.body.Word(kValueAt));
    if (!Attributes(c, kValueAt + size)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, kWhite);
    c.r.items = c.attributes.Text('I', c.utf16);
    c.r.itemCount = c.attributes.Word('n', 0);
    return DecodeStatus::kOk;
}

// Blob and Image: counted bytes at offset 14, then the attributes.
DecodeStatus DecodeData(Context& c, bool image) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t s = c.body.Word(kSizeAt);
    if (image && s >= limits::kImageCeiling) s = 0;
    if (!c.body.Has(kValueAt, s)) return DecodeStatus::kMalformed;
    const std::uint8_t* data = c.body.data + kValueAt;
    if (image || c.utf16) {
        c.r.data.assign(data, data + s);
    } else {
        std::u16string text = WireText(data, s, false);
        c.r.data.assign(2 * static_cast<std::size_t>(s), 0);
        std::memcpy(c.r.data.data(), text.data(), std::min(text.size() * 2, c.r.data.size()));
    }
    c.r.dataLength = c.r.dataCapacity = static_cast<std::uint32_t>(c.r.data.size());
    if (!Attributes(c, kValueAt + s)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, kGrey);
    if (!image) {
        c.r.blobN = c.attributes.Word('n', 0);
        c.r.blobM = c.attributes.Word('m', 0);
    }
    return DecodeStatus::kOk;
}

DecodeStatus DecodeFilesRecord(Context& c) {
    if (!c.body.Has(kSizeAt, 4)) return DecodeStatus::kMalformed;
    std::uint32_t s = c.body.Word(kSizeAt);
    if (!c.body.Has(kValueAt, s)) return DecodeStatus::kMalformed;  // skipped, but must be there
    if (!Attributes(c, kValueAt + s)) return DecodeStatus::kMalformed;
    LabelAndBackground(c, kGrey);
    return DecodeStatus::kOk;
}

}  // namespace

DecodeStatus DecodeRecord(const std::uint8_t* body, std::size_t size, ControlRecord& out) {
    out = ControlRecord{};
    if (size < kSizeAt) return DecodeStatus::kMalformed;
    Context c{{body, size}, out, false, {}};
    out.flags = bytes::Get32(body + kFlagsAt);
    out.controlKey = bytes::Get32(body + kKeyAt);
    c.utf16 = (out.flags & kFlagUtf16) != 0;
    switch (bytes::Get16(body)) {
    case wire::kTagText:
        out.type = kTypeText;
        if (DecodeStatus rc = DecodeTextual(c); rc != DecodeStatus::kOk) return rc;
        out.background = c.attributes.Word('c', kWhite);
        return DecodeStatus::kOk;
    case wire::kTagMessage: out.type = kTypeMessage; return DecodeTextual(c);
    case wire::kTagButton:
        out.type = kTypeButton;
        return DecodeOneByte(c, &out.pressByte, kGrey);
    case wire::kTagCheckBox:
        out.type = kTypeCheckBox;
        if (DecodeStatus rc = DecodeOneByte(c, &out.checkByte, kGrey); rc != DecodeStatus::kOk) {
            return rc;
        }
        out.group = c.attributes.Word('r', 0);
        return DecodeStatus::kOk;
    case wire::kTagSection:
        out.type = kTypeSection;
        return DecodeOneByte(c, &out.sectionByte, kGrey);
    case wire::kTagDateTime: out.type = kTypeDateTime; return DecodeDateTime(c);
    case wire::kTagNumber: out.type = kTypeNumber; return DecodeNumber(c);
    case wire::kTagChart: out.type = kTypeChart; return DecodeChart(c);
    case wire::kTagPassword: out.type = kTypePassword; return DecodePassword(c);
    case wire::kTagList: out.type = kTypeList; return DecodeList(c);
    case wire::kTagBlob: out.type = kTypeBlob; return DecodeData(c, false);
    case wire::kTagFiles: out.type = kTypeFiles; return DecodeFilesRecord(c);
    case wire::kTagImage: out.type = kTypeImage; return DecodeData(c, true);
    default: out.type = kTypeUnknown; return DecodeStatus::kOk;  // only the common part
    }
}
