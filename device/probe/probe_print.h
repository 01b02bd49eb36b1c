// What panel-probe prints: JSON objects, one a line, of what the client's core decoded.
#pragma once

#include "model/control_record.h"

#include <cstdint>
#include <string>

namespace probe {

// {"result":r,"meaning":"..."} for a link result code.
std::string ResultJson(std::int32_t result);
// The identity texts and session flags the link holds.
std::string IdentityJson();
// Every field of one record: key, type, flags, background, label, marks, and the value fields
// of its type (texts as text, buffers as hex).
std::string ControlJson(const ControlRecord& record);

}  // namespace probe
