#include "platform/safe_name.h"

#include <cstdint>
#include <cstdio>

namespace plat {

std::string SafeFileStem(std::u16string_view name) {
    constexpr size_t kMaxStem = 160;  // well under the 255 bytes a file name may have
    std::string out = "p-";           // never empty, never starts with '.' or '-'-only
    for (char16_t c : name) {
        bool plain = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
                     (c >= u'0' && c <= u'9') || c == u'-' || c == u'_';
        if (plain) {
            out += static_cast<char>(c);
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "%%%04X", static_cast<unsigned>(c));
            out += escaped;
        }
    }
    if (out.size() > kMaxStem) {
        std::uint64_t hash = 1469598103934665603ULL;  // FNV-1a over the UTF-16 units
        for (char16_t c : name) {
            hash ^= c;
            hash *= 1099511628211ULL;
        }
        char tail[24];
        std::snprintf(tail, sizeof tail, "~%016llX", static_cast<unsigned long long>(hash));
        out = out.substr(0, kMaxStem - 17) + tail;
    }
    return out;
}

}  // namespace plat
