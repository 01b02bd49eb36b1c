// The demo device: serves the demo panel over a session, applies what the client sends, pushes
// live data, pings, and logs every message it receives as one JSON object per line.
#pragma once

#include "device/client_message.h"
#include "device/demo/demo_panel.h"
#include "device/server.h"

#include <cstdint>
#include <functional>
#include <string>

namespace demo {

struct DemoOptions {
    unsigned tickMilliseconds = 1000;  // how often live data is pushed
    unsigned devicePingTicks = 10;     // the device pings every this many ticks; 0 never
    std::uint32_t pingSeconds = 5;     // the ping period the client is told to use
};

struct DemoDevice {
    DemoOptions options;
    DemoState state;
    std::function<void(const std::string& line)> log;  // each message received; may be empty
    std::function<dev::DateTime()> now;                 // the clock of the live samples
    bool panelSent = false;                             // this session has its panel
    std::uint64_t ticks = 0;
};

DemoDevice MakeDemoDevice(const DemoOptions& options);

// The handlers that run the device on a server (server.h); the device must outlive the server.
dev::SessionHandlers DemoHandlers(DemoDevice& device);

// The log line of one received message: session, type, flags, and for type 7 the count, the
// items (key, byte count n, hex bytes, "blobTrailer" on a Blob's empty item) and "truncated";
// for type 18 the payload.
std::string MessageLogLine(int session, const dev::ClientMessage& message);
// The log line of a frame that could not be read.
std::string ProblemLogLine(int session, const std::string& problem);

// The local time as a date-time value.
dev::DateTime LocalNow();

}  // namespace demo
