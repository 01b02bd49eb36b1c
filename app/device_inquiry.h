// The device search: Bluetooth devices in range, then the network devices of
// TREMOLANTH_DEVICES, into the device table (16 at most in all).
#pragma once

#include "app/bluetooth.h"
#include "app/device_table.h"

#include <cstdint>

inline constexpr int kInquiryLength = 4;

// 0 on success; the Bluetooth inquiry's error when it failed and no network device is
// listed (a failed inquiry with network devices still lists those).
std::int32_t InquireDevices(DeviceTable& table, int length);

// Tests: replaces the Bluetooth inquiry; nullptr restores it.
using InquiryFunction = std::int32_t (*)(int length, int maxDevices,
                                         std::vector<FoundDevice>* found);
InquiryFunction SetBluetoothInquiryForTest(InquiryFunction inquiry);
