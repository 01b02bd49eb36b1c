#include "panel/message_control.h"
#include "tests/panel/panel_fixture.h"

#include <atomic>

namespace {

using namespace panel_testing;
using testing_support::WaitUntil;

// Boxes stay open until the test lets one close, as a user would.
std::atomic<int> g_shown{0}, g_closable{0}, g_focusReturns{0};

int HeldBox(plat::WindowRef, const std::u16string&, const std::u16string&, unsigned) {
    ++g_shown;
    WaitUntil([] {
        int n = g_closable;
        return n > 0 && g_closable.compare_exchange_weak(n, n - 1);
    });
    return plat::kIdOk;
}

void CountFocusReturn() { ++g_focusReturns; }

using MessageControl = PanelTest;

TEST_F(MessageControl, TheBoxShowsTheTextUnderThePanelNameWithItsIcon) {
    const std::pair<std::uint32_t, unsigned> icons[] = {
        {0x10000, 0}, {0x20011, 0x10}, {0x40000, 0x20}, {0x70000, 0}};
    for (auto [flags, icon] : icons) EXPECT_EQ(icon, MessageIconFlags(flags)) << flags;

    SetControls({TextControl(7, u"M", u"Door open", 0x30000, kTypeMessage),
                 TextControl(8, u"M", u"x", kFlagHidden, kTypeMessage), TextControl(9, u"T", u"x")});
    EXPECT_FALSE(StartMessageBox(8, nullptr)) << "hidden";
    EXPECT_FALSE(StartMessageBox(9, nullptr)) << "not a Message";
    ASSERT_TRUE(StartMessageBox(7, nullptr));
    ASSERT_TRUE(boxes.WaitFor(u"Door open", std::chrono::seconds(5)));
    ASSERT_EQ(1u, boxes.Count());
    EXPECT_EQ(LinkPanelId(), boxes.Boxes()[0].caption);
    EXPECT_EQ(0x30u, boxes.Boxes()[0].flags) << "OK button and the exclamation icon";
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 0; }));
}

TEST_F(MessageControl, FocusReturnsOnlyWhenTheLastBoxCloses) {
    g_shown = g_closable = g_focusReturns = 0;
    plat::MessageBoxHook previous = plat::SetMessageBoxHook(&HeldBox);
    SetControls({TextControl(1, u"M", u"first", 0, kTypeMessage),
                 TextControl(2, u"M", u"second", 0, kTypeMessage)});
    ASSERT_TRUE(StartMessageBox(1, &CountFocusReturn));
    ASSERT_TRUE(StartMessageBox(2, &CountFocusReturn));
    EXPECT_TRUE(WaitUntil([] { return g_shown == 2; }));
    EXPECT_EQ(2, OpenMessageBoxes());

    ++g_closable;
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 1; }));
    EXPECT_EQ(0, g_focusReturns.load());
    ++g_closable;
    EXPECT_TRUE(WaitUntil([] { return g_focusReturns == 1; }));
    EXPECT_EQ(0, OpenMessageBoxes());
    plat::SetMessageBoxHook(previous);
}

}  // namespace
