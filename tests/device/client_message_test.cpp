// The decoder of what the client sends, against frames written from the tables, whole and
// in every split a stream can bring.
#include "device/client_message.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace testing_support;

namespace {

constexpr std::uint32_t kBlobKey = 22;

bool IsBlob(std::uint32_t key) { return key == kBlobKey; }

// "type/flags", then a value message's count, items ("key=hex", "+" marking a Blob's empty
// trailer) and cut, and the default layout request's payload.
std::string Describe(const dev::ClientMessage& m) {
    std::ostringstream s;
    s << m.type << "/" << m.flags;
    if (m.type == 7) s << " count " << m.count;
    for (const dev::ValueItem& item : m.items) {
        s << " " << item.key << (item.blobTrailer ? "+=" : "=") << Hex(item.data);
    }
    if (m.truncated) s << " cut";
    if (m.payload) s << " payload " << m.payload;
    return s.str();
}

struct Decoded {
    std::vector<std::string> messages;
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
            else out.messages.push_back(Describe(m));
        }
    }
    return out;
}

Bytes Item(std::uint32_t key, const Bytes& data) {
    return U32(key) + U32(static_cast<std::uint32_t>(data.size())) + data;
}

}  // namespace

TEST(DeviceClientMessages, EveryFrameTheClientSendsInEverySplitOfTheStream) {
    const Bytes big(68, 0x31);
    const Bytes stream =
        U8({0x48, 0xEF, 0xF0, 0x01}) + FrameHead(1, 2) + FrameHead(4, 2) + FrameHead(10, 2) +
        FrameHead(12, 2) + FrameHead(14, 2) +
        // The Blob's empty item follows it outside the count.
        FrameHead(7, 2) + U32(3) + Item(4, U8({255})) + Item(kBlobKey, Ascii("url")) +
        Item(kBlobKey, {}) + Item(30, big) + U8({0x48, 0xEF, 0xF0}) +
        // The client stops a value message at a control it cannot send and sends on later.
        FrameHead(7, 2) + U32(3) + Item(9, U32(300)) + FrameHead(18, 2) + U32(0x300);
    const std::vector<std::string> expected = {
        "1/2", "4/2", "10/2", "12/2", "14/2",
        "7/2 count 3 4=FF 22=75 72 6C 22+= 30=" + Hex(big),
        "7/2 count 3 9=2C 01 00 00 cut", "18/2 payload 768"};
    for (std::size_t piece = 1; piece <= stream.size(); ++piece) {
        Decoded d = DecodeStream(stream, piece);
        EXPECT_EQ(expected, d.messages) << "pieces of " << piece;
        EXPECT_TRUE(d.errors.empty()) << "pieces of " << piece;
    }
}

TEST(DeviceClientMessages, FramesThatCannotBeReadAreDroppedAndReadingResumes) {
    const struct {
        const char* name;
        Bytes bad;
        const char* error;
    } cases[] = {
        {"unknown type", FrameHead(99, 2) + U32(0), "unknown message type 99"},
        {"too many items", FrameHead(7, 2) + U32(5000), "5000 items"},
        {"an item beyond the ceiling", FrameHead(7, 2) + U32(1) + U32(4) + U32(2u << 20),
         "claims 2097152 bytes"},
        {"a Blob without its empty item",
         FrameHead(7, 2) + U32(1) + Item(kBlobKey, U8({1})) + Item(4, U8({1})),
         "not followed by its empty item"},
    };
    for (const auto& c : cases) {
        const Bytes stream = c.bad + FrameHead(12, 2);
        Decoded d = DecodeStream(stream, stream.size());
        ASSERT_EQ(1u, d.errors.size()) << c.name;
        EXPECT_NE(std::string::npos, d.errors[0].find(c.error)) << c.name << ": " << d.errors[0];
        EXPECT_EQ(std::vector<std::string>{"12/2"}, d.messages) << c.name;
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
    const struct {
        Bytes item;
        bool utf16;
        bool ok;
        std::string first, second;
    } cases[] = {
        {Ascii("1234") + Bytes(30, 0) + Ascii("new") + Bytes(31, 0), false, true, "1234", "new"},
        {Utf16(u"ab") + Bytes(30, 0) + Bytes(34, 0), true, true, "ab", ""},
        // A field never reads into the next.
        {Bytes(68, 'x'), false, true, std::string(34, 'x'), std::string(34, 'x')},
        {Bytes(67, 0), false, false, "", ""},
    };
    for (const auto& c : cases) {
        dev::PasswordFields f;
        ASSERT_EQ(c.ok, dev::ReadPasswordFields(c.item, c.utf16, &f)) << c.item.size();
        EXPECT_EQ(c.first, f.first);
        EXPECT_EQ(c.second, f.second);
    }
}
