#include "link/received_name.h"

#include <algorithm>

namespace {

char16_t Upper(char16_t c) { return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c; }

bool IsReservedDevice(std::u16string_view name) {
    std::u16string base;
    for (char16_t c : name.substr(0, name.find(u'.'))) base += Upper(c);
    while (!base.empty() && base.back() == u' ') base.pop_back();
    static const char16_t* fixed[] = {u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    for (const char16_t* f : fixed) {
        if (base == f) return true;
    }
    return base.size() == 4 && (base.starts_with(u"COM") || base.starts_with(u"LPT")) &&
           base[3] >= u'0' && base[3] <= u'9';
}

}  // namespace

std::u16string ReceivedFileName(std::u16string_view sentPath) {
    std::size_t cut = sentPath.find_last_of(u"/\\");
    std::u16string_view name = cut == std::u16string_view::npos ? sentPath : sentPath.substr(cut + 1);
    if (name.empty() || name == u"." || name == u".." || name.size() > 255) return {};
    for (char16_t c : name) {
        if (c < 0x20 || std::u16string_view(u"<>:\"/\\|?*").find(c) != std::u16string_view::npos) {
            return {};
        }
    }
    if (name.back() == u'.' || name.back() == u' ' || IsReservedDevice(name)) return {};
    return std::u16string(name);
}
