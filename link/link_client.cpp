#include "link/link_client.h"

#include "link/bytes.h"
#include "link/wire.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/program_lock.h"
#include "platform/thread.h"

#include <climits>
#include <cstring>
#include <memory>

namespace {

LinkClient g_link;

// The read-ahead of the current connection (used on the screen's thread only); each worker
// holds its own reference, so a worker of an earlier link keeps reading its own socket.
std::shared_ptr<SocketReader> g_reader;

struct WorkerStart {
    plat::WindowRef window;
    std::shared_ptr<SocketReader> reader;
};

void WorkerMain(void* argument) {
    std::unique_ptr<WorkerStart> start(static_cast<WorkerStart*>(argument));
    ReceiveSource source = BufferedReceiveSource(start->reader.get());
    RunReceiveWorker(source, start->window);
    start.reset();
    --g_link.workerRunning;
}

}  // namespace

LinkClient& Link() { return g_link; }

void BuildFrameHead(std::uint8_t head[20], std::uint16_t type, std::uint16_t flags) {
    std::memcpy(head, wire::kMarker, 8);
    bytes::Put32(head + 8, wire::kHeaderWord0);
    bytes::Put32(head + 12, wire::kHeaderWord1);
    bytes::Put16(head + 16, type);
    bytes::Put16(head + 18, flags);
}

std::int32_t LinkInit() {
    if (g_link.initialised) return kLinkOk;
    plat::ProgramLockHold hold;
    g_link.panelId = u"Tremolanth";
    g_link.panelIdPresent = true;
    g_link.serverText.clear();
    g_link.serverTextPresent = false;
    SetSettingsPanelName(g_link.panelId);
    g_link.initialised = 1;
    return kLinkOk;
}

std::int32_t LinkShutdown() {
    if (!g_link.initialised) return kLinkOk;
    if (g_link.socket != plat::kInvalidSocket) LinkClose();
    plat::ProgramLockHold hold;
    g_link.panelId.clear();
    g_link.panelIdPresent = false;
    g_link.serverText.clear();
    g_link.serverTextPresent = false;
    SetSettingsPanelName(u"");
    g_link.initialised = 0;
    return kLinkOk;
}

std::int32_t LinkStart(plat::SocketHandle socket, plat::WindowRef window, unsigned message) {
    if (!g_link.initialised) return kLinkNotInitialised;
    if (g_link.socket != plat::kInvalidSocket) return kLinkAlreadyOpen;
    g_link.socket = socket;
    g_reader = std::make_shared<SocketReader>(socket);
    LinkStartReceiver(window, message);
    return LinkRequestPanel();
}

std::int32_t LinkStartReceiver(plat::WindowRef window, unsigned message) {
    plat::SocketHandle socket = g_link.socket;
    if (socket == plat::kInvalidSocket) return kLinkNoSocket;
    if (!g_reader || g_reader->socket != socket) g_reader = std::make_shared<SocketReader>(socket);
    g_link.resultMessage = message;
    ++g_link.workerRunning;
    auto* start = new WorkerStart{window, g_reader};
    if (plat::StartDetachedThread(WorkerMain, start) != 0) {
        delete start;
        --g_link.workerRunning;
        return kLinkNoSocket;
    }
    return kLinkOk;
}

std::int32_t LinkSend(const void* buffer, std::size_t count) {
    plat::SocketHandle socket = g_link.socket;
    if (socket == plat::kInvalidSocket) return kLinkNoSocket;
    int length = count > INT_MAX ? INT_MAX : static_cast<int>(count);
    if (plat::SocketSend(socket, buffer, length) == plat::kSocketError) return kLinkSendFailed;
    return kLinkOk;
}

std::int32_t LinkSendControlFrame(std::uint16_t type) {
    std::uint8_t head[20];
    BuildFrameHead(head, type, wire::kFlagsOutbound);
    plat::ProgramLockHold hold;
    return LinkSend(head, sizeof head);
}

std::int32_t LinkRequestPanel() { return LinkSendControlFrame(wire::kOutPanelRequest); }

std::int32_t LinkRestart() {
    g_link.pingPending = 0;
    return LinkRequestPanel();
}

std::int32_t LinkDisconnect(std::uint8_t notifyDevice) {
    if (g_link.socket == plat::kInvalidSocket) return kLinkNoSocket;
    if (!notifyDevice) return LinkClose();
    std::int32_t rc = LinkSendControlFrame(wire::kOutGoodbye);
    // A failed goodbye leaves the link as it is: the caller closes the socket itself.
    if (rc != kLinkOk) return rc;
    return LinkClose();
}

std::int32_t LinkClose() {
    g_link.socket = plat::kInvalidSocket;
    g_reader.reset();
    TearDownControls();
    g_link.pingPending = 0;
    g_link.sessionFlagA = 0;
    g_link.sessionFlagB = 0;
    return kLinkOk;
}

std::int32_t LinkSendPing() {
    if (g_link.pingPending) {
        g_link.pingPending = 0;
        return kLinkPingUnanswered;
    }
    g_link.pingPending = 1;
    return LinkSendControlFrame(wire::kOutPing);
}

std::int32_t LinkSendDefaultLayout(std::uint32_t value) {
    std::uint8_t head[20], payload[4];
    BuildFrameHead(head, wire::kOutDefaultLayout, wire::kFlagsOutbound);
    bytes::Put32(payload, value);
    plat::ProgramLockHold hold;
    std::int32_t rc = LinkSend(head, sizeof head);
    if (rc == kLinkOk) rc = LinkSend(payload, sizeof payload);
    return rc;
}

std::int32_t LinkReceive(ReceiveSource& source, void* buffer, std::size_t count) {
    if (count == 0) return kLinkOk;
    auto* out = static_cast<std::uint8_t*>(buffer);
    std::size_t done = 0;
    for (;;) {
        std::size_t missing = count - done;
        int ask = missing > INT_MAX ? INT_MAX : static_cast<int>(missing);
        int got = source.receive(source.context, out + done, ask);
        if (got == plat::kSocketError || got < 0) return kLinkClosed;
        done += static_cast<std::size_t>(got);
        if (done >= count) return kLinkOk;
        // An empty read (the peer shut down) is not the end: only closing the socket is.
        source.pause(source.context);
    }
}

std::u16string LinkPanelId() {
    if (!g_link.initialised) return {};
    plat::ProgramLockHold hold;
    return g_link.panelId;
}

std::u16string LinkServerText() {
    if (!g_link.initialised) return {};
    plat::ProgramLockHold hold;
    return g_link.serverText;
}

bool LinkIsOpen() { return g_link.socket != plat::kInvalidSocket; }
