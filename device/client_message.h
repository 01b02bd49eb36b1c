// Reading what the client sends: panel request (1), goodbye (4), value message (7), ping (10),
// ping reply (12), acknowledgement (14) and default layout (18).
//
// The decoder works on the bytes received so far and is called again when more arrive. Bytes
// before a frame marker are skipped, as the client skips them. A frame the device cannot read
// is reported as malformed with its head consumed, so decoding resumes at the next marker.
#pragma once

#include "device/out_bytes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dev {

// Ceilings on what one value message may claim; beyond them the frame is malformed.
inline constexpr std::uint32_t kMaxValueItems = 4096;
inline constexpr std::uint32_t kMaxValueItemBytes = 1u << 20;
inline constexpr std::size_t kMaxValueMessageBytes = 4u << 20;

struct ValueItem {
    std::uint32_t key = 0;
    Bytes data;
    bool blobTrailer = false;  // the empty item that follows every Blob item, outside the count
};

struct ClientMessage {
    std::uint16_t type = 0;
    std::uint16_t flags = 0;
    std::uint32_t count = 0;        // type 7: the count field
    std::vector<ValueItem> items;   // type 7: the items as they came, Blob trailers included
    bool truncated = false;         // type 7: fewer items than counted before the next frame
                                    // (the client stops a message at a control it cannot send)
    std::uint32_t payload = 0;      // type 18: the 4-byte payload (0x300 from the menu command)
};

enum class DecodeStatus {
    kNeedMore,   // no whole frame yet; consumed may still drop bytes before a marker
    kMessage,    // *out holds one frame
    kMalformed,  // error says why; the frame's head was consumed
};

struct DecodeOutcome {
    DecodeStatus status = DecodeStatus::kNeedMore;
    std::size_t consumed = 0;  // bytes the caller may drop from the front
    std::string error;
};

// Which keys are Blob controls of the panel the device offered.
using BlobTest = std::function<bool(std::uint32_t key)>;

DecodeOutcome DecodeClientMessage(const std::uint8_t* data, std::size_t size, const BlobTest& isBlob,
                                  ClientMessage* out);

// The two 34-byte password fields of a Password item: the password, or the old and the new
// one; both empty to log out. False when the item is not 68 bytes long.
struct PasswordFields {
    std::string first;
    std::string second;
};
bool ReadPasswordFields(const Bytes& data, bool utf16, PasswordFields* out);

// Integers of an item: false when it is shorter than the value.
bool ReadInt32(const Bytes& data, std::int32_t* out);
bool ReadByte(const Bytes& data, std::uint8_t* out);

}  // namespace dev
