#include "platform/message_box.h"

#include "platform/utf.h"

#include <atomic>
#include <cstdio>

namespace plat {

namespace {
std::atomic<MessageBoxHook> g_hook{nullptr};
std::atomic<WindowRef> g_anchor{nullptr};
}  // namespace

void SetBoxAnchor(WindowRef anchor) { g_anchor = anchor; }

WindowRef BoxAnchor() { return g_anchor.load(); }

MessageBoxHook SetMessageBoxHook(MessageBoxHook hook) { return g_hook.exchange(hook); }

int ShowMessageBox(WindowRef owner, std::u16string_view text, std::u16string_view caption,
                   unsigned flags) {
    std::u16string t(text), c(caption);
    if (MessageBoxHook hook = g_hook.load()) return hook(owner, t, c, flags);
    return NativeMessageBox(owner, t, c, flags);
}

std::u16string FaultBoxText(long line, const char* file, long value) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, "At %ld file %s, val=%ld", line, file, value);
    return Utf8ToUtf16(buffer);
}

void ShowFaultBox(fault::Site site, long value) {
    ShowMessageBox(nullptr, FaultBoxText(site.line, site.file, value), u"", kMbOk);
}

}  // namespace plat
