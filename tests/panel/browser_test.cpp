// What a device may hand to the browser, and how the browser is started with it.
#include "panel/browser_targets.h"
#include "platform/browser.h"

#include <gtest/gtest.h>

TEST(BrowserTargets, OnlyWebAddressesAndDocumentsABrowserShows) {
    const struct {
        std::u16string text;
        bool address;
        bool document;
    } cases[] = {
        {u"http://bench.lab/status", true, false},
        {u"HTTPS://bench.lab/report.html", true, true},
        {u"https://", false, false},
        {u"C:\\Windows\\System32\\calc.exe", false, false},
        {u"file:///C:/evil.exe", false, false},
        {u"javascript:alert(1)", false, false},
        {u"report.HTML", false, true},
        {u"chart.png", false, true},
        {u"notes.txt", false, true},
        {u"evil.exe", false, false},
        {u"page.html.exe", false, false},
        {u"tool.hta", false, false},
        {u"readme", false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.address, IsWebAddress(c.text)) << std::string(c.text.begin(), c.text.end());
        EXPECT_EQ(c.document, IsBrowserDocument(c.text)) << std::string(c.text.begin(), c.text.end());
    }
}

TEST(BrowserCommand, TheAddressIsOneArgumentOfTheRegisteredBrowser) {
    const struct {
        std::u16string registered;
        std::u16string address;
        std::u16string program;  // empty: no browser
        std::u16string line;
    } cases[] = {
        {u"\"C:\\windows\\system32\\winebrowser.exe\" \"%1\"", u"file:///C:/r/a.html",
         u"C:\\windows\\system32\\winebrowser.exe",
         u"\"C:\\windows\\system32\\winebrowser.exe\" \"file:///C:/r/a.html\""},
        {u"C:\\b\\browser.exe -url %1 -new", u"http://x/", u"C:\\b\\browser.exe",
         u"\"C:\\b\\browser.exe\" -url http://x/ -new"},
        {u"  \"C:\\b.exe\"", u"http://x/", u"C:\\b.exe", u"\"C:\\b.exe\" \"http://x/\""},
        {u"b.exe %L", u"http://x/\" --evil \"a b", u"b.exe",
         u"\"b.exe\" http://x/%22%20--evil%20%22a%20b"},
        {u"", u"http://x/", u"", u""},
        {u"   ", u"http://x/", u"", u""},
        {u"\"unclosed", u"http://x/", u"", u""},
    };
    for (const auto& c : cases) {
        const auto command = plat::PlanBrowserCommand(c.registered, c.address);
        if (c.program.empty()) {
            EXPECT_FALSE(command.has_value());
            continue;
        }
        ASSERT_TRUE(command.has_value());
        EXPECT_EQ(c.program, command->program);
        EXPECT_EQ(c.line, command->commandLine);
    }
}
