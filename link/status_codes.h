// The status codes of the link, one named set per domain, so that a code of one domain is never
// read as one of another: the link's operations, the payload decoders, and (apart from both)
// the system's own error numbers, which travel beside a status, never in it.
#pragma once

#include <cstdint>

// Link operations (start, send, stop, the receive primitive).
inline constexpr std::int32_t kLinkOk = 0;
inline constexpr std::int32_t kLinkAlreadyOpen = -1;
inline constexpr std::int32_t kLinkNoSocket = -2;
inline constexpr std::int32_t kLinkSendFailed = -3;  // the peer failed, stopped reading or left
inline constexpr std::int32_t kLinkNotInitialised = -6;
inline constexpr std::int32_t kLinkThreadFailed = -7;  // the receive thread could not start
inline constexpr std::int32_t kLinkPingUnanswered = -8;
inline constexpr std::int32_t kLinkClosed = 6;  // the link closed during a read

// What a payload decoder reports to the receive worker. The values are the ones the fault box
// shows, except for a failed file write, whose box shows the system's error instead.
enum class DecodeStatus : std::int32_t {
    kOk = 0,
    kClosed = 6,           // the link closed in the middle of the payload
    kMalformed = -1,       // more than the client accepts, or a record that contradicts itself
    kFileNotCreated = -10, // a received file could not be created
    kFileNotWritten = -11, // writing a received file failed
};
