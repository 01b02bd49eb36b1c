// --set: a value typed on the command line, stored into a control as the client's editors
// store it, then sent.
#pragma once

#include "device/probe/probe_options.h"
#include "model/control_record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace probe {

// The bytes SetControlValue takes for VALUE, by the control's type and record (see
// kProbeUsage). False with *error set when the text does not fit the type.
bool ProbeValueBytes(const ControlRecord& record, const std::string& value,
                     std::vector<std::uint8_t>* out, std::string* error);

// Stores the value and sends the pending values: the send's status, -5 when the type takes no
// value, or 1 with *error set when the control is absent or the text does not fit.
std::int32_t ApplyProbeSet(const ProbeSet& set, std::string* error);

}  // namespace probe
