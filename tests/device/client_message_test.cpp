// The decoder of what the client sends, against frames written from the tables, whole and
// in every split a stream can bring.
#include "device/client_message.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

constexpr std::uint32_t kBlobKey = 22;

bool IsBlob(std::uint32_t key) { return key == kBlobKey; }

struct Decoded {
    std::vector<dev::ClientMessage> messages;
    std::vector<std::string> errors;
};

// Feeds the bytes in pieces of the given size as a server would, dropping what is consumed.
Decoded DecodeStream(const Bytes& stream, std::size_t piece) {
    Decoded out;
    Bytes buffer;
    for (std::size_t at = 0; at < stream.size(); at += piece) {
        buffer.insert(buffer.end(), stream.begin() + at,
                      stream.begin() + std::min(stream.size(), at + piece));
        for (;;) {
            dev::ClientMessage m;
            dev::DecodeOutcome o = dev::DecodeClientMessage(buffer.data(), buffer.size(), IsBlob, &m);
            EXPECT_LE(o.consumed, buffer.size());
            buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(o.consumed));
            if (o.status == dev::DecodeStatus::kNeedMore) break;
            if (o.status == dev::DecodeStatus::kMalformed) out.errors.push_back(o.error);
            else out.messages.push_back(m);
        }
    }
    return out;
}

Decoded DecodeWhole(const Bytes& stream) { return DecodeStream(stream, stream.size()); }

Bytes Item(std::uint32_t key, const Bytes& data) {
    return U32(key) + U32(static_cast<std::uint32_t>(data.size())) + data;
}

}  // namespace

TEST(DeviceClientMessages, HeadOnlyFramesAndTheDefaultLayoutPayload) {
    const Bytes stream = FrameHead(1, 2) + FrameHead(4, 2) + FrameHead(10, 2) + FrameHead(12, 2) +
                         FrameHead(14, 2) + FrameHead(18, 2) + U32(0x300);
    Decoded d = DecodeWhole(stream);
    ASSERT_EQ(6u, d.messages.size());
    const std::uint16_t types[] = {1, 4, 10, 12, 14, 18};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(types[i], d.messages[i].type);
        EXPECT_EQ(2, d.messages[i].flags);
    }
    EXPECT_EQ(0x300u, d.messages[5].payload);
    EXPECT_TRUE(d.errors.empty());
}

TEST(DeviceClientMessages, ValueItemsWithTheBlobsUncountedEmptyItem) {
    const Bytes stream = FrameHead(7, 2) + U32(3) + Item(4, U8({255})) +
                         Item(kBlobKey, Ascii("url")) + Item(kBlobKey, {}) +
                         Item(30, Bytes(68, 0x31)) + FrameHead(10, 2);
    Decoded d = DecodeWhole(stream);
    ASSERT_EQ(2u, d.messages.size());
    const dev::ClientMessage& m = d.messages[0];
    EXPECT_EQ(7, m.type);
    EXPECT_EQ(3u, m.count);
    ASSERT_EQ(4u, m.items.size());
    EXPECT_EQ(Hex(U8({255})), Hex(m.items[0].data));
    EXPECT_EQ(kBlobKey, m.items[1].key);
    EXPECT_FALSE(m.items[1].blobTrailer);
    EXPECT_EQ(kBlobKey, m.items[2].key);
    EXPECT_TRUE(m.items[2].blobTrailer);
    EXPECT_TRUE(m.items[2].data.empty());
    EXPECT_EQ(30u, m.items[3].key);
    EXPECT_EQ(68u, m.items[3].data.size());
    EXPECT_FALSE(m.truncated);
    EXPECT_EQ(10, d.messages[1].type) << "the frame after the items is read in step";
}

