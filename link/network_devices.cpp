#include "link/network_devices.h"

namespace {

constexpr std::size_t kMaxNameLength = 255;

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

// The reason an entry is unusable, or empty when it parsed into device.
std::u16string ParseEntry(std::u16string_view entry, NetworkDevice* device) {
    std::size_t equals = entry.find(u'=');
    if (equals == std::u16string_view::npos) return u"it has no '='";
    std::u16string_view name = Trim(entry.substr(0, equals));
    std::u16string_view address = Trim(entry.substr(equals + 1));
    if (name.empty()) return u"the name before '=' is empty";
    std::size_t colon = address.rfind(u':');
    if (colon == std::u16string_view::npos) return u"the address has no ':port'";
    std::u16string_view host = address.substr(0, colon);
    std::u16string_view port = address.substr(colon + 1);
    if (host.empty()) return u"the host is empty";
    for (char16_t c : host) {
        if (!IsHostCharacter(c)) return u"the host may hold only letters, digits, '.', '-', '_'";
    }
    if (port.empty() || port.size() > 5) return u"the port is not a number from 1 to 65535";
    std::uint32_t number = 0;
    for (char16_t c : port) {
        if (c < u'0' || c > u'9') return u"the port is not a number from 1 to 65535";
        number = number * 10 + static_cast<std::uint32_t>(c - u'0');
    }
    if (number == 0 || number > 65535) return u"the port is not a number from 1 to 65535";
    device->name = std::u16string(name.substr(0, kMaxNameLength));
    device->host.assign(host.begin(), host.end());
    device->port = static_cast<std::uint16_t>(number);
    return {};
}

}  // namespace

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
