// A TCP server for a device: listens (on loopback unless told otherwise), serves one client
// at a time, and after a client has left, in whatever state, accepts the next.
//
// Every handler runs on the thread that called RunServer, one call at a time. A session ends
// when the client says goodbye (type 4), closes or breaks its connection, a send fails, the
// device calls SessionEnd, or the server is stopped. The device ends a session by closing the
// socket: the client treats an empty read as "try again", never as the end.
#pragma once

#include "device/client_message.h"
#include "device/out_bytes.h"
#include "platform/socket.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

namespace dev {

struct Session {
    plat::SocketHandle socket = plat::kInvalidSocket;
    int number = 0;  // 1 for the first client of this server, 2 for the next, ...
    std::atomic<bool> open{true};
    std::mutex sendMutex;
};

// Sends one frame whole. False when the client has gone; the session then ends.
// Safe from any thread while the session lasts.
bool SessionSend(Session& session, const Bytes& frame);
// Ends the session once the current handler returns.
void SessionEnd(Session& session);

struct SessionHandlers {
    std::function<void(Session&)> connected;
    std::function<void(Session&, const ClientMessage&)> message;
    std::function<void(Session&)> tick;          // every tickMilliseconds while connected
    std::function<void(Session&)> stopping;      // the server stops with this client connected
    std::function<void(Session&)> disconnected;  // after the last call for this session
    std::function<void(Session&, const std::string&)> problem;  // a frame that was dropped
    BlobTest isBlob;                             // the Blob keys of the panel offered
    unsigned tickMilliseconds = 1000;            // 0: no ticks
};

// Listens on address:port; port 0 takes a free port, reported in *boundPort when given.
// kInvalidSocket when the address cannot be bound.
plat::SocketHandle ServerListen(const std::string& address, std::uint16_t port,
                                std::uint16_t* boundPort);

// Serves clients one after another until stop is set (0) or the listener fails or is closed
// (-1). Notices stop within about 100 ms.
int RunServer(plat::SocketHandle listener, const SessionHandlers& handlers,
              const std::atomic<bool>& stop);

// Serves one connected client until its session ends, then closes the socket.
void ServeClient(plat::SocketHandle socket, int number, const SessionHandlers& handlers,
                 const std::atomic<bool>& stop);

}  // namespace dev
