#include "app/device_inquiry.h"

#include "app/app_state.h"
#include "app/wait_cursor.h"
#include "link/network_devices.h"
#include "platform/utf.h"
#include "shell/product_boxes.h"

#include <algorithm>

namespace {

DeviceSources g_sources;

std::wstring Wide(const std::u16string& text) { return std::wstring(text.begin(), text.end()); }

NetworkDeviceList ReadNetworkDevices() {
    wchar_t value[4096];
    DWORD n = GetEnvironmentVariableW(L"TREMOLANTH_DEVICES", value, 4096);
    if (n == 0) return {};
    if (n >= 4096) {
        NetworkDeviceList list;
        list.problems.push_back(u"The list is longer than 4095 characters.");
        return list;
    }
    return ParseNetworkDevices(
        std::u16string_view(reinterpret_cast<const char16_t*>(value), n));
}

void ReportProblems(const NetworkDeviceList& list, const std::vector<std::u16string>& ports) {
    if (list.problems.empty() && ports.empty()) return;
    std::wstring text;
    if (!list.problems.empty()) text = L"TREMOLANTH_DEVICES:";
    for (const auto& problem : list.problems) text += L"\n" + Wide(problem);
    if (!ports.empty()) text += std::wstring(text.empty() ? L"" : L"\n") + L"Serial ports:";
    for (const auto& port : ports) text += L"\n" + Wide(port) + L": the list holds 16 devices.";
    HWND owner = IsWindow(Shell().deviceListWindow) ? Shell().deviceListWindow : Shell().mainWindow;
    ShowProductBox(owner, text, MB_ICONEXCLAMATION);
}

bool SamePort(const std::u16string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto lower = [](unsigned c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
        if (lower(a[i]) != lower(static_cast<unsigned char>(b[i]))) return false;
    }
    return true;
}

void CopyText(const std::string& text, char* field, std::size_t size) {
    const std::size_t n = text.copy(field, size - 1);
    field[n] = 0;
}

}  // namespace

void SetDeviceSourcesForTest(const DeviceSources& sources) { g_sources = sources; }

std::int32_t InquireDevices(DeviceTable& table, int length) {
    HCURSOR saved;
    BeginWaitCursor(&saved);
    std::vector<FoundDevice> found;
    std::int32_t rc = g_sources.inquiry(length, kMaxDevices, &found);
    // Filled aside: a search that fails leaves the table, its entries and its count as they
    // were, so the list on the screen still connects.
    DeviceTable fresh;
    int count = 0;
    for (const FoundDevice& device : found) {
        if (count == kMaxDevices) break;
        DeviceEntry& entry = fresh.entries[count++];
        SetDeviceName(entry, device.name);
        entry.address = device.address;
    }
    NetworkDeviceList listed = ReadNetworkDevices();
    for (const NetworkDevice& device : listed.devices) {
        if (count == kMaxDevices) {
            listed.problems.push_back(device.name + u": the list holds 16 devices.");
            continue;
        }
        DeviceEntry& entry = fresh.entries[count++];
        SetDeviceName(entry, Wide(device.name));
        if (device.serialPort.empty()) {
            entry.kind = DeviceKind::kNetwork;
            CopyText(device.host, entry.host, sizeof entry.host);
            entry.port = device.port;
        } else {
            entry.kind = DeviceKind::kSerial;
            CopyText(device.serialPort, entry.serialPort, sizeof entry.serialPort);
            entry.baud = device.baud;
        }
    }
    // The machine's own ports, but for those already listed under a name.
    std::vector<std::u16string> unlisted;
    bool portsStandIn = false;
    for (const plat::SerialPortName& port : g_sources.serialPorts()) {
        const bool named = std::any_of(listed.devices.begin(), listed.devices.end(),
                                       [&](const NetworkDevice& d) {
                                           return SamePort(port.port, d.serialPort);
                                       });
        if (named) continue;
        if (count == kMaxDevices) {
            unlisted.push_back(port.shownName);
            continue;
        }
        DeviceEntry& entry = fresh.entries[count++];
        SetDeviceName(entry, Wide(port.shownName));
        entry.kind = DeviceKind::kSerial;
        CopyText(plat::Utf16ToUtf8(port.port), entry.serialPort, sizeof entry.serialPort);
        entry.baud = plat::kDefaultSerialBaud;
        portsStandIn = true;
    }
    ReportProblems(listed, unlisted);
    // Listed devices and serial ports stand in for a search that failed.
    if (!listed.devices.empty() || portsStandIn) rc = 0;
    if ((rc & 0xFFFF) == 0) {
        std::copy(fresh.entries, fresh.entries + count, table.entries);
        table.count = count;
    }
    EndWaitCursor(saved);
    return rc;
}
