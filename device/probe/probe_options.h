// The command line of panel-probe.
#pragma once

#include "link/network_devices.h"

#include <cstdint>
#include <string>
#include <vector>

namespace probe {

struct ProbeSet {
    std::uint32_t key = 0;
    std::string value;  // UTF-8, read by the control's type (probe_set.h)
};

// --change KEY OLD NEW: a password change, as the change dialog sends it.
struct ProbeChange {
    std::uint32_t key = 0;
    std::string oldPassword;
    std::string newPassword;
};

struct ProbeOptions {
    NetworkDevice device;  // host and port, or a serial port and its speed
    bool deviceGiven = false;
    std::vector<ProbeSet> sets;
    std::vector<ProbeChange> changes;
    bool watch = false;
    double timeoutSeconds = 10;  // 0: no limit (the default with --watch)
};

extern const char kProbeUsage[];

// False with *error set on a command line that cannot be run.
bool ParseProbeOptions(int argc, const char* const* argv, ProbeOptions* out, std::string* error);

}  // namespace probe
