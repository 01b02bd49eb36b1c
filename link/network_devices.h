// Devices reached over TCP or a serial port instead of Bluetooth, listed in the environment
// variable TREMOLANTH_DEVICES as "Name=host:port;Uno=COM5@57600". They join the device table
// after the devices found in range. panel-probe takes the same addresses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct NetworkDevice {
    std::u16string name;  // at most 255 characters, as a device name from the inquiry
    std::string host;     // a dotted address or a host name
    std::uint16_t port = 0;
    // A serial port instead: "COM5", or a tty's path starting with '/' (UTF-8), at baud bits
    // per second. Empty for a device on the network.
    std::string serialPort;
    std::uint32_t baud = 0;
};

struct NetworkDeviceList {
    std::vector<NetworkDevice> devices;
    std::vector<std::u16string> problems;  // one line per entry that was skipped
};

inline constexpr const char16_t* kNetworkDevicesVariable = u"TREMOLANTH_DEVICES";

// Parses the list; a malformed entry is skipped and described in problems. Empty entries
// (as after a trailing ';') are ignored.
NetworkDeviceList ParseNetworkDevices(std::u16string_view text);

// One address: "host:port", or a serial port "COM5" or "/dev/ttyACM0" with an optional
// "@speed" (115200 when none is given). Fills the address fields of device; the reason it is
// unusable, or empty.
std::u16string ParseDeviceAddress(std::u16string_view address, NetworkDevice* device);
