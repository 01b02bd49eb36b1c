#include "platform/socket.h"
#include "platform/thread.h"
#include "tests/support/recorders.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using testing_support::WaitUntil;

namespace {

struct Pair {
    plat::SocketHandle s[2] = {plat::kInvalidSocket, plat::kInvalidSocket};
    Pair() { EXPECT_EQ(0, plat::SocketPair(s)); }
    ~Pair() {
        plat::SocketClose(s[0]);
        plat::SocketClose(s[1]);
    }
};

// A call on its own thread, its result kept (a shared state outlives a call that never ends).
struct Blocked {
    std::atomic<int> result{-100};
    std::atomic<bool> started{false};
};

template <typename Call>
std::shared_ptr<Blocked> RunAside(Call call) {
    auto state = std::make_shared<Blocked>();
    std::thread([state, call] {
        state->started = true;
        state->result = call();
    }).detach();
    EXPECT_TRUE(WaitUntil([&] { return state->started.load(); }));
    return state;
}

}  // namespace

// Receives and sends, blocked in another thread, wake when the handle is closed; a send to a
// peer that never reads gives up at its time.
TEST(Socket, ClosingWakesBlockedCallsAndASendToAPeerThatNeverReadsGivesUp) {
    Pair pair;
    auto receive = RunAside([socket = pair.s[0]] {
        char c;
        return plat::SocketReceive(socket, &c, 1);
    });
    plat::SleepMilliseconds(20);  // let it block inside recv
    plat::SocketClose(pair.s[0]);
    ASSERT_TRUE(WaitUntil([&] { return receive->result != -100; }))
        << "the blocked receive never returned";
    EXPECT_LE(receive->result.load(), 0);
    char c;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(pair.s[0], &c, 1));
    pair.s[0] = plat::kInvalidSocket;

    Pair quiet;
    testing_support::FillUntilFull(quiet.s[0]);  // each try gave up at its time
    auto send = RunAside([socket = quiet.s[0]] {
        return plat::SocketSend(socket, "x", 1, 60000);
    });
    plat::SleepMilliseconds(20);
    plat::SocketClose(quiet.s[0]);
    ASSERT_TRUE(WaitUntil([&] { return send->result != -100; }))
        << "the blocked send never returned";
    EXPECT_EQ(plat::kSocketError, send->result.load());
    quiet.s[0] = plat::kInvalidSocket;
}

// A listener whose queue is full drops new connections unanswered, as a silent device does.
TEST(Socket, ConnectingGivesUpOnASilentDeviceAndOnANameThatCannotBeFound) {
    std::uint16_t port = 0;
    plat::SocketHandle listener = plat::SocketListenTcp("127.0.0.1", 0, &port);
    ASSERT_NE(plat::kInvalidSocket, listener);
    auto connect = RunAside([port] {
        plat::SocketHandle s = plat::kInvalidSocket;
        for (int i = 0; i < 64 && (s = plat::SocketConnectTcp("127.0.0.1", port, 300)) !=
                                      plat::kInvalidSocket;
             ++i) {
            plat::SocketClose(s);  // the queue keeps the connection all the same
        }
        return s == plat::kInvalidSocket ? 1 : 0;
    });
    EXPECT_TRUE(WaitUntil([&] { return connect->result == 1; }, std::chrono::seconds(30)));
    auto lookup = RunAside([] {
        return plat::SocketConnectTcp("no-such-device.invalid", 7700, 2000) == plat::kInvalidSocket
                   ? 1
                   : 0;
    });
    EXPECT_TRUE(WaitUntil([&] { return lookup->result == 1; }, std::chrono::seconds(5)));
    plat::SocketClose(listener);
}

TEST(Socket, AClosedHandleStaysDeadWhenNewSocketsAreMade) {
    Pair first;
    plat::SocketHandle old = first.s[0];
    plat::SocketClose(old);
    first.s[0] = plat::kInvalidSocket;
    Pair second;  // may get the same native socket number
    EXPECT_NE(old, second.s[0]);
    EXPECT_NE(old, second.s[1]);
    ASSERT_EQ(1, plat::SocketSend(second.s[1], "x", 1, 1000));
    char c;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(old, &c, 1));
    EXPECT_EQ(plat::kSocketError, plat::SocketSend(old, "y", 1, 1000));
    EXPECT_EQ(1, plat::SocketReceive(second.s[0], &c, 1));
    EXPECT_EQ('x', c);
}

TEST(Socket, UnknownHandlesFailQuietly) {
    char c = 0;
    EXPECT_EQ(plat::kSocketError, plat::SocketReceive(12345, &c, 1));
    EXPECT_EQ(plat::kSocketError, plat::SocketSend(plat::kInvalidSocket, &c, 1, 1000));
    plat::SocketClose(plat::kInvalidSocket);
    plat::SocketClose(777777);
}
