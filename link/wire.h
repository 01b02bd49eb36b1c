// The frame and message numbers of the link under the client's names. The numbers come from
// the one header every side includes (the microcontroller library's folder holds it, so a
// maker can copy that folder alone). Everything on the wire is little-endian.
#pragma once

#include "TremolanthWire.h"

#include <cstddef>
#include <cstdint>

namespace wire {

inline constexpr std::uint8_t kMarker[8] = {TRM_MARKER_BYTES};
inline constexpr std::uint32_t kHeaderWord0 = TRM_HEADER_WORD0;      // sent, never checked
inline constexpr std::uint32_t kHeaderWord1 = TRM_HEADER_WORD1;      // sent, never checked
inline constexpr std::size_t kFrameHeadSize = TRM_FRAME_HEAD_SIZE;   // marker, two words, type, flags

// Header flags.
inline constexpr std::uint16_t kFlagsOutbound = TRM_FLAGS_OUTBOUND;        // every client frame
inline constexpr std::uint16_t kFlagAckWanted = TRM_FLAG_ACK_WANTED;       // inbound 6, 9, 16, 17
inline constexpr std::uint16_t kFlagIdentityUtf16 = TRM_FLAG_IDENTITY_UTF16;  // type 2: UTF-16 name
inline constexpr std::uint16_t kFlagNoPings = TRM_FLAG_NO_PINGS;           // type 2: flag A = 0
inline constexpr std::uint16_t kFlagNoSessionB = TRM_FLAG_NO_SESSION_B;    // type 2: flag B = 0
inline constexpr std::uint16_t kFlagStayOpen = TRM_FLAG_STAY_OPEN;         // type 2: flag C = 1

// Device to client.
enum InboundType : std::uint16_t {
    kInSessionEnd = TRM_IN_SESSION_END,
    kInIdentity = TRM_IN_IDENTITY,
    kInSessionEndAlt = TRM_IN_SESSION_END_ALT,
    kInPanel = TRM_IN_PANEL,
    kInPing = TRM_IN_PING,
    kInValues = TRM_IN_VALUES,
    kInPingReply = TRM_IN_PING_REPLY,
    kInNotice = TRM_IN_NOTICE,
    kInReload = TRM_IN_RELOAD,
    kInLayout = TRM_IN_LAYOUT,
    kInFiles = TRM_IN_FILES,
    kInSettings = TRM_IN_SETTINGS,
};

// Client to device.
enum OutboundType : std::uint16_t {
    kOutPanelRequest = TRM_OUT_PANEL_REQUEST,
    kOutGoodbye = TRM_OUT_GOODBYE,
    kOutValues = TRM_OUT_VALUES,
    kOutPing = TRM_OUT_PING,
    kOutPingReply = TRM_OUT_PING_REPLY,
    kOutAck = TRM_OUT_ACK,
    kOutDefaultLayout = TRM_OUT_DEFAULT_LAYOUT,
};

// Record tags of a panel description (the first two bytes of a record body).
enum RecordTag : std::uint16_t {
    kTagButton = TRM_TAG_BUTTON,
    kTagDateTime = TRM_TAG_DATE_TIME,
    kTagFiles = TRM_TAG_FILES,
    kTagCheckBox = TRM_TAG_CHECK_BOX,
    kTagImage = TRM_TAG_IMAGE,
    kTagList = TRM_TAG_LIST,
    kTagChart = TRM_TAG_CHART,
    kTagNumber = TRM_TAG_NUMBER,
    kTagBlob = TRM_TAG_BLOB,
    kTagPassword = TRM_TAG_PASSWORD,
    kTagSection = TRM_TAG_SECTION,
    kTagText = TRM_TAG_TEXT,
    kTagMessage = TRM_TAG_MESSAGE,
};

}  // namespace wire
