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

class DeviceServerTest : public ::testing::Test {
protected:
    // Runs f under the lock that guards what the handlers saw, from the server's thread.
    template <class F> auto Locked(F f) {
        std::lock_guard<std::mutex> hold(mutex);
        return f();
    }
    void SetUp() override {
        listener = dev::ServerListen("127.0.0.1", 0, &port);
        ASSERT_NE(plat::kInvalidSocket, listener);
        dev::SessionHandlers h;
        h.disconnected = [this](dev::Session&) { Locked([&] { return ++disconnects; }); };
        h.tick = [this](dev::Session&) { Locked([&] { return ++ticks; }); };
        h.stopping = [this](dev::Session& s) {
            Locked([&] { return ++stops; });
            dev::SessionSend(s, dev::EncodeBare(1));
        };
        h.problem = [this](dev::Session&, const std::string& p) {
            Locked([&] { problems.push_back(p); });
        };
        h.message = [this](dev::Session& s, const dev::ClientMessage& m) {
            Locked([&] { types.push_back(m.type); });
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
    std::mutex mutex;
    std::vector<std::uint16_t> types;
    std::vector<std::string> problems;
    int disconnects = 0, ticks = 0, stops = 0;
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
    EXPECT_TRUE(WaitUntil([&] { return Locked([&] { return disconnects == 10; }); }));
    EXPECT_EQ(5u, Locked([&] { return types.size(); })) << "only the five pings were whole";
}

TEST_F(DeviceServerTest, GarbageAndUnreadableFramesAreSkippedAndGoodbyeClosesTheSocket) {
    plat::SocketHandle c = Connect();
    ASSERT_TRUE(SendPeer(c, U8({1, 2, 3, 0x48, 0xEF}) + FrameHead(99, 2) + FrameHead(10, 2)));
    EXPECT_EQ(FrameHead(11, 0), ReadPeer(c, 20));
    EXPECT_EQ(std::vector<std::string>{"unknown message type 99"},
              Locked([&] { return problems; }));
    ASSERT_TRUE(SendPeer(c, FrameHead(4, 2)));
    // The device closes: the client sees the end of the stream.
    ASSERT_EQ(1, plat::SocketWaitReadable(c, 5000));
    std::uint8_t byte;
    EXPECT_EQ(0, plat::SocketReceive(c, &byte, 1));
    plat::SocketClose(c);
    EXPECT_TRUE(WaitUntil([&] { return Locked([&] { return disconnects == 1; }); }));
    ExpectServed();
}

TEST_F(DeviceServerTest, TicksWhileConnectedAndStopEndsTheSessionWithTheSessionEnd) {
    plat::SocketHandle c = Connect();
    EXPECT_TRUE(WaitUntil([&] { return Locked([&] { return ticks >= 3; }); }));
    stop = true;
    EXPECT_EQ(FrameHead(1, 0), ReadPeer(c, 20));
    server.join();
    EXPECT_EQ(0, result);
    EXPECT_EQ(1, stops);
    EXPECT_EQ(1, disconnects);
    plat::SocketClose(c);
}
