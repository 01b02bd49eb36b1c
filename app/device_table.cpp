#include "app/device_table.h"

#include "app/bluetooth.h"
#include "platform/serial_port.h"

DeviceTable& Devices() {
    static DeviceTable table;
    return table;
}

void SetDeviceName(DeviceEntry& entry, const std::wstring& name) {
    std::size_t n = name.size() < kDeviceNameSize - 1 ? name.size() : kDeviceNameSize - 1;
    name.copy(entry.name, n);
    entry.name[n] = 0;
}

plat::SocketHandle ConnectToDevice(DeviceTable& table, HWND, int index) {
    if (table.socket != plat::kInvalidSocket) return plat::kInvalidSocket;
    if (index < 0 || index >= table.count) return plat::kInvalidSocket;
    const DeviceEntry& entry = table.entries[index];
    switch (entry.kind) {
    case DeviceKind::kNetwork:
        table.socket = plat::SocketConnectTcp(entry.host, entry.port, kConnectTimeoutMs);
        break;
    case DeviceKind::kSerial:
        table.socket = plat::SerialOpen(entry.serialPort, entry.baud);
        break;
    case DeviceKind::kBluetooth: {
        std::intptr_t native = BluetoothConnect(entry.address, kConnectTimeoutMs);
        table.socket = native == -1 ? plat::kInvalidSocket : plat::SocketAdopt(native);
        break;
    }
    }
    return table.socket;
}

void CloseDeviceSocket(DeviceTable& table) {
    plat::SocketClose(table.socket);
    table.socket = plat::kInvalidSocket;
}
