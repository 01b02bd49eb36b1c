#include "link/network_devices.h"

#include "platform/serial_port.h"
#include "platform/utf.h"

namespace {

constexpr std::size_t kMaxNameLength = 255;
constexpr std::uint32_t kMaxBaud = 4000000;

std::u16string_view Trim(std::u16string_view text) {
    auto blank = [](char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

bool IsHostCharacter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'.' || c == u'-' || c == u'_';
}

// A decimal number of at most `digits` digits from 1 to `maximum`, or 0.
std::uint32_t Number(std::u16string_view text, std::size_t digits, std::uint32_t maximum) {
    if (text.empty() || text.size() > digits) return 0;
    std::uint32_t number = 0;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') return 0;
        number = number * 10 + static_cast<std::uint32_t>(c - u'0');
    }
    return number <= maximum ? number : 0;
}

bool IsComPort(std::u16string_view port) {
    if (port.size() < 4 || (port[0] | 0x20) != u'c' || (port[1] | 0x20) != u'o' ||
        (port[2] | 0x20) != u'm') {
        return false;
    }
    return Number(port.substr(3), 3, 255) != 0;
}

// The reason an entry is unusable, or empty when it parsed into device.
std::u16string ParseEntry(std::u16string_view entry, NetworkDevice* device) {
    std::size_t equals = entry.find(u'=');
    if (equals == std::u16string_view::npos) return u"it has no '='";
    std::u16string_view name = Trim(entry.substr(0, equals));
    if (name.empty()) return u"the name before '=' is empty";
    std::u16string problem = ParseDeviceAddress(Trim(entry.substr(equals + 1)), device);
    if (problem.empty()) device->name = std::u16string(name.substr(0, kMaxNameLength));
    return problem;
}

}  // namespace

std::u16string ParseDeviceAddress(std::u16string_view address, NetworkDevice* device) {
    std::size_t at = address.rfind(u'@');
    std::u16string_view port = address.substr(0, at);
    if (IsComPort(port) || (!port.empty() && port[0] == u'/')) {
        std::uint32_t baud = plat::kDefaultSerialBaud;
        if (at != std::u16string_view::npos &&
            (baud = Number(address.substr(at + 1), 7, kMaxBaud)) == 0) {
            return u"the speed after '@' is not a number from 1 to 4000000";
        }
        for (char16_t c : port) {
            if (c < 0x20) return u"the port's name holds a control character";
        }
        device->serialPort = plat::Utf16ToUtf8(port);
        device->baud = baud;
        return {};
    }
    std::size_t colon = address.rfind(u':');
    if (colon == std::u16string_view::npos) return u"the address has no ':port'";
    std::u16string_view host = address.substr(0, colon);
    if (host.empty()) return u"the host is empty";
    for (char16_t c : host) {
        if (!IsHostCharacter(c)) return u"the host may hold only letters, digits, '.', '-', '_'";
    }
    const std::uint32_t number = Number(address.substr(colon + 1), 5, 65535);
    if (number == 0) return u"the port is not a number from 1 to 65535";
    device->host.assign(host.begin(), host.end());
    device->port = static_cast<std::uint16_t>(number);
    return {};
}

NetworkDeviceList ParseNetworkDevices(std::u16string_view text) {
    NetworkDeviceList list;
    for (;;) {
        std::size_t end = text.find(u';');
        std::u16string_view entry = Trim(text.substr(0, end));
        if (!entry.empty()) {
            NetworkDevice device;
            std::u16string problem = ParseEntry(entry, &device);
            if (problem.empty()) {
                list.devices.push_back(std::move(device));
            } else {
                list.problems.push_back(u"Skipped \"" + std::u16string(entry) + u"\": " +
                                        problem + u".");
            }
        }
        if (end == std::u16string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return list;
}
