// The device search: Bluetooth devices in range, then the network and serial devices of
// TREMOLANTH_DEVICES, then the machine's other serial ports, into the device table (16 at most
// in all).
#pragma once

#include "app/bluetooth.h"
#include "app/device_table.h"
#include "platform/serial_port.h"

#include <cstdint>

inline constexpr int kInquiryLength = 4;

// 0 on success; the Bluetooth inquiry's error when it failed and neither a listed device nor a
// serial port stands in for it. A search that fails leaves the table as it was.
std::int32_t InquireDevices(DeviceTable& table, int length);

// Where the search looks: the radio and the machine's serial ports.
using InquiryFunction = std::int32_t (*)(int length, int maxDevices,
                                         std::vector<FoundDevice>* found);
using SerialPortLister = std::vector<plat::SerialPortName> (*)();
struct DeviceSources {
    InquiryFunction inquiry = BluetoothInquiry;
    SerialPortLister serialPorts = plat::ListSerialPorts;
};
// Tests: the sources of the following searches (the defaults restore the machine's own).
void SetDeviceSourcesForTest(const DeviceSources& sources);
