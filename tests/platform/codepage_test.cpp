#include "platform/browser.h"
#include "platform/codepage.h"

#include <gtest/gtest.h>

#include <string>

TEST(CodePage, BytesToUtf16) {
    struct Case {
        std::string bytes;
        std::u16string text;
    } cases[] = {
        {"caf\xE9", u"caf\u00E9"},
        {"\x80 5", u"\u20AC 5"},       // the euro sign of the code page
        {"\x93q\x94", u"\u201Cq\u201D"},
        {"", u""},
    };
    for (const auto& c : cases) {
        char16_t out[32] = {};
        int n = plat::CodePageToWide(c.bytes.data(), static_cast<int>(c.bytes.size()), out, 32);
        EXPECT_EQ(c.text, std::u16string(out, static_cast<size_t>(n))) << c.bytes;
    }
}

TEST(CodePage, Utf16ToBytes) {
    struct Case {
        std::u16string text;
        std::string bytes;
    } cases[] = {
        {u"abc", "abc"},
        {u"\u00E9t\u00E9", "\xE9t\xE9"},
        {u"\u20AC", "\x80"},
        {u"\u4E2D", "?"},  // not in the code page
    };
    for (const auto& c : cases) {
        char out[32] = {};
        int n = plat::WideToCodePage(c.text.data(), static_cast<int>(c.text.size()), out, 32);
        EXPECT_EQ(c.bytes, std::string(out, static_cast<size_t>(n)));
    }
}

TEST(CodePage, SizesTerminatorsAndShortBuffers) {
    EXPECT_EQ(4, plat::CodePageToWide("abc", -1, nullptr, 0)) << "-1 counts the terminator";
    EXPECT_EQ(3, plat::WideToCodePage(u"abc", 3, nullptr, 0));
    char16_t small[2];
    EXPECT_EQ(0, plat::CodePageToWide("abcd", 4, small, 2)) << "too small is a failure";
    char narrow[2];
    EXPECT_EQ(0, plat::WideToCodePage(u"abcd", 4, narrow, 2));
    EXPECT_EQ(0, plat::CodePageToWide("abc", 0, small, 2));
}

TEST(FileAddress, IsAFileUrlTheBrowserOpens) {
    const struct {
        std::u16string path;
        std::u16string address;
    } cases[] = {
        {u"C:\\Users\\me\\report.html", u"file:///C:/Users/me/report.html"},
        {u"/home/me/received/a b#1?.htm", u"file:///home/me/received/a%20b%231%3F.htm"},
        {u"C:\\100%\\\u00e9\u20ac\U0001F600", u"file:///C:/100%25/%C3%A9%E2%82%AC%F0%9F%98%80"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.address, plat::FileAddress(c.path));
}
