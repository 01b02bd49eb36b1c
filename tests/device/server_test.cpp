// The server loop against raw sockets: garbage and frames it cannot read, goodbye, and the
// next client.
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
        h.problem = [this](dev::Session&, const std::string& p) {
            Locked([&] { problems.push_back(p); });
        };
        h.message = [](dev::Session& s, const dev::ClientMessage& m) {
            if (m.type == 10) dev::SessionSend(s, dev::EncodeBare(11));
        };
        server = std::thread([this, h] { dev::RunServer(listener, h, stop); });
    }
    void TearDown() override {
        stop = true;
        if (server.joinable()) server.join();
        plat::SocketClose(listener);
    }
    plat::SocketHandle Connect() { return plat::SocketConnectTcp("127.0.0.1", port, 5000); }

    plat::SocketHandle listener = plat::kInvalidSocket;
    std::uint16_t port = 0;
    std::atomic<bool> stop{false};
    std::thread server;
    std::mutex mutex;
    std::vector<std::string> problems;
    int disconnects = 0;
};

}  // namespace

TEST_F(DeviceServerTest, GarbageAndUnreadableFramesAreSkippedAndGoodbyeClosesTheSocket) {
    plat::SocketHandle c = Connect();
    // Counts and sizes past the ceilings are refused without waiting for the bytes.
    ASSERT_TRUE(SendPeer(c, U8({1, 2, 3, 0x48, 0xEF}) + FrameHead(99, 2) + FrameHead(7, 2) +
                                U32(5000) + FrameHead(7, 2) + U32(1) + U32(4) + U32(2u << 20) +
                                FrameHead(10, 2)));
    EXPECT_EQ(FrameHead(11, 0), ReadPeer(c, 20));
    const std::vector<std::string> seen = Locked([&] { return problems; });
    ASSERT_EQ(3u, seen.size());
    EXPECT_EQ("unknown message type 99", seen[0]);
    EXPECT_NE(std::string::npos, seen[1].find("5000 items")) << seen[1];
    EXPECT_NE(std::string::npos, seen[2].find("claims 2097152 bytes")) << seen[2];
    ASSERT_TRUE(SendPeer(c, FrameHead(4, 2)));
    // The device closes: the client sees the end of the stream.
    ASSERT_EQ(1, plat::SocketWaitReadable(c, 5000));
    std::uint8_t byte;
    EXPECT_EQ(0, plat::SocketReceive(c, &byte, 1));
    plat::SocketClose(c);
    EXPECT_TRUE(WaitUntil([&] { return Locked([&] { return disconnects == 1; }); }));
    // The next client is served.
    c = Connect();
    ASSERT_TRUE(SendPeer(c, FrameHead(10, 2)));
    EXPECT_EQ(FrameHead(11, 0), ReadPeer(c, 20));
    plat::SocketClose(c);
}
