// The payload decoders of the receive worker. Each reads its payload from the worker's source.
#pragma once

#include "link/receive_source.h"
#include "link/status_codes.h"

#include <cstdint>

DecodeStatus DecodeIdentity(ReceiveSource& source, std::uint16_t headerFlags);  // type 2
DecodeStatus DecodeSettings(ReceiveSource& source);                             // type 19
DecodeStatus DecodePanel(ReceiveSource& source);                                // type 6
DecodeStatus DecodeValueUpdates(ReceiveSource& source);                         // type 9
DecodeStatus DecodeLayoutUpdates(ReceiveSource& source);                        // type 16
// Type 17. When writing a file fails (kFileNotWritten), *systemError is the system's error.
DecodeStatus DecodeFiles(ReceiveSource& source, int* systemError = nullptr);
