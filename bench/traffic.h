// A device in a child process pushing frames over loopback, and the client in this process
// handling them as the panel screen does (restarting the worker after each result). The
// figures are this process's own, so the device's work does not count.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

struct TrafficResult {
    double seconds = 0;       // wall time from the first byte to the device's goodbye
    double cpuSeconds = 0;    // this process's user + system time meanwhile
    std::size_t results = 0;  // link results handled
    long peakGrowthKb = 0;    // growth of the peak resident size meanwhile
};

// The device's side: writes to the connected descriptor, then returns (the harness adds the
// frame that ends the session).
using DeviceScript = std::function<void(int fd)>;

TrafficResult RunTraffic(const DeviceScript& device);

// Writes `frame` again and again for `seconds`, never faster than `bytesPerSecond`.
void PacedFrames(int fd, const std::vector<std::uint8_t>& frame, double bytesPerSecond,
                 double seconds);
// Writes all bytes, however the socket takes them.
void WriteAll(int fd, const std::uint8_t* data, std::size_t size);
