// The payload decoders of the receive worker. Each reads its payload from the worker's source
// and returns 0, 6 when the link closed (LinkReceive), or another code on failure.
#pragma once

#include "link/receive_source.h"

#include <cstdint>

std::int32_t DecodeIdentity(ReceiveSource& source, std::uint16_t headerFlags);  // type 2
std::int32_t DecodeSettings(ReceiveSource& source);                             // type 19
std::int32_t DecodePanel(ReceiveSource& source);                                // type 6
std::int32_t DecodeValueUpdates(ReceiveSource& source);                         // type 9
std::int32_t DecodeLayoutUpdates(ReceiveSource& source);                        // type 16
std::int32_t DecodeFiles(ReceiveSource& source);                                // type 17
