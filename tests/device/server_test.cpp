// The server loop against raw sockets: clients that vanish at any point, garbage and frames
// it cannot read, goodbye, stop, and the next client after each.
#include "device/messages.h"
#include "device/server.h"
#include "tests/support/recorders.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

using namespace testing_support;

namespace {

// What the handlers saw, from the server's thread.
struct Seen {
    std::mutex mutex;
    std::vector<std::uint16_t> types;
    std::vector<std::string> problems;
    int connects = 0;
    int disconnects = 0;
    int ticks = 0;
    int stops = 0;

    std::size_t Types() {
        std::lock_guard<std::mutex> hold(mutex);
        return types.size();
    }
    int Disconnects() {
        std::lock_guard<std::mutex> hold(mutex);
        return disconnects;
    }
};

class DeviceServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        listener = dev::ServerListen("127.0.0.1", 0, &port);
        ASSERT_NE(plat::kInvalidSocket, listener);
        dev::SessionHandlers h;
        h.connected = [this](dev::Session&) { Count(&seen.connects); };
        h.disconnected = [this](dev::Session&) { Count(&seen.disconnects); };
        h.tick = [this](dev::Session&) { Count(&seen.ticks); };
        h.stopping = [this](dev::Session& s) {
            Count(&seen.stops);
            dev::SessionSend(s, dev::EncodeBare(1));
        };
        h.problem = [this](dev::Session&, const std::string& p) {
            std::lock_guard<std::mutex> hold(seen.mutex);
            seen.problems.push_back(p);
        };
        h.message = [this](dev::Session& s, const dev::ClientMessage& m) {
            {
                std::lock_guard<std::mutex> hold(seen.mutex);
                seen.types.push_back(m.type);
            }
            if (m.type == 10) dev::SessionSend(s, dev::EncodeBare(11));
        };
        h.tickMilliseconds = 20;
        server = std::thread([this, h] { result = dev::RunServer(listener, h, stop); });
    }
    void TearDown() override {
        stop = true;
        if (server.joinable()) server.join();
        plat::SocketClose(listener);
    }
    void Count(int* counter) {
        std::lock_guard<std::mutex> hold(seen.mutex);
        ++*counter;
    }
    plat::SocketHandle Connect() { return plat::SocketConnectTcp("127.0.0.1", port); }
    // A fresh client is served with a ping reply: the server is alive and accepting.
    void ExpectServed() {
        plat::SocketHandle c = Connect();
        ASSERT_TRUE(SendPeer(c, FrameHead(10, 2)));
        EXPECT_EQ(FrameHead(11, 0), ReadPeer(c, 20));
        plat::SocketClose(c);
    }

    plat::SocketHandle listener = plat::kInvalidSocket;
    std::uint16_t port = 0;
    std::atomic<bool> stop{false};
    std::thread server;
    int result = -99;
    Seen seen;
};

}  // namespace

TEST_F(DeviceServerTest, ClientsThatVanishAtAnyPointLeaveTheServerServing) {
    const Bytes frame = FrameHead(7, 2) + U32(1) + U32(4) + U32(1) + U8({255});
    for (std::size_t cut : {std::size_t{0}, std::size_t{5}, std::size_t{20}, std::size_t{27},
                            frame.size() - 1}) {
        plat::SocketHandle c = Connect();
        ASSERT_NE(plat::kInvalidSocket, c);
        ASSERT_TRUE(SendPeer(c, Bytes(frame.begin(), frame.begin() + static_cast<long>(cut))));
        plat::SocketClose(c);
        ExpectServed();
    }
    EXPECT_TRUE(WaitUntil([&] { return seen.Disconnects() == 10; }));
    EXPECT_EQ(5u, seen.Types()) << "only the five pings were whole frames";
}

TEST_F(DeviceServerTest, GarbageAndUnreadableFramesAreSkipped) {
    plat::SocketHandle c = Connect();
    ASSERT_TRUE(SendPeer(c, U8({1, 2, 3, 0x48, 0xEF}) + FrameHead(99, 2) + FrameHead(10, 2)));
    EXPECT_EQ(FrameHead(11, 0), ReadPeer(c, 20));
    plat::SocketClose(c);
    std::lock_guard<std::mutex> hold(seen.mutex);
    ASSERT_EQ(1u, seen.problems.size());
    EXPECT_EQ("unknown message type 99", seen.problems[0]);
}

TEST_F(DeviceServerTest, GoodbyeEndsTheSessionAndClosesTheSocket) {
    plat::SocketHandle c = Connect();
    ASSERT_TRUE(SendPeer(c, FrameHead(4, 2)));
    // The device closes: the client sees the end of the stream.
    ASSERT_EQ(1, plat::SocketWaitReadable(c, 5000));
    std::uint8_t byte;
    EXPECT_EQ(0, plat::SocketReceive(c, &byte, 1));
    plat::SocketClose(c);
    EXPECT_TRUE(WaitUntil([&] { return seen.Disconnects() == 1; }));
    ExpectServed();
}

TEST_F(DeviceServerTest, TicksWhileConnectedAndStopEndsTheSessionWithTheSessionEnd) {
    plat::SocketHandle c = Connect();
    EXPECT_TRUE(WaitUntil([&] {
        std::lock_guard<std::mutex> hold(seen.mutex);
        return seen.ticks >= 3;
    }));
    stop = true;
    EXPECT_EQ(FrameHead(1, 0), ReadPeer(c, 20));
    server.join();
    EXPECT_EQ(0, result);
    EXPECT_EQ(1, seen.stops);
    EXPECT_EQ(1, seen.disconnects);
    plat::SocketClose(c);
}
