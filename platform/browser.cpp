#include "platform/browser.h"

#include <atomic>

namespace plat {

namespace {

std::atomic<BrowserHook> g_hook{nullptr};

void PercentEncode(std::u16string& out, unsigned byte) {
    const char16_t* digits = u"0123456789ABCDEF";
    out += u'%';
    out += digits[byte >> 4];
    out += digits[byte & 15];
}

// The address as one argument: nothing in it can end a quoted argument or start another.
std::u16string OneArgument(std::u16string_view address) {
    std::u16string out;
    for (char16_t c : address) {
        if (c <= u' ' || c == u'"' || c == 0x7F) {
            PercentEncode(out, c);
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace

BrowserHook SetBrowserHook(BrowserHook hook) { return g_hook.exchange(hook); }

bool LaunchBrowser(const std::u16string& address) {
    if (BrowserHook hook = g_hook.load()) return hook(address);
    return NativeLaunchBrowser(address);
}

std::optional<BrowserCommand> PlanBrowserCommand(std::u16string_view registered,
                                                 std::u16string_view address) {
    std::size_t start = registered.find_first_not_of(u" \t");
    if (start == std::u16string_view::npos) return std::nullopt;
    registered.remove_prefix(start);
    BrowserCommand command;
    std::u16string_view rest;
    if (registered[0] == u'"') {
        std::size_t close = registered.find(u'"', 1);
        if (close == std::u16string_view::npos) return std::nullopt;
        command.program = registered.substr(1, close - 1);
        rest = registered.substr(close + 1);
    } else {
        std::size_t end = registered.find(u' ');
        command.program = registered.substr(0, end);
        if (end != std::u16string_view::npos) rest = registered.substr(end);
    }
    if (command.program.empty()) return std::nullopt;
    const std::u16string argument = OneArgument(address);
    std::u16string arguments;
    bool placed = false;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const char16_t next = i + 1 < rest.size() ? rest[i + 1] : u'\0';
        if (rest[i] == u'%' && (next == u'1' || next == u'L' || next == u'l')) {
            arguments += argument;
            placed = true;
            ++i;
        } else {
            arguments += rest[i];
        }
    }
    if (!placed) arguments += u" \"" + argument + u"\"";
    command.commandLine = u"\"" + command.program + u"\"" + arguments;
    return command;
}

std::u16string FileAddress(const std::u16string& path) {
    std::u16string address = u"file://";
    // A drive path needs the third slash; a rooted POSIX path brings its own.
    if (path.empty() || (path[0] != u'/' && path[0] != u'\\')) address += u'/';
    auto escape = [&address](unsigned byte) { PercentEncode(address, byte); };
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
