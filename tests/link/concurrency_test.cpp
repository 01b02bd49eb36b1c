// The worker applies updates and replaces panels while this thread reads, edits and sends,
// as in the program; meant for the ThreadSanitizer build (make tsan).
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "platform/thread.h"
#include "tests/support/link_fixture.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <atomic>

using namespace testing_support;

namespace {

Bytes Panel() {
    return PanelFrame({
        CommonPart('N', 0x10000, 1) + U32(4) + U32(0) + AttributeBlock({}),
        CommonPart('T', 0, 2) + U32(0) + AttributeBlock({{'m', U32(8)}}),
        CommonPart('G', 0, 3) + U32(1) + U8({0}) + AttributeBlock({{'r', U32(1)}}),
        CommonPart('G', 0, 4) + U32(1) + U8({0}) + AttributeBlock({{'r', U32(1)}}),
    });
}

struct Device {
    plat::SocketHandle socket;
    int frames;
    std::atomic<bool> done{false};
};

// Pushes value updates of control 1 (and now and then a whole new panel).
void Push(void* p) {
    auto* d = static_cast<Device*>(p);
    for (int i = 1; i <= d->frames; ++i) {
        Bytes frame = i % 25 == 0 ? Panel() : FrameHead(9, 8) + U32(1) + U32(1) + U32(4) + U32(i);
        if (!SendPeer(d->socket, frame)) break;
    }
    d->done = true;
}

}  // namespace

TEST_F(LinkTest, WorkerAndScreenShareTheStore) {
    StartLink();
    ASSERT_EQ(2, Deliver(Panel()));
    Restart();

    Device device{pair.device, 201};
    ASSERT_EQ(0, plat::StartDetachedThread(Push, &device));
    int results = 0;
    std::uint8_t on = 255;
    const char16_t text[] = u"abc";
    while (results < device.frames) {
        unsigned message;
        ASSERT_TRUE(posts.Next(&message)) << "after " << results << " results";
        ++results;
        // What the screen does between results: read, edit, send.
        std::int32_t value = 0;
        std::size_t size = sizeof value;
        GetControlValue(1, &value, &size);
        {
            ControlsHold hold;
            for (std::int32_t i = 0; i < ControlCount(); ++i) IsValueChanged(ControlIdAt(i));
        }
        SetControlValue(2, text, sizeof text);
        ClearRadioGroup(1);
        SetControlValue(3 + results % 2, &on, 1);
        LinkSendPendingValues();
        DrainPeer(pair.device, 0);
        Restart();
    }
    ASSERT_TRUE(WaitUntil([&] { return device.done.load(); }));
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    GetControlValue(1, &value, &size);
    EXPECT_EQ(201, value) << "the last update wins";
}
