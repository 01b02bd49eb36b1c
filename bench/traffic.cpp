#include "bench/traffic.h"

#include "link/link_client.h"
#include "platform/post.h"
#include "platform/socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>

namespace {

std::mutex g_mutex;
std::condition_variable g_posted;
std::size_t g_posts = 0;

void OnPost(plat::WindowRef, unsigned message) {
    if (message != kResultMessage) return;  // the wait cursor's posts
    {
        std::lock_guard<std::mutex> hold(g_mutex);
        ++g_posts;
    }
    g_posted.notify_one();
}

double CpuSeconds() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_utime.tv_usec / 1e6 + usage.ru_stime.tv_sec +
           usage.ru_stime.tv_usec / 1e6;
}

long StatusKb(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind(field, 0) == 0) return std::stol(line.substr(std::strlen(field)));
    }
    return 0;
}

int ConnectTo(std::uint16_t port) {
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) _exit(3);
    return fd;
}

}  // namespace

void WriteAll(int fd, const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        ssize_t n = ::write(fd, data, size);
        if (n <= 0) _exit(4);
        data += n;
        size -= static_cast<std::size_t>(n);
    }
}

void PacedFrames(int fd, const std::vector<std::uint8_t>& frame, double bytesPerSecond,
                 double seconds) {
    using Clock = std::chrono::steady_clock;
    auto start = Clock::now();
    double sent = 0;
    std::vector<std::uint8_t> burst;
    for (;;) {
        double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
        if (elapsed >= seconds) break;
        burst.clear();
        while (sent + static_cast<double>(frame.size()) <= elapsed * bytesPerSecond) {
            burst.insert(burst.end(), frame.begin(), frame.end());
            sent += static_cast<double>(frame.size());
        }
        if (!burst.empty()) WriteAll(fd, burst.data(), burst.size());
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

TrafficResult RunTraffic(const DeviceScript& device) {
    std::uint16_t port = 0;
    plat::SocketHandle listener = plat::SocketListenTcp("127.0.0.1", 0, &port);
    pid_t child = ::fork();
    if (child == 0) {
        int fd = ConnectTo(port);
        device(fd);
        // The device ends the session: the client stops restarting its worker.
        const std::uint8_t end[20] = {0x48, 0xEF, 0xF0, 0x74, 0x72, 0xEF, 0xE6, 0x66, 0, 3, 0, 0,
                                      1, 0, 1, 0, 1, 0, 0, 0};
        WriteAll(fd, end, sizeof end);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        _exit(0);
    }
    plat::SocketHandle socket = plat::SocketAccept(listener);
    plat::SocketClose(listener);

    LinkInit();
    plat::PostHook previous = plat::SetPostHook(OnPost);
    g_posts = 0;
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts from here
    long rssBefore = StatusKb("VmRSS:");
    double cpuBefore = CpuSeconds();
    auto start = std::chrono::steady_clock::now();

    TrafficResult result;
    LinkStart(socket, nullptr, kResultMessage);
    for (;;) {
        std::unique_lock<std::mutex> hold(g_mutex);
        if (!g_posted.wait_for(hold, std::chrono::seconds(30), [] { return g_posts > 0; })) break;
        --g_posts;
        hold.unlock();
        ++result.results;
        std::int32_t code = Link().lastResult;
        if (code == -1 || code == 3) break;
        LinkStartReceiver(nullptr, kResultMessage);
    }
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    result.cpuSeconds = CpuSeconds() - cpuBefore;
    result.peakGrowthKb = StatusKb("VmHWM:") - rssBefore;

    plat::SocketClose(socket);
    LinkClose();
    while (Link().workerRunning) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    LinkShutdown();
    plat::SetPostHook(previous);
    int status = 0;
    ::waitpid(child, &status, 0);
    return result;
}
