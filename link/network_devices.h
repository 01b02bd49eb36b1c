// Devices reached over TCP instead of Bluetooth, listed in the environment variable
// TREMOLANTH_DEVICES as "Name=host:port;Name2=host:port". They join the device table after
// the devices found in range.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct NetworkDevice {
    std::u16string name;  // at most 255 characters, as a device name from the inquiry
    std::string host;     // a dotted address or a host name
    std::uint16_t port = 0;
};

struct NetworkDeviceList {
    std::vector<NetworkDevice> devices;
    std::vector<std::u16string> problems;  // one line per entry that was skipped
};

inline constexpr const char16_t* kNetworkDevicesVariable = u"TREMOLANTH_DEVICES";

// Parses the list; a malformed entry is skipped and described in problems. Empty entries
// (as after a trailing ';') are ignored.
NetworkDeviceList ParseNetworkDevices(std::u16string_view text);
