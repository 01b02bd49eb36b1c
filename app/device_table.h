// The devices found by the last search, and the one device socket.
#pragma once

#include "platform/socket.h"

#include <windows.h>

#include <cstdint>
#include <string>

inline constexpr int kMaxDevices = 16;
inline constexpr int kDeviceNameSize = 256;
// A device that does not answer (or a name the resolver cannot find) gives up by then.
inline constexpr int kConnectTimeoutMs = 8000;

// How a device is reached: found in range over Bluetooth, listed in TREMOLANTH_DEVICES with a
// network address, or on a serial port (listed there, or one of the machine's COM ports).
enum class DeviceKind { kBluetooth, kNetwork, kSerial };

struct DeviceEntry {
    wchar_t name[kDeviceNameSize] = {};
    DeviceKind kind = DeviceKind::kBluetooth;
    std::uint64_t address = 0;  // Bluetooth address
    char host[256] = {};        // network device
    std::uint16_t port = 0;
    char serialPort[256] = {};  // serial device: "COM5" (UTF-8), at baud bits per second
    std::uint32_t baud = 0;
};

struct DeviceTable {
    DeviceEntry entries[kMaxDevices];
    std::int32_t count = 0;
    plat::SocketHandle socket = plat::kInvalidSocket;
};

DeviceTable& Devices();

// Copies the name, cut to the field's size.
void SetDeviceName(DeviceEntry& entry, const std::wstring& name);

// Connects to the device; the socket, or kInvalidSocket when it failed or one is open.
plat::SocketHandle ConnectToDevice(DeviceTable& table, HWND owner, int index);
void CloseDeviceSocket(DeviceTable& table);
