#include "device/client_message.h"

#include "device/wire_text.h"
#include "link/wire.h"

#include <cstring>

namespace dev {

namespace {

constexpr std::size_t kMarkerSize = sizeof wire::kMarker;
constexpr std::size_t kItemHead = 8;
constexpr std::size_t kPasswordField = 34;

bool IsMarkerAt(const std::uint8_t* p) { return std::memcmp(p, wire::kMarker, kMarkerSize) == 0; }

// The position of the first whole marker, or size when there is none.
std::size_t FindMarker(const std::uint8_t* data, std::size_t size) {
    for (std::size_t i = 0; i + kMarkerSize <= size; ++i) {
        if (IsMarkerAt(data + i)) return i;
    }
    return size;
}

struct Parse {
    DecodeStatus status = DecodeStatus::kNeedMore;
    std::size_t used = 0;
    std::string error;
};

Parse Malformed(std::string error) { return {DecodeStatus::kMalformed, 0, std::move(error)}; }

enum class ItemHead { kNeedMore, kNextFrame, kItem };

// The key and byte count of the item at pos, or the marker of a frame that follows a message
// the client cut short.
ItemHead ReadItemHead(const std::uint8_t* p, std::size_t avail, std::size_t pos, std::uint32_t* key,
                      std::uint32_t* n) {
    if (avail - pos < kItemHead) return ItemHead::kNeedMore;
    if (IsMarkerAt(p + pos)) return ItemHead::kNextFrame;
    *key = Read32(p + pos);
    *n = Read32(p + pos + 4);
    return ItemHead::kItem;
}

// More bytes are needed, or the message ends at pos, cut short by the next frame.
Parse NotAnItem(ItemHead head, std::size_t pos, ClientMessage* out) {
    if (head == ItemHead::kNeedMore) return {};
    out->truncated = true;
    return {DecodeStatus::kMessage, pos, {}};
}

// The payload of a value message: count, then the items with the Blob trailers.
Parse ParseValues(const std::uint8_t* p, std::size_t avail, const BlobTest& isBlob,
                  ClientMessage* out) {
    if (avail < 4) return {};
    out->count = Read32(p);
    if (out->count > kMaxValueItems) {
        return Malformed("value message counts " + std::to_string(out->count) +
                         " items, more than " + std::to_string(kMaxValueItems));
    }
    std::size_t pos = 4;
    for (std::uint32_t i = 0; i < out->count; ++i) {
        std::uint32_t key = 0, n = 0;
        ItemHead head = ReadItemHead(p, avail, pos, &key, &n);
        if (head != ItemHead::kItem) return NotAnItem(head, pos, out);
        if (n > kMaxValueItemBytes || pos + kItemHead + n > kMaxValueMessageBytes) {
            return Malformed("value item of key " + std::to_string(key) + " claims " +
                             std::to_string(n) + " bytes");
        }
        if (avail - pos - kItemHead < n) return {};
        out->items.push_back({key, Bytes(p + pos + kItemHead, p + pos + kItemHead + n), false});
        pos += kItemHead + n;
        if (!isBlob || !isBlob(key)) continue;

        std::uint32_t trailerKey = 0;
        head = ReadItemHead(p, avail, pos, &trailerKey, &n);
        if (head != ItemHead::kItem) return NotAnItem(head, pos, out);
        if (trailerKey != key || n != 0) {
            return Malformed("Blob item of key " + std::to_string(key) +
                             " is not followed by its empty item");
        }
        out->items.push_back({key, {}, true});
        pos += kItemHead;
    }
    return {DecodeStatus::kMessage, pos, {}};
}

Parse ParsePayload(const std::uint8_t* p, std::size_t avail, const BlobTest& isBlob,
                   ClientMessage* out) {
    switch (out->type) {
    case wire::kOutPanelRequest:
    case wire::kOutGoodbye:
    case wire::kOutPing:
    case wire::kOutPingReply:
    case wire::kOutAck:
        return {DecodeStatus::kMessage, 0, {}};
    case wire::kOutDefaultLayout:
        if (avail < 4) return {};
        out->payload = Read32(p);
        return {DecodeStatus::kMessage, 4, {}};
    case wire::kOutValues:
        return ParseValues(p, avail, isBlob, out);
    default:
        return Malformed("unknown message type " + std::to_string(out->type));
    }
}

}  // namespace

DecodeOutcome DecodeClientMessage(const std::uint8_t* data, std::size_t size, const BlobTest& isBlob,
                                  ClientMessage* out) {
    DecodeOutcome outcome;
    const std::size_t start = FindMarker(data, size);
    if (start == size) {
        // Keep a tail that may be the start of a marker.
        outcome.consumed = size >= kMarkerSize ? size - (kMarkerSize - 1) : 0;
        return outcome;
    }
    outcome.consumed = start;
    if (size - start < wire::kFrameHeadSize) return outcome;

    *out = ClientMessage{};
    const std::uint8_t* head = data + start;
    out->type = Read16(head + 16);
    out->flags = Read16(head + 18);
    const std::size_t payloadAt = start + wire::kFrameHeadSize;
    Parse parse = ParsePayload(data + payloadAt, size - payloadAt, isBlob, out);
    outcome.status = parse.status;
    if (parse.status == DecodeStatus::kMessage) outcome.consumed = payloadAt + parse.used;
    if (parse.status == DecodeStatus::kMalformed) {
        outcome.consumed = payloadAt;
        outcome.error = std::move(parse.error);
    }
    return outcome;
}

bool ReadPasswordFields(const Bytes& data, bool utf16, PasswordFields* out) {
    if (data.size() != 2 * kPasswordField) return false;
    out->first = TextFromBytes(data.data(), kPasswordField, utf16);
    out->second = TextFromBytes(data.data() + kPasswordField, kPasswordField, utf16);
    return true;
}

bool ReadInt32(const Bytes& data, std::int32_t* out) {
    if (data.size() < 4) return false;
    *out = static_cast<std::int32_t>(Read32(data.data()));
    return true;
}

bool ReadByte(const Bytes& data, std::uint8_t* out) {
    if (data.empty()) return false;
    *out = data[0];
    return true;
}

}  // namespace dev
