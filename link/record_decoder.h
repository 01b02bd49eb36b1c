// Decoding one panel record body into a record. The tag (first two bytes) picks the type;
// an unknown tag gives an "Unknown" control. A missing required attribute raises the fault
// box and decoding goes on; a body that contradicts itself (fields or attributes beyond its
// end, sizes over the ceilings) is malformed.
#pragma once

#include "link/status_codes.h"
#include "model/control_record.h"

#include <cstddef>
#include <cstdint>

DecodeStatus DecodeRecord(const std::uint8_t* body, std::size_t size, ControlRecord& out);
