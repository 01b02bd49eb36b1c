// Value updates (type 9) and layout updates (type 16): counted items, each a control key, a
// byte count and the data. Items for unknown keys are read and dropped.
#include "link/bytes.h"
#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/payload_reader.h"
#include "link/text_convert.h"
#include "model/control_store.h"
#include "platform/message_box.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr long kImageFaultValue = 777;

using Data = std::vector<std::uint8_t>;

void CopyInto(void* slot, std::size_t slotSize, const Data& data) {
    std::memcpy(slot, data.data(), std::min(slotSize, data.size()));
}

// Converts 8-bit text into a record's text buffer of at most `units` characters, ending it
// with a zero when there is room.
void CodePageIntoBuffer(TextBuffer& buffer, const std::uint8_t* text, std::size_t count,
                        std::size_t units) {
    units = std::min(units, buffer.UnitCapacity());
    std::size_t written = CodePageTextInto(text, count, buffer.Units(), units);
    if (written < buffer.UnitCapacity()) buffer.Units()[written] = u'\0';
}

void ApplyChartData(ControlRecord& r, const Data& data) {
    ChartData& chart = r.chart;
    std::size_t n = data.size();
    std::size_t table = chart.table.size();
    std::memcpy(chart.table.data(), data.data(), std::min(n, table));
    bool labels = (r.flags & kMaskSampleKind) == kSampleLabels;
    std::size_t text = labels ? 0 : chart.textPart.size();
    if (n > table && !labels) {
        std::memcpy(chart.textPart.data(), data.data() + table, std::min(n - table, text));
    }
    if (n > table + text) {
        std::uint8_t word[4];
        bytes::Put32(word, chart.trailingWord);
        std::memcpy(word, data.data() + table + text, std::min<std::size_t>(n - table - text, 4));
        chart.trailingWord = bytes::Get32(word);
    }
}

// Writes one value into its record; returns the fault to show once the lock is released
// (none: nullptr), and sets *stop for a record whose type ends the message.
const fault::Site* ApplyValue(ControlRecord& r, const Data& data, bool* stop,
                              long* faultValue) {
    const std::size_t n = data.size();
    const bool utf16 = (r.flags & kFlagUtf16) != 0;
    switch (r.type) {
    case kTypeText:
        if (utf16) {
            // m bytes whatever n is; what the device did not send reads as zeros.
            std::size_t m = std::min<std::size_t>(r.maxLength, r.text.Bytes());
            std::memset(r.text.Data(), 0, m);
            std::memcpy(r.text.Data(), data.data(), std::min(m, n));
        } else {
            CodePageIntoBuffer(r.text, data.data(), n, r.maxLength);
        }
        break;
    case kTypeButton: if (n >= 1) r.pressByte = data[0]; break;
    case kTypeCheckBox: if (n >= 1) r.checkByte = data[0]; break;
    case kTypeSection: if (n >= 1) r.sectionByte = data[0]; break;
    case kTypePassword: if (n >= 1) r.loggedInByte = data[0]; break;
    case kTypeDateTime: CopyInto(&r.dateTime, 8, data); break;
    case kTypeNumber: CopyInto(&r.rawValue, 4, data); break;
    case kTypeList: CopyInto(&r.selectedIndex, 4, data); break;
    case kTypeChart: ApplyChartData(r, data); break;
    case kTypeMessage:
        if (utf16) {
            // Twice the text rule, bounded by the buffer.
            std::size_t size = std::min<std::size_t>(2 * std::size_t{r.maxLength}, r.text.Bytes());
            std::memset(r.text.Data(), 0, size);
            std::memcpy(r.text.Data(), data.data(), std::min(size, n));
        } else {
            CodePageIntoBuffer(r.text, data.data(), std::min<std::size_t>(r.maxLength, n),
                               2 * std::size_t{r.maxLength});
        }
        break;
    case kTypeBlob:
        if (!utf16 && (r.flags & kFlagVariant)) {
            std::size_t units = r.data.size() / 2;
            std::vector<char16_t> text(units, u'\0');
            std::size_t written = CodePageTextInto(data.data(), n, text.data(), units);
            if (written < units) text[written] = u'\0';
            std::memcpy(r.data.data(), text.data(), units * 2);
        } else {
            // The stored length stays; the copy stops at the buffer's end.
            CopyInto(r.data.data(), r.data.size(), data);
        }
        break;
    case kTypeFiles:
        *faultValue = r.type;
        return &fault::kFilesValue;
    case kTypeUnknown:
        return nullptr;
    case kTypeImage:
        *faultValue = kImageFaultValue;
        return &fault::kImageValue;
    default:
        *faultValue = r.type;
        *stop = true;
        return &fault::kUpdateInvalidType;
    }
    MarkValueChanged(r);
    return nullptr;
}

void ApplyLayout(ControlRecord& r, const Data& data) {
    if (r.type == kTypeUnknown || !IsValidControlType(r.type)) return;
    std::uint8_t update[8] = {};
    std::memcpy(update, data.data(), std::min<std::size_t>(data.size(), sizeof update));
    std::uint16_t u = bytes::Get16(update);
    std::uint32_t mask = kFlagHidden | kFlagBringIntoView;
    std::uint32_t bits = u & mask;
    if (r.type == kTypeMessage) {
        mask |= kMaskMessageIcon;
        bits |= (static_cast<std::uint32_t>(update[2]) << 16) & kMaskMessageIcon;
    }
    r.flags = (r.flags & ~mask) | bits;
    if (u & 0x0040) r.background = bytes::Get32(update + 4);
    MarkLayoutChanged(r);
}

template <typename Apply>
DecodeStatus DecodeItems(ReceiveSource& source, Apply apply) {
    std::uint32_t count;
    if (DecodeStatus rc = ReceiveWord(source, &count); rc != DecodeStatus::kOk) return rc;
    Data data;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t key, n;
        if (DecodeStatus rc = ReceiveWord(source, &key); rc != DecodeStatus::kOk) return rc;
        if (DecodeStatus rc = ReceiveWord(source, &n); rc != DecodeStatus::kOk) return rc;
        if (n > limits::kMaxItemBytes) return DecodeStatus::kMalformed;
        if (DecodeStatus rc = ReceiveBytes(source, n, &data); rc != DecodeStatus::kOk) return rc;
        bool stop = false;
        const fault::Site* site = nullptr;
        long faultValue = 0;
        {
            ControlsHold hold;
            if (ControlRecord* r = FindControl(key)) site = apply(*r, data, &stop, &faultValue);
        }
        // Boxes are shown outside the lock, so the screen is not blocked behind them.
        if (site) plat::ShowFaultBox(*site, faultValue);
        if (stop) return DecodeStatus::kMalformed;
    }
    return DecodeStatus::kOk;
}

}  // namespace

DecodeStatus DecodeValueUpdates(ReceiveSource& source) { return DecodeItems(source, ApplyValue); }

DecodeStatus DecodeLayoutUpdates(ReceiveSource& source) {
    return DecodeItems(source, [](ControlRecord& r, const Data& data, bool*,
                                  long*) -> const fault::Site* {
        ApplyLayout(r, data);
        return nullptr;
    });
}
