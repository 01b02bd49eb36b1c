#include "app/device_inquiry.h"

#include "app/app_state.h"
#include "app/wait_cursor.h"
#include "link/network_devices.h"
#include "shell/product_boxes.h"

#include <algorithm>

namespace {

InquiryFunction g_inquiry = BluetoothInquiry;

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

void ReportProblems(const NetworkDeviceList& list) {
    if (list.problems.empty()) return;
    std::wstring text = L"TREMOLANTH_DEVICES:";
    for (const auto& problem : list.problems) text += L"\n" + Wide(problem);
    HWND owner = IsWindow(Shell().deviceListWindow) ? Shell().deviceListWindow : Shell().mainWindow;
    ShowProductBox(owner, text, MB_ICONEXCLAMATION);
}

}  // namespace

InquiryFunction SetBluetoothInquiryForTest(InquiryFunction inquiry) {
    InquiryFunction previous = g_inquiry;
    g_inquiry = inquiry ? inquiry : BluetoothInquiry;
    return previous;
}

std::int32_t InquireDevices(DeviceTable& table, int length) {
    HCURSOR saved;
    BeginWaitCursor(&saved);
    std::vector<FoundDevice> found;
    std::int32_t rc = g_inquiry(length, kMaxDevices, &found);
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
    NetworkDeviceList network = ReadNetworkDevices();
    for (const NetworkDevice& device : network.devices) {
        if (count == kMaxDevices) {
            network.problems.push_back(device.name + u": the list holds 16 devices.");
            continue;
        }
        DeviceEntry& entry = fresh.entries[count++];
        SetDeviceName(entry, Wide(device.name));
        entry.overTcp = true;
        std::size_t n = device.host.copy(entry.host, sizeof entry.host - 1);
        entry.host[n] = 0;
        entry.port = device.port;
    }
    ReportProblems(network);
    // Network devices stand in for a search that failed.
    if (!network.devices.empty()) rc = 0;
    if ((rc & 0xFFFF) == 0) {
        std::copy(fresh.entries, fresh.entries + count, table.entries);
        table.count = count;
    }
    EndWaitCursor(saved);
    return rc;
}
