#include "platform/browser.h"

#include <atomic>

namespace plat {

namespace {
std::atomic<BrowserHook> g_hook{nullptr};
}

BrowserHook SetBrowserHook(BrowserHook hook) { return g_hook.exchange(hook); }

void LaunchBrowser(const std::u16string& argument) {
    if (BrowserHook hook = g_hook.load()) {
        hook(argument);
        return;
    }
    NativeLaunchBrowser(argument);
}

std::u16string FileAddress(const std::u16string& path) {
    std::u16string address = u"file://";
    // A drive path needs the third slash; a rooted POSIX path brings its own.
    if (path.empty() || (path[0] != u'/' && path[0] != u'\\')) address += u'/';
    auto escape = [&address](unsigned byte) {
        const char16_t* digits = u"0123456789ABCDEF";
        address += u'%';
        address += digits[byte >> 4];
        address += digits[byte & 15];
    };
    for (std::size_t i = 0; i < path.size(); ++i) {
        char32_t c = path[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < path.size() && path[i + 1] >= 0xDC00 &&
            path[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (path[++i] - 0xDC00);
        }
        if (c == u'\\') {
            address += u'/';
        } else if (c == u' ' || c == u'%' || c == u'#' || c == u'?') {
            escape(static_cast<unsigned>(c));
        } else if (c < 0x80) {
            address += static_cast<char16_t>(c);
        } else if (c < 0x800) {
            escape(0xC0 | static_cast<unsigned>(c >> 6));
            escape(0x80 | static_cast<unsigned>(c & 0x3F));
        } else if (c < 0x10000) {
            escape(0xE0 | static_cast<unsigned>(c >> 12));
            escape(0x80 | static_cast<unsigned>((c >> 6) & 0x3F));
            escape(0x80 | static_cast<unsigned>(c & 0x3F));
        } else {
            escape(0xF0 | static_cast<unsigned>(c >> 18));
            escape(0x80 | static_cast<unsigned>((c >> 12) & 0x3F));
            escape(0x80 | static_cast<unsigned>((c >> 6) & 0x3F));
            escape(0x80 | static_cast<unsigned>(c & 0x3F));
        }
    }
    return address;
}

}  // namespace plat
