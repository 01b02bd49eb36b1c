// panel-probe: a headless client on the program's own link and store, for device makers.
#include "device/json_line.h"
#include "device/probe/probe_options.h"
#include "device/probe/probe_print.h"
#include "device/probe/probe_set.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/message_box.h"
#include "platform/post.h"
#include "platform/serial_port.h"
#include "platform/socket.h"
#include "platform/utf.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

plat::WindowRef const kProbeWindow = reinterpret_cast<plat::WindowRef>(0x9e0be);

std::mutex g_outputMutex;
std::mutex g_postMutex;
std::condition_variable g_posted;
std::deque<unsigned> g_posts;
// The receive worker ended without a result (the link closed or broke under it).
constexpr unsigned kWorkerEndedPost = 0;
// A device that does not answer gives up by then, as the program does.
constexpr int kConnectTimeoutMs = 8000;

void PrintLine(const std::string& line) {
    std::lock_guard<std::mutex> hold(g_outputMutex);
    std::fputs(line.c_str(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void Enqueue(unsigned message) {
    std::lock_guard<std::mutex> hold(g_postMutex);
    g_posts.push_back(message);
    g_posted.notify_one();
}

// Only results matter here (the screen's wait cursor has no place in a probe).
void OnPost(plat::WindowRef, unsigned message) {
    if (message == kResultMessage) Enqueue(message);
}

void OnWorkerEnd(WorkerOutcome outcome) {
    dev::JsonObject o;
    dev::JsonAdd(o, "event", "worker ended");
    dev::JsonAdd(o, "reason", outcome == WorkerOutcome::kClosed ? "link closed or broken"
                                                                     : "error");
    PrintLine(dev::JsonText(o));
    if (outcome == WorkerOutcome::kClosed) Enqueue(kWorkerEndedPost);
}

// Boxes (faults of the link, messages of the device) are printed, never shown.
int OnBox(plat::WindowRef, const std::u16string& text, const std::u16string& caption, unsigned flags) {
    dev::JsonObject o;
    dev::JsonAdd(o, "box", plat::Utf16ToUtf8(text));
    dev::JsonAdd(o, "caption", plat::Utf16ToUtf8(caption));
    dev::JsonAdd(o, "boxFlags", std::int64_t{flags});
    PrintLine(dev::JsonText(o));
    return plat::kIdOk;
}

bool WaitPost(Clock::time_point until, unsigned* message) {
    std::unique_lock<std::mutex> hold(g_postMutex);
    if (!g_posted.wait_until(hold, until, [] { return !g_posts.empty(); })) return false;
    *message = g_posts.front();
    g_posts.pop_front();
    return true;
}

void PrintEvent(const char* event, std::int64_t status) {
    dev::JsonObject o;
    dev::JsonAdd(o, "event", event);
    dev::JsonAdd(o, "status", status);
    PrintLine(dev::JsonText(o));
}

void PrintControls() {
    std::vector<std::string> lines;
    {
        ControlsHold hold;
        for (const ControlRecord& r : Controls().records) lines.push_back(probe::ControlJson(r));
    }
    for (const std::string& line : lines) PrintLine(line);
}

// Stores every --set, then sends them all in one value message, in the panel's order; then
// the password changes.
void ApplySets(const probe::ProbeOptions& options) {
    bool stored = false;
    for (const probe::ProbeSet& set : options.sets) {
        std::string error;
        const std::int32_t rc = probe::StoreProbeSet(set, &error);
        stored = stored || rc == 0;
        dev::JsonObject o;
        dev::JsonAdd(o, "set", std::int64_t{set.key});
        dev::JsonAdd(o, "value", set.value);
        dev::JsonAdd(o, "status", std::int64_t{rc});
        if (!error.empty()) dev::JsonAdd(o, "error", error);
        PrintLine(dev::JsonText(o));
    }
    if (stored) PrintEvent("values sent", LinkSendPendingValues());
    for (const probe::ProbeChange& change : options.changes) {
        const std::int32_t rc = probe::ApplyProbeChange(change);
        dev::JsonObject o;
        dev::JsonAdd(o, "change", std::int64_t{change.key});
        dev::JsonAdd(o, "old", change.oldPassword);
        dev::JsonAdd(o, "new", change.newPassword);
        dev::JsonAdd(o, "status", std::int64_t{rc});
        // What the change dialog tells the user; after a change the client logs out.
        dev::JsonAdd(o, "answer", rc == kWrongType ? "New password not valid." : "logged out");
        PrintLine(dev::JsonText(o));
    }
}

// Follows the link as the panel screen does, until it ends or the probe has seen enough.
void Follow(const probe::ProbeOptions& options) {
    const Clock::time_point start = Clock::now();
    const Clock::time_point deadline =
        options.timeoutSeconds > 0
            ? start + std::chrono::milliseconds(static_cast<long long>(options.timeoutSeconds * 1000))
            : Clock::time_point::max();
    Clock::time_point nextPing = Clock::time_point::max();
    bool setsSent = false;
    for (;;) {
        const Clock::time_point until = std::min(deadline, nextPing);
        unsigned post = 0;
        if (!WaitPost(until, &post)) {
            if (Clock::now() >= deadline) return PrintEvent("time limit", 0);
            // Keep-alive, as the panel screen: a failed or unanswered ping means the link is lost.
            if (std::int32_t rc = LinkSendPing()) return PrintEvent("link lost", rc);
            nextPing = Clock::now() + std::chrono::seconds(ReadDeviceSetting(0, kSettingPingSeconds, 3));
            continue;
        }
        if (post == kWorkerEndedPost) return;
        const std::int32_t result = Link().lastResult;
        PrintLine(probe::ResultJson(result));
        if (result == 1) PrintLine(probe::IdentityJson());
        if (result == 1 || result == 2 || result == 11) PrintLine(probe::SettingsJson());
        if (result == 2 || result == 7 || result == 9 || result == 10) PrintControls();
        if (result == 8) LinkRestart();
        if (options.watch && (result == 1 || result == 11)) {
            const std::int32_t seconds = ReadDeviceSetting(0, kSettingPingSeconds, 3);
            nextPing = (Link().sessionFlagA && seconds > 0) ? Clock::now() + std::chrono::seconds(seconds)
                                                             : Clock::time_point::max();
        }
        if (result == -1 || result == 3) return;
        const bool valuesSentBefore = setsSent;
        const bool anythingToSend = !options.sets.empty() || !options.changes.empty();
        if (result == 2 && !setsSent && anythingToSend) {
            ApplySets(options);
            setsSent = true;
        }
        if (!options.watch) {
            if (result == 2 && !anythingToSend) return;
            if (result == 7 && valuesSentBefore) return;
        }
        const std::int32_t rc = LinkStartReceiver(kProbeWindow, kResultMessage);
        if (rc != 0) return PrintEvent("receiver not started", rc);
    }
}

}  // namespace

int main(int argc, char** argv) {
    probe::ProbeOptions options;
    std::string error;
    if (!probe::ParseProbeOptions(argc, argv, &options, &error)) {
        std::fprintf(stderr, "panel-probe: %s\n%s", error.c_str(), probe::kProbeUsage);
        return 2;
    }
    plat::SocketsStartup();
    plat::SetPostHook(OnPost);
    plat::SetMessageBoxHook(OnBox);
    SetWorkerEndObserver(OnWorkerEnd);
    LinkInit();
    const NetworkDevice& device = options.device;
    const bool serial = !device.serialPort.empty();
    const plat::SocketHandle socket =
        serial ? plat::SerialOpen(device.serialPort, device.baud)
               : plat::SocketConnectTcp(device.host.c_str(), device.port, kConnectTimeoutMs);
    if (socket == plat::kInvalidSocket) {
        const std::string where = serial ? device.serialPort + "@" + std::to_string(device.baud)
                                         : device.host + ":" + std::to_string(device.port);
        std::fprintf(stderr, "panel-probe: cannot connect to %s\n", where.c_str());
        return 1;
    }
    const std::int32_t started = LinkStart(socket, kProbeWindow, kResultMessage);
    if (started != 0) {
        PrintEvent("link not started", started);
    } else {
        Follow(options);
    }
    // Within a bounded time, whatever the device does: a device that stopped sending in the
    // middle of a file holds the link's lock, and then the goodbye is skipped.
    if (LinkIsOpen()) LinkStop();
    plat::SocketClose(socket);
    LinkShutdown();
    plat::SocketsCleanup();
    return started == 0 ? 0 : 1;
}
