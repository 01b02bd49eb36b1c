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

// The message is built whole under the program lock and sent after it is released.
struct Message {
    std::vector<std::uint8_t> bytes;
    const fault::Site* fault = nullptr;  // shown once the lock is released
    long faultValue = 0;

    void Append(const void* data, std::size_t n) {
        const auto* b = static_cast<const std::uint8_t*>(data);
        bytes.insert(bytes.end(), b, b + n);
    }
    void Word(std::uint32_t w) {
        std::uint8_t b[4];
        bytes::Put32(b, w);
        Append(b, 4);
    }
    void ItemHead(std::uint32_t key, std::uint32_t n) {
        Word(key);
        Word(n);
    }
    void Item(std::uint32_t key, const void* value, std::uint32_t n) {
        ItemHead(key, n);
        Append(value, n);
    }
    std::int32_t Fail(const fault::Site& site, long value, std::int32_t code) {
        fault = &site;
        faultValue = value;
        return code;
    }
};

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

// Appends the record's item; a record that cannot be sent adds nothing and ends the message.
std::int32_t EncodeRecord(ControlRecord& r, Message& out) {
    const std::uint32_t key = r.controlKey;
    switch (r.type) {
    case kTypeText: {
        std::uint32_t m = r.maxLength;
        if (r.flags & kFlagUtf16) {
            out.Item(key, r.text.Data(),
                     static_cast<std::uint32_t>(std::min<std::size_t>(m, r.text.Bytes())));
            break;
        }
        std::vector<std::uint8_t> buffer(m, 0);
        if (m > 0) ConvertToCodePage(r.text.Units(), r.text.Length(), buffer.data(), m);
        out.Item(key, buffer.data(), m);
        break;
    }
    case kTypeButton:
        out.Item(key, &r.pressByte, 1);
        r.pressByte = 0;  // a press is sent once
        break;
    case kTypeCheckBox: out.Item(key, &r.checkByte, 1); break;
    case kTypeSection: out.Item(key, &r.sectionByte, 1); break;
    case kTypeDateTime: out.Item(key, &r.dateTime, 8); break;
    case kTypeNumber: out.Item(key, &r.rawValue, 4); break;
    case kTypeChart: return out.Fail(fault::kChartNotSendable, r.type, kWrongType);
    case kTypePassword: {
        std::uint8_t first[kPasswordField], second[kPasswordField];
        PasswordField(r, r.outPassword1, first);
        PasswordField(r, r.outPassword2, second);
        out.ItemHead(key, 2 * kPasswordField);
        out.Append(first, kPasswordField);
        out.Append(second, kPasswordField);
        break;
    }
    case kTypeList: out.Item(key, &r.selectedIndex, 4); break;
    case kTypeMessage: out.Item(key, &r.answerByte, 1); break;
    case kTypeBlob:
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
            out.Item(key, buffer.data(), n);
        } else {
            out.Item(key, r.data.data(),
                     static_cast<std::uint32_t>(std::min<std::size_t>(r.dataLength, r.data.size())));
        }
        out.ItemHead(key, 0);  // a second, empty item follows, outside the count
        break;
    case kTypeFiles: out.ItemHead(key, 0); break;
    case kTypeImage:
        if (!(r.flags & kFlagVariant)) {
            return out.Fail(fault::kImageNotPressable, kImageNotPressable, kImageNotPressable);
        }
        out.ItemHead(key, 0);
        break;
    default: return out.Fail(fault::kSendInvalidType, r.type, kWrongType);
    }
    return kLinkOk;
}

}  // namespace

std::int32_t LinkSendPendingValues(unsigned timeoutMs) {
    if (!LinkIsOpen()) return kLinkNoSocket;
    Message message;
    std::uint16_t flags = wire::kFlagsOutbound;
    if (Link().acknowledgeValues) flags |= wire::kFlagAckWanted;
    message.bytes.resize(wire::kFrameHeadSize);
    BuildFrameHead(message.bytes.data(), wire::kOutValues, flags);
    std::int32_t rc = kLinkOk;
    std::vector<std::uint32_t> taken;  // the controls whose marks this message spends
    {
        ControlsHold hold;
        auto& records = Controls().records;
        std::uint32_t count = 0;
        for (const ControlRecord& r : records) count += r.sendPending ? 1 : 0;
        message.Word(count);
        for (std::size_t i = 0; rc == kLinkOk && i < records.size(); ++i) {
            ControlRecord& r = records[i];
            if (!r.sendPending) continue;
            rc = EncodeRecord(r, message);
            r.sendPending = 0;  // cleared whether the item goes out or not
            taken.push_back(r.controlKey);
        }
    }
    if (message.fault) plat::ShowFaultBox(*message.fault, message.faultValue);
    // A record that could not be sent cuts the message short where it stands, count and all.
    const std::int32_t sent = LinkSend(message.bytes.data(), message.bytes.size(), timeoutMs);
    if (sent == kLinkOk) return rc;
    // Nothing went out: the values are still to be sent.
    ControlsHold hold;
    for (std::uint32_t key : taken) {
        if (ControlRecord* r = FindControl(key)) r->sendPending = 1;
    }
    return sent;
}
