// Bluetooth through Winsock: the inquiry of devices in range and the RFCOMM connection to
// a device's Serial Port service.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FoundDevice {
    std::wstring name;
    std::uint64_t address = 0;
};

// One inquiry of length x 1.28 s, at most maxDevices answers. 0 on success (also when fewer
// devices answered), -1 when no result buffer could be had, else the Winsock error's low
// 16 bits, sign-extended.
std::int32_t BluetoothInquiry(int length, int maxDevices, std::vector<FoundDevice>* found);

// A native socket connected within the time, or -1.
std::intptr_t BluetoothConnect(std::uint64_t address, int timeoutMilliseconds);
