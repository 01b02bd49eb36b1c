#include "link/decoders.h"
#include "link/link_client.h"
#include "link/received_name.h"
#include "model/control_store.h"
#include "platform/files.h"
#include "platform/utf.h"
#include "tests/support/records.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

class Files : public ::testing::Test {
protected:
    void SetUp() override {
        LinkInit();
        ControlRecord files;
        files.type = kTypeFiles;
        files.controlKey = 12;
        ControlRecord wide = files;
        wide.controlKey = 13;
        wide.flags = kFlagUtf16;
        SwapInControls({files, wide});
        folder_ = fs::path(plat::Utf16ToUtf8(plat::ReceivedFilesFolder()));
    }
    void TearDown() override { LinkShutdown(); }
    DecodeStatus Receive(const Bytes& payload) {
        payload_ = payload;
        MemoryInput input{payload_.data(), payload_.size()};
        ReceiveSource source = MemoryReceiveSource(&input);
        return DecodeFiles(source);
    }
    std::string Content(const std::string& name) {
        std::ifstream in(folder_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    std::size_t FileCount() {
        std::size_t n = 0;
        for (const auto& e : fs::directory_iterator(folder_)) n += e.is_regular_file() ? 1 : 0;
        return n;
    }
    static Bytes File(const std::string& name, const std::string& content) {
        Bytes n = Ascii(name) + U8({0});
        return U32(static_cast<std::uint32_t>(n.size())) + n +
               U32(static_cast<std::uint32_t>(content.size())) + Ascii(content);
    }
    TempFolder temp_;
    fs::path folder_;
    Bytes payload_;
};

}  // namespace

TEST(ReceivedName, OnlyAPlainLastComponentIsWritten) {
    struct Case {
        std::u16string sent;
        std::u16string written;  // empty: refused
    } cases[] = {
        {u"\\My Documents\\report.html", u"report.html"},
        {u"/tmp/x/data.csv", u"data.csv"},
        {u"..\\..\\Windows\\evil.dll", u"evil.dll"},
        {u"plain.txt", u"plain.txt"},
        {u"", u""},
        {u"\\dir\\", u""},
        {u".", u""},
        {u"a/..", u""},
        {u"CON", u""},
        {u"Com7.log", u""},
        {u"COM10", u"COM10"},
        {u"C:evil", u""},
        {u"what?.txt", u""},
        {u"tab\there", u""},
        {u"trailing.", u""},
        {u"trailing ", u""},
        {std::u16string(256, u'a'), u""},
        {std::u16string(255, u'a'), std::u16string(255, u'a')},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.written, ReceivedFileName(c.sent)) << plat::Utf16ToUtf8(c.sent);
    }
}

TEST_F(Files, NoFilesStillMarksTheControl) {
    EXPECT_EQ(DecodeStatus::kOk, Receive(U32(12) + U32(0)));
    EXPECT_EQ(1, IsValueChanged(12));
    EXPECT_EQ(0u, FileCount());
    EXPECT_EQ(DecodeStatus::kOk, Receive(U32(12) + U32(0xFFFFFFFF)));
}

TEST_F(Files, TwoFilesAreWrittenAndTheFirstPathKept) {
    std::string big(10000, 'x');
    ASSERT_EQ(DecodeStatus::kOk, Receive(U32(12) + U32(2) + File("\\Temp\\first.html", "<p>1</p>") +
                         File("second.bin", big)));
    EXPECT_EQ("<p>1</p>", Content("first.html"));
    EXPECT_EQ(big, Content("second.bin"));
    ControlRecord* r = FindControl(12);
    ASSERT_TRUE(r->hasReceivedPath);
    EXPECT_EQ(plat::JoinPath(plat::ReceivedFilesFolder(), u"first.html"), r->receivedPath);
}

TEST_F(Files, AnExistingFileIsReplaced) {
    ASSERT_EQ(DecodeStatus::kOk, Receive(U32(12) + U32(1) + File("same.txt", "a long first version")));
    ASSERT_EQ(DecodeStatus::kOk, Receive(U32(12) + U32(1) + File("same.txt", "v2")));
    EXPECT_EQ("v2", Content("same.txt"));
}

TEST_F(Files, NamesOfAUtf16ControlAreUtf16AndUnknownKeysStillWrite) {
    Bytes name = Utf16(u"\u00E9t\u00E9.txt") + U8({0, 0});
    ASSERT_EQ(DecodeStatus::kOk, Receive(U32(13) + U32(1) + U32(static_cast<std::uint32_t>(name.size())) + name +
                         U32(2) + Ascii("ok")));
    EXPECT_EQ(plat::JoinPath(plat::ReceivedFilesFolder(), u"\u00E9t\u00E9.txt"),
              FindControl(13)->receivedPath);
    ASSERT_EQ(DecodeStatus::kOk, Receive(U32(999) + U32(1) + File("orphan.txt", "o")));
    EXPECT_EQ("o", Content("orphan.txt"));
}

TEST_F(Files, RefusedNamesWriteNothing) {
    for (const char* name : {"", "..", "aux", "x|y", "dir\\"}) {
        EXPECT_EQ(DecodeStatus::kFileNotCreated, Receive(U32(12) + U32(1) + File(name, "data"))) << name;
    }
    EXPECT_EQ(0u, FileCount());
    EXPECT_EQ(DecodeStatus::kMalformed, Receive(U32(12) + U32(1) + U32(100000) + Ascii("x"))) << "a name over the ceiling";
}
