// The frame and message numbers of the link, shared by the client and the device side.
// Everything on the wire is little-endian.
#pragma once

#include <cstddef>
#include <cstdint>

namespace wire {

inline constexpr std::uint8_t kMarker[8] = {0x48, 0xEF, 0xF0, 0x74, 0x72, 0xEF, 0xE6, 0x66};
inline constexpr std::uint32_t kHeaderWord0 = 0x00000300;  // sent, never checked
inline constexpr std::uint32_t kHeaderWord1 = 0x00010001;  // sent, never checked
inline constexpr std::size_t kFrameHeadSize = 20;          // marker, two words, type, flags

// Header flags.
inline constexpr std::uint16_t kFlagsOutbound = 0x0002;     // on every frame the client sends
inline constexpr std::uint16_t kFlagAckWanted = 0x0008;     // inbound 6, 9, 16, 17
inline constexpr std::uint16_t kFlagIdentityUtf16 = 0x0001; // type 2: first text is UTF-16
inline constexpr std::uint16_t kFlagNoPings = 0x0002;       // type 2: session flag A = 0
inline constexpr std::uint16_t kFlagNoSessionB = 0x0004;    // type 2: session flag B = 0
inline constexpr std::uint16_t kFlagStayOpen = 0x0010;      // type 2: session flag C = 1

// Device to client.
enum InboundType : std::uint16_t {
    kInSessionEnd = 1,
    kInIdentity = 2,
    kInSessionEndAlt = 5,
    kInPanel = 6,
    kInPing = 8,
    kInValues = 9,
    kInPingReply = 11,
    kInNotice = 13,
    kInReload = 15,
    kInLayout = 16,
    kInFiles = 17,
    kInSettings = 19,
};

// Client to device.
enum OutboundType : std::uint16_t {
    kOutPanelRequest = 1,
    kOutGoodbye = 4,
    kOutValues = 7,
    kOutPing = 10,
    kOutPingReply = 12,
    kOutAck = 14,
    kOutDefaultLayout = 18,
};

// Record tags of a panel description (the first two bytes of a record body).
enum RecordTag : std::uint16_t {
    kTagButton = 'B',
    kTagDateTime = 'D',
    kTagFiles = 'F',
    kTagCheckBox = 'G',
    kTagImage = 'I',
    kTagList = 'L',
    kTagChart = 'M',
    kTagNumber = 'N',
    kTagBlob = 'O',
    kTagPassword = 'P',
    kTagSection = 'S',
    kTagText = 'T',
    kTagMessage = 'X',
};

}  // namespace wire
