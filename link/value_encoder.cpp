#include "link/value_encoder.h"

#include "link/bytes.h"
#include "link/link_client.h"
#include "link/text_convert.h"
#include "link/wire.h"
#include "model/control_store.h"
#include "platform/message_box.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t kPasswordField = 34;

std::int32_t SendItemHead(std::uint32_t key, std::uint32_t n) {
    std::uint8_t head[8];
    bytes::Put32(head, key);
    bytes::Put32(head + 4, n);
    return LinkSend(head, sizeof head);
}

std::int32_t SendItem(std::uint32_t key, const void* value, std::uint32_t n) {
    std::int32_t rc = SendItemHead(key, n);
    if (rc == kLinkOk && n > 0) rc = LinkSend(value, n);
    return rc;
}

// One 34-byte password field.
void PasswordField(const ControlRecord& r, const char16_t* text, std::uint8_t* field) {
    std::memset(field, 0, kPasswordField);
    if (!text) text = u"";
    std::size_t length = 0;
    while (text[length]) ++length;
    if (r.flags & kFlagUtf16) {
        // 17 code units; a shorter text is followed by zeros.
        std::memcpy(field, text, std::min(length + 1, kPasswordField / 2) * 2);
    } else {
        ConvertToCodePage(text, length, field, kPasswordField);
    }
}

std::int32_t EncodeRecord(ControlRecord& r) {
    const std::uint32_t key = r.controlKey;
    switch (r.type) {
    case kTypeText: {
        std::uint32_t m = r.maxLength;
        if (r.flags & kFlagUtf16) {
            return SendItem(key, r.text.Data(), static_cast<std::uint32_t>(
                                                    std::min<std::size_t>(m, r.text.Bytes())));
        }
        std::vector<std::uint8_t> buffer(m, 0);
        if (m > 0) ConvertToCodePage(r.text.Units(), r.text.Length(), buffer.data(), m);
        return SendItem(key, buffer.data(), m);
    }
    case kTypeButton: {
        std::int32_t rc = SendItem(key, &r.pressByte, 1);
        r.pressByte = 0;  // a press is sent once
        return rc;
    }
    case kTypeCheckBox: return SendItem(key, &r.checkByte, 1);
    case kTypeSection: return SendItem(key, &r.sectionByte, 1);
    case kTypeDateTime: return SendItem(key, &r.dateTime, 8);
    case kTypeNumber: return SendItem(key, &r.rawValue, 4);
    case kTypeChart:
        plat::ShowFaultBox(fault::kChartNotSendable, r.type);
        return kWrongType;
    case kTypePassword: {
        std::uint8_t first[kPasswordField], second[kPasswordField];
        PasswordField(r, r.outPassword1, first);
        PasswordField(r, r.outPassword2, second);
        std::int32_t rc = SendItemHead(key, 2 * kPasswordField);
        if (rc != kLinkOk) return rc;
        LinkSend(first, kPasswordField);  // its status is not reported
        return LinkSend(second, kPasswordField);
    }
    case kTypeList: return SendItem(key, &r.selectedIndex, 4);
    case kTypeMessage: return SendItem(key, &r.answerByte, 1);
    case kTypeBlob: {
        std::int32_t rc;
        if (!(r.flags & kFlagUtf16) && (r.flags & kFlagVariant)) {
            // Text data: C/2 bytes whatever the converted length.
            std::uint32_t n = r.dataCapacity / 2;
            std::vector<std::uint8_t> buffer(n, 0);
            std::size_t units = std::min<std::size_t>(r.dataLength, r.data.size()) / 2;
            std::vector<char16_t> source(units + 1, 0);
            std::memcpy(source.data(), r.data.data(), units * 2);
            std::size_t length = 0;
            while (length < units && source[length]) ++length;
            ConvertToCodePage(source.data(), length, buffer.data(), n, /*terminate=*/false);
            rc = SendItem(key, buffer.data(), n);
        } else {
            std::uint32_t n = static_cast<std::uint32_t>(
                std::min<std::size_t>(r.dataLength, r.data.size()));
            rc = SendItem(key, r.data.data(), n);
        }
        // A second, empty item follows, outside the count.
        if (rc == kLinkOk) rc = SendItemHead(key, 0);
        return rc;
    }
    case kTypeFiles: return SendItemHead(key, 0);
    case kTypeImage:
        if (r.flags & kFlagVariant) return SendItemHead(key, 0);
        plat::ShowFaultBox(fault::kImageNotPressable, kImageNotPressable);
        return kImageNotPressable;
    default:
        plat::ShowFaultBox(fault::kSendInvalidType, r.type);
        return kWrongType;
    }
}

}  // namespace

std::int32_t LinkSendPendingValues() {
    std::uint8_t head[24];
    std::uint16_t flags = wire::kFlagsOutbound;
    if (Link().acknowledgeValues) flags |= wire::kFlagAckWanted;
    BuildFrameHead(head, wire::kOutValues, flags);

    ControlsHold hold;
    std::int32_t rc = LinkSend(head, 20);
    if (rc != kLinkOk) return rc;
    auto& records = Controls().records;
    std::uint32_t count = 0;
    for (const ControlRecord& r : records) count += r.sendPending ? 1 : 0;
    bytes::Put32(head + 20, count);
    rc = LinkSend(head + 20, 4);
    for (std::size_t i = 0; rc == kLinkOk && i < records.size(); ++i) {
        ControlRecord& r = records[i];
        if (!r.sendPending) continue;
        rc = EncodeRecord(r);
        r.sendPending = 0;  // cleared whether the item went out or not
    }
    return rc;
}
