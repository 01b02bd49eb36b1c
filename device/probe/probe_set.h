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

// Stores the value as the editors do, without sending it (a password is sent at once, since
// it is attached only while it is sent): 0, -5 when the type takes no value, or 1 with *error
// set when the control is absent or the text does not fit.
std::int32_t StoreProbeSet(const ProbeSet& set, std::string* error);

// The password change as the change dialog sends it: the change, then (when the client
// accepted it) the log-out. The change's status: -5 for a new password the client refuses.
std::int32_t ApplyProbeChange(const ProbeChange& change);

}  // namespace probe
