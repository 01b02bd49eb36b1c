#include "link/link_client.h"

#include "link/bytes.h"
#include "link/wire.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/program_lock.h"
#include "platform/serial_port.h"
#include "platform/signal.h"
#include "platform/thread.h"

#include <cassert>
#include <chrono>
#include <climits>
#include <cstring>
#include <memory>

namespace {

LinkClient g_link;

// One receive thread per connection. It reads one message each time the screen restarts
// reception, and ends when its connection closes under it or the link lets it go. Each
// thread holds its connection, so a thread of an earlier link keeps reading its own socket.
struct Connection {
    explicit Connection(plat::SocketHandle socket) : reader(socket) {}
    SocketReader reader;
    plat::Signal go;
    std::atomic<bool> stop{false};
    std::atomic<bool> ended{false};
    std::atomic<plat::WindowRef> window{nullptr};
};

// The current connection (used on the screen's thread only).
std::shared_ptr<Connection> g_connection;

std::atomic<WorkerEndObserver> g_observer{nullptr};

using Clock = std::chrono::steady_clock;

unsigned MillisecondsLeft(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left <= 0 ? 0u : static_cast<unsigned>(left);
}

// Keeps the frames of the screen's thread and of the worker apart on the wire. It is not the
// program lock: a sender waiting on a device that stopped reading holds up no one but other
// senders.
plat::Lock& SendLock() {
    static plat::Lock* lock = [] {
        auto* made = new plat::Lock;
        plat::LockInit(*made);
        return made;
    }();
    return *lock;
}

void ConnectionMain(void* argument) {
    std::shared_ptr<Connection> connection = *static_cast<std::shared_ptr<Connection>*>(argument);
    delete static_cast<std::shared_ptr<Connection>*>(argument);
    ReceiveSource source = BufferedReceiveSource(&connection->reader);
    for (;;) {
        connection->go.Wait();
        if (connection->stop) break;
        ++g_link.workerRunning;
        const WorkerOutcome outcome = RunReceiveWorker(source, connection->window);
        --g_link.workerRunning;
        if (outcome != WorkerOutcome::kReported) {
            if (WorkerEndObserver observer = g_observer.load()) observer(outcome);
        }
        if (outcome == WorkerOutcome::kClosed) break;
    }
    connection->ended = true;
}

// Lets the connection's thread go: it ends once it is between messages.
void ReleaseConnection() {
    if (!g_connection) return;
    g_connection->stop = true;
    g_connection->go.Set();
    g_connection.reset();
}

}  // namespace

WorkerEndObserver SetWorkerEndObserver(WorkerEndObserver observer) {
    return g_observer.exchange(observer);
}

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
    g_link.serverText.clear();
    SetSettingsPanelName(g_link.panelId);
    g_link.initialised = 1;
    return kLinkOk;
}

std::int32_t LinkShutdown() {
    if (!g_link.initialised) return kLinkOk;
    if (g_link.socket != plat::kInvalidSocket) LinkClose();
    plat::ProgramLockHold hold;
    g_link.panelId.clear();
    g_link.serverText.clear();
    SetSettingsPanelName(u"");
    g_link.initialised = 0;
    return kLinkOk;
}

std::int32_t LinkStart(plat::SocketHandle socket, plat::WindowRef window, unsigned message) {
    if (!g_link.initialised) return kLinkNotInitialised;
    if (g_link.socket != plat::kInvalidSocket) return kLinkAlreadyOpen;
    g_link.socket = socket;
    if (std::int32_t rc = LinkStartReceiver(window, message); rc != kLinkOk) {
        g_link.socket = plat::kInvalidSocket;
        return rc;
    }
    return LinkRequestPanel();
}

std::int32_t LinkStartReceiver(plat::WindowRef window, unsigned message) {
    plat::SocketHandle socket = g_link.socket;
    if (socket == plat::kInvalidSocket) return kLinkNoSocket;
    g_link.resultMessage = message;
    if (!g_connection || g_connection->reader.socket != socket || g_connection->ended) {
        ReleaseConnection();
        auto connection = std::make_shared<Connection>(socket);
        if (plat::IsSerialPort(socket)) connection->reader.RepeatPanelRequest();
        auto* argument = new std::shared_ptr<Connection>(connection);
        if (plat::StartDetachedThread(ConnectionMain, argument) != 0) {
            delete argument;
            return kLinkThreadFailed;
        }
        g_connection = connection;
    }
    g_connection->window = window;
    g_connection->go.Set();
    return kLinkOk;
}

std::int32_t LinkSendFrameOn(plat::SocketHandle socket, const void* frame, std::size_t count,
                             unsigned timeoutMs) {
    // Waiting on the device under the program lock would freeze the screen behind it.
    assert(!plat::ProgramLockHeldHere() && "a frame sent under the program lock");
    if (socket == plat::kInvalidSocket) return kLinkNoSocket;
    if (count > INT_MAX) return kLinkSendFailed;
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    // Another sender stuck for the whole time breaks the link itself.
    if (!plat::LockEnterWithin(SendLock(), timeoutMs)) return kLinkSendFailed;
    const int sent = plat::SocketSend(socket, frame, static_cast<int>(count),
                                      static_cast<int>(MillisecondsLeft(deadline)));
    plat::LockLeave(SendLock());
    if (sent == plat::kSocketError) {
        // Part of a frame may be out: the stream is beyond repair.
        plat::SocketClose(socket);
        return kLinkSendFailed;
    }
    return kLinkOk;
}

std::int32_t LinkSend(const void* frame, std::size_t count, unsigned timeoutMs) {
    return LinkSendFrameOn(g_link.socket, frame, count, timeoutMs);
}

std::int32_t LinkSendControlFrame(std::uint16_t type) {
    std::uint8_t head[20];
    BuildFrameHead(head, type, wire::kFlagsOutbound);
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
    ReleaseConnection();
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

std::int32_t LinkStop(unsigned waitMs) {
    const plat::SocketHandle socket = g_link.socket;
    if (socket == plat::kInvalidSocket) return kLinkNoSocket;
    std::uint8_t head[20];
    BuildFrameHead(head, wire::kOutGoodbye, wire::kFlagsOutbound);
    const std::int32_t rc = LinkSend(head, sizeof head, waitMs);  // a failure closes the socket
    LinkClose();
    return rc;
}

std::int32_t LinkSendDefaultLayout(std::uint32_t value) {
    std::uint8_t frame[24];
    BuildFrameHead(frame, wire::kOutDefaultLayout, wire::kFlagsOutbound);
    bytes::Put32(frame + 20, value);
    return LinkSend(frame, sizeof frame);
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
