// A link on one end of a socket pair, the test playing the device on the other, with message
// boxes and posted results recorded.
#pragma once

#include "link/link_client.h"
#include "model/control_store.h"
#include "tests/support/recorders.h"
#include "tests/support/temp_folder.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

namespace testing_support {

class LinkTest : public ::testing::Test {
protected:
    void SetUp() override { LinkInit(); }
    void TearDown() override {
        pair.CloseClient();
        LinkClose();
        WaitUntil([] { return !Link().workerRunning; });
        LinkShutdown();
    }
    // Starts the link and reads the panel request it sends.
    void StartLink() {
        ASSERT_EQ(0, LinkStart(pair.client, kWindow, kResultMessage));
        ASSERT_EQ(FrameHead(1, 2), ReadPeer(pair.device, 20));
    }
    // Sends bytes as the device and waits for the worker's result (after restarting it when
    // restart is set, as the panel screen does).
    std::int32_t Deliver(const Bytes& bytes) {
        EXPECT_TRUE(SendPeer(pair.device, bytes));
        unsigned message = 0;
        if (!posts.Next(&message)) return -1000;
        EXPECT_EQ(kResultMessage, message);
        return Link().lastResult;
    }
    void Restart() {
        WaitUntil([] { return !Link().workerRunning; });
        ASSERT_EQ(0, LinkStartReceiver(kWindow, kResultMessage));
    }

    static inline plat::WindowRef const kWindow = reinterpret_cast<plat::WindowRef>(0x1234);
    TempFolder folder;
    MessageBoxRecorder boxes;
    PostRecorder posts;
    SocketPairFixture pair;
};

}  // namespace testing_support
