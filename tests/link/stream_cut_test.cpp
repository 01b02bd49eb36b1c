// A recorded session cut at every byte offset: each cut must end the workers cleanly (the
// sanitizers watch for leaks and bad accesses) and leave a store that still answers.
#include "link/link_client.h"
#include "model/control_store.h"
#include "tests/support/recorders.h"
#include "tests/support/records.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

Bytes Session() {
    Bytes when = U8({5, 4, 14, 7, 1, 3}) + U16(2005);
    std::vector<Bytes> records = {
        CommonPart('T', 0, 1) + U32(3) + Ascii("abc") + AttributeBlock({{'Z', Ascii("Name")}, {'m', U32(16)}}),
        CommonPart('B', 0, 2) + U32(1) + U8({0}) + AttributeBlock({{'Z', Ascii("Go")}}),
        CommonPart('D', 0x10000, 3) + U32(8) + when + AttributeBlock({{'f', Ascii("%HH%:%mm%")}}),
        CommonPart('N', 0x70000, 4) + U32(4) + U32(5) + AttributeBlock({{'n', U32(0)}, {'x', U32(9)}}),
        CommonPart('M', 0x110000, 5) + U32(4 + 8 + 4) + U16(1) + U16(2) + U32(10) + U32(20) + U32(2) +
            AttributeBlock({{'n', U32(2)}, {'N', U32(1)}}),
        CommonPart('L', 0, 6) + U32(4) + U32(1) + AttributeBlock({{'I', Ascii(std::string("a\0b\0", 4))}, {'n', U32(2)}}),
        CommonPart('X', 0, 7) + U32(2) + Ascii("Hi") + AttributeBlock({{'m', U32(8)}}),
        CommonPart('F', 0x100000, 8) + U32(0) + AttributeBlock({}),
    };
    Bytes values = U32(3) + U32(1) + U32(2) + Ascii("z\0") + U32(4) + U32(4) + U32(7) + U32(5) +
                   U32(4) + U8({3, 0, 2, 0});
    Bytes layouts = U32(1) + U32(7) + U32(8) + U16(0x40) + U8({2, 0}) + U32(0xFF);
    Bytes file = U32(8) + U32(1) + U32(6) + Ascii("r.htm") + U8({0}) + U32(5) + Ascii("<p/>!");
    return U8({0x13, 0x48}) + FrameHead(2, 1) + U32(8) + Utf16(u"Demo") + U32(0) +
           FrameHead(19, 0) + U32(1) + U32(0) + U32(768) + U32(4) + PanelFrame(records, 8) +
           FrameHead(9, 8) + values + FrameHead(16, 8) + layouts + FrameHead(17, 8) + file +
           FrameHead(8, 0) + FrameHead(11, 0) + FrameHead(15, 0) + FrameHead(1, 0);
}

}  // namespace

TEST(StreamCut, EveryPrefixEndsCleanly) {
    TempFolder folder;
    MessageBoxRecorder boxes;
    PostRecorder posts;
    LinkInit();
    Bytes session = Session();
    std::size_t fullResults = 0;
    for (std::size_t cut = 0; cut <= session.size(); ++cut) {
        MemoryInput input{session.data(), cut};
        ReceiveSource source = MemoryReceiveSource(&input);
        std::size_t workers = 0;
        while (input.position < cut && workers <= cut) {
            RunReceiveWorker(source, nullptr);
            ++workers;
        }
        RunReceiveWorker(source, nullptr);  // the end of the stream: ends without a result
        std::size_t results = 0;
        while (posts.Next(nullptr, std::chrono::milliseconds(0))) ++results;
        ASSERT_LE(results, workers) << "cut " << cut;
        if (cut == session.size()) fullResults = results;
        // The store answers whatever the cut left in it.
        for (std::int32_t i = 0; i < ControlCount(); ++i) {
            std::size_t need = 0;
            GetControlValue(ControlIdAt(i), nullptr, &need);
        }
        LinkClose();
    }
    EXPECT_EQ(10u, fullResults) << "the whole session gives one result per message";
    LinkShutdown();
}
