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
// The panel's stored device settings, {"settings":[{"control","kind","value"}...]}, and the
// ping period in use ("pingSeconds", 0 when the device allows no pings or set none).
std::string SettingsJson();
// Every field of one record: key, type, flags, background, label, marks, and the value fields
// of its type (texts as text, buffers as hex; a Text's or
// Message's buffer also whole, as "textHex", bytes past its first zero included).
std::string ControlJson(const ControlRecord& record);

}  // namespace probe