TEST(DeviceClientMessages, EverySplitOfTheStreamGivesTheSameMessages) {
    const Bytes stream = U8({0x48, 0xEF, 0xF0, 0x01}) + FrameHead(7, 2) + U32(2) +
                         Item(9, U32(300)) + Item(kBlobKey, U8({1, 2})) + Item(kBlobKey, {}) +
                         U8({0x48, 0xEF, 0xF0}) + FrameHead(18, 2) + U32(0x300);
    for (std::size_t piece = 1; piece <= stream.size(); ++piece) {
        Decoded d = DecodeStream(stream, piece);
        ASSERT_EQ(2u, d.messages.size()) << "pieces of " << piece;
        EXPECT_EQ(3u, d.messages[0].items.size()) << "pieces of " << piece;
        EXPECT_EQ(Hex(U32(300)), Hex(d.messages[0].items[0].data));
        EXPECT_EQ(0x300u, d.messages[1].payload) << "pieces of " << piece;
        EXPECT_TRUE(d.errors.empty());
    }
}

TEST(DeviceClientMessages, AMessageCutShortByTheNextFrameEndsThere) {
    // The client stops a value message at a control it cannot send and sends on later.
    const Bytes stream = FrameHead(7, 2) + U32(3) + Item(4, U8({0})) + FrameHead(10, 2);
    Decoded d = DecodeWhole(stream);
    ASSERT_EQ(2u, d.messages.size());
    EXPECT_TRUE(d.messages[0].truncated);
    EXPECT_EQ(1u, d.messages[0].items.size());
    EXPECT_EQ(10, d.messages[1].type);
}

TEST(DeviceClientMessages, FramesThatCannotBeReadAreDroppedAndReadingResumes) {
    struct Case {
        const char* name;
        Bytes bad;
        const char* error;
    } cases[] = {
        {"unknown type", FrameHead(99, 2) + U32(0), "unknown message type 99"},
        {"too many items", FrameHead(7, 2) + U32(5000), "5000 items"},
        {"an item beyond the ceiling", FrameHead(7, 2) + U32(1) + U32(4) + U32(2u << 20),
         "claims 2097152 bytes"},
        {"a Blob without its empty item", FrameHead(7, 2) + U32(1) + Item(kBlobKey, U8({1})) +
                                              Item(4, U8({1})),
         "not followed by its empty item"},
    };
    for (const Case& c : cases) {
        Decoded d = DecodeWhole(c.bad + FrameHead(12, 2));
        ASSERT_EQ(1u, d.errors.size()) << c.name;
        EXPECT_NE(std::string::npos, d.errors[0].find(c.error)) << c.name << ": " << d.errors[0];
        ASSERT_EQ(1u, d.messages.size()) << c.name;
        EXPECT_EQ(12, d.messages[0].type) << c.name;
    }
}

TEST(DeviceClientMessages, GarbageWithoutAMarkerIsDroppedButAPossibleMarkerStartKept) {
    Bytes garbage(100, 0x55);
    garbage.insert(garbage.end(), {0x48, 0xEF, 0xF0, 0x74});
    dev::ClientMessage m;
    dev::DecodeOutcome o = dev::DecodeClientMessage(garbage.data(), garbage.size(), IsBlob, &m);
    EXPECT_EQ(dev::DecodeStatus::kNeedMore, o.status);
    EXPECT_EQ(garbage.size() - 7, o.consumed);
}

TEST(DeviceClientMessages, PasswordFields) {
    Bytes eight = Ascii("1234") + Bytes(30, 0) + Ascii("new") + Bytes(31, 0);
    Bytes wide = Utf16(u"ab") + Bytes(30, 0) + Bytes(34, 0);
    dev::PasswordFields f;
    ASSERT_TRUE(dev::ReadPasswordFields(eight, false, &f));
    EXPECT_EQ("1234", f.first);
    EXPECT_EQ("new", f.second);
    ASSERT_TRUE(dev::ReadPasswordFields(wide, true, &f));
    EXPECT_EQ("ab", f.first);
    EXPECT_EQ("", f.second);
    Bytes unterminated(68, 'x');
    ASSERT_TRUE(dev::ReadPasswordFields(unterminated, false, &f));
    EXPECT_EQ(std::string(34, 'x'), f.first) << "a field never reads into the next";
    EXPECT_FALSE(dev::ReadPasswordFields(Bytes(67, 0), false, &f));
}
