// demo-device: serves the demo panel over TCP until interrupted.
#include "device/demo/demo_device.h"
#include "device/server.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

std::atomic<bool> g_stop{false};

void OnSignal(int) { g_stop = true; }

const char kUsage[] =
    "usage: demo-device [--port N] [--address A] [--interval MS] [--log FILE]\n"
    "                   [--device-ping SECONDS] [--client-ping SECONDS]\n"
    "  --port N             TCP port to listen on (default 7700; 0 picks a free one)\n"
    "  --address A          address to listen on (default 127.0.0.1)\n"
    "  --interval MS        how often live data is pushed (default 1000)\n"
    "  --log FILE           every message received, one JSON object a line (- for stdout)\n"
    "  --device-ping S      the device pings every S seconds (default 10, 0 never)\n"
    "  --client-ping S      the ping period the client is told to use (default 5, 0 none)\n";

struct Options {
    std::uint16_t port = 7700;
    std::string address = "127.0.0.1";
    std::string logPath;
    unsigned devicePingSeconds = 10;
    demo::DemoOptions demo;
};

bool ParseNumber(const char* text, unsigned long maximum, unsigned long* out) {
    const char* end = text + std::strlen(text);
    auto [p, ec] = std::from_chars(text, end, *out);
    return ec == std::errc() && p == end && *out <= maximum;
}

bool ParseOptions(int argc, char** argv, Options* o) {
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (i + 1 >= argc) return false;
        const char* value = argv[++i];
        unsigned long n = 0;
        if (name == "--address") {
            o->address = value;
        } else if (name == "--log") {
            o->logPath = value;
        } else if (name == "--port" && ParseNumber(value, 65535, &n)) {
            o->port = static_cast<std::uint16_t>(n);
        } else if (name == "--interval" && ParseNumber(value, 3600000, &n) && n > 0) {
            o->demo.tickMilliseconds = static_cast<unsigned>(n);
        } else if (name == "--device-ping" && ParseNumber(value, 86400, &n)) {
            o->devicePingSeconds = static_cast<unsigned>(n);
        } else if (name == "--client-ping" && ParseNumber(value, 86400, &n)) {
            o->demo.pingSeconds = static_cast<std::uint32_t>(n);
        } else {
            return false;
        }
    }
    const unsigned long pingMs = 1000ul * o->devicePingSeconds;
    o->demo.devicePingTicks =
        pingMs == 0 ? 0 : static_cast<unsigned>(std::max(1ul, pingMs / o->demo.tickMilliseconds));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!ParseOptions(argc, argv, &options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    std::FILE* log = nullptr;
    if (options.logPath == "-") {
        log = stdout;
    } else if (!options.logPath.empty() && !(log = std::fopen(options.logPath.c_str(), "w"))) {
        std::fprintf(stderr, "demo-device: cannot write %s\n", options.logPath.c_str());
        return 1;
    }

    std::uint16_t port = 0;
    plat::SocketHandle listener = dev::ServerListen(options.address, options.port, &port);
    if (listener == plat::kInvalidSocket) {
        std::fprintf(stderr, "demo-device: cannot listen on %s:%u\n", options.address.c_str(),
                     static_cast<unsigned>(options.port));
        return 1;
    }
    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    std::printf("demo-device listening on %s:%u\n", options.address.c_str(),
                static_cast<unsigned>(port));
    std::fflush(stdout);

    demo::DemoDevice device = demo::MakeDemoDevice(options.demo);
    if (log) {
        device.log = [log](const std::string& line) {
            std::fprintf(log, "%s\n", line.c_str());
            std::fflush(log);
        };
    }
    const int rc = dev::RunServer(listener, demo::DemoHandlers(device), g_stop);
    plat::SocketClose(listener);
    if (log && log != stdout) std::fclose(log);
    return rc == 0 ? 0 : 1;
}
