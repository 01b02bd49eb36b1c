#include "device/server.h"

#include "link/wire.h"
#include "platform/thread.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <vector>

namespace dev {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPollMilliseconds = 100;  // how soon a stop request is noticed
constexpr std::size_t kChunk = 64 * 1024;
// A client that takes no bytes for this long has gone: its session ends.
constexpr int kSendTimeoutMilliseconds = 10000;

// Hands every whole frame in the buffer to the handlers and drops what was read.
void DrainFrames(Session& session, Bytes& buffer, const SessionHandlers& handlers) {
    while (session.open) {
        ClientMessage message;
        DecodeOutcome outcome =
            DecodeClientMessage(buffer.data(), buffer.size(), handlers.isBlob, &message);
        buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(outcome.consumed));
        if (outcome.status == DecodeStatus::kNeedMore) return;
        if (outcome.status == DecodeStatus::kMalformed) {
            if (handlers.problem) handlers.problem(session, outcome.error);
            continue;
        }
        if (handlers.message) handlers.message(session, message);
        if (message.type == wire::kOutGoodbye) SessionEnd(session);
    }
}

int MillisecondsUntil(Clock::time_point when) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(when - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, kPollMilliseconds));
}

}  // namespace

bool SessionSend(Session& session, const Bytes& frame) {
    std::lock_guard<std::mutex> hold(session.sendMutex);
    if (!session.open) return false;
    if (frame.size() > INT_MAX ||
        plat::SocketSend(session.socket, frame.data(), static_cast<int>(frame.size()),
                         kSendTimeoutMilliseconds) == plat::kSocketError) {
        session.open = false;
        return false;
    }
    return true;
}

void SessionEnd(Session& session) { session.open = false; }

plat::SocketHandle ServerListen(const std::string& address, std::uint16_t port,
                                std::uint16_t* boundPort) {
    if (plat::SocketsStartup() != 0) return plat::kInvalidSocket;
    return plat::SocketListenTcp(address.c_str(), port, boundPort);
}

void ServeClient(plat::SocketHandle socket, int number, const SessionHandlers& handlers,
                 const std::atomic<bool>& stop) {
    Session session;
    session.socket = socket;
    session.number = number;
    if (handlers.connected) handlers.connected(session);

    Bytes buffer;
    std::vector<std::uint8_t> chunk(kChunk);
    const auto period = std::chrono::milliseconds(handlers.tickMilliseconds);
    Clock::time_point nextTick = Clock::now() + period;
    while (session.open && !stop) {
        const int wait = handlers.tickMilliseconds ? MillisecondsUntil(nextTick) : kPollMilliseconds;
        const int ready = plat::SocketWaitReadable(socket, wait);
        if (ready == plat::kSocketError) break;
        if (ready == 1) {
            const int n = plat::SocketReceive(socket, chunk.data(), static_cast<int>(chunk.size()));
            if (n <= 0) break;  // readable yet empty: the client has closed
            buffer.insert(buffer.end(), chunk.begin(), chunk.begin() + n);
            DrainFrames(session, buffer, handlers);
        }
        if (handlers.tickMilliseconds && session.open && Clock::now() >= nextTick) {
            if (handlers.tick) handlers.tick(session);
            nextTick = std::max(nextTick + period, Clock::now());
        }
    }
    if (stop && session.open && handlers.stopping) handlers.stopping(session);
    session.open = false;
    if (handlers.disconnected) handlers.disconnected(session);
    plat::SocketClose(socket);
}

int RunServer(plat::SocketHandle listener, const SessionHandlers& handlers,
              const std::atomic<bool>& stop) {
    int number = 0;
    while (!stop) {
        const int ready = plat::SocketWaitReadable(listener, kPollMilliseconds);
        if (ready == plat::kSocketError) return -1;
        if (ready == 0) continue;
        plat::SocketHandle client = plat::SocketAccept(listener);
        if (client == plat::kInvalidSocket) {
            plat::SleepMilliseconds(kPollMilliseconds);  // out of descriptors: do not spin
            continue;
        }
        ServeClient(client, ++number, handlers, stop);
    }
    return 0;
}

}  // namespace dev
