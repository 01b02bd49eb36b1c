#include "panel/message_control.h"
#include "tests/panel/panel_fixture.h"

#include <condition_variable>
#include <mutex>

namespace {

using namespace panel_testing;
using testing_support::WaitUntil;

// Boxes stay open until the test closes them, as a user would.
class HeldBoxes {
public:
    HeldBoxes() {
        self_ = this;
        previous_ = plat::SetMessageBoxHook(&Hook);
    }
    ~HeldBoxes() {
        CloseAll();
        WaitUntil([] { return OpenMessageBoxes() == 0; });
        plat::SetMessageBoxHook(previous_);
        self_ = nullptr;
    }
    std::size_t Shown() {
        std::lock_guard<std::mutex> hold(mutex_);
        return shown_.size();
    }
    testing_support::RecordedBox Box(std::size_t i) {
        std::lock_guard<std::mutex> hold(mutex_);
        return shown_.at(i);
    }
    void CloseOne() {
        std::lock_guard<std::mutex> hold(mutex_);
        ++closable_;
        changed_.notify_all();
    }
    void CloseAll() {
        std::lock_guard<std::mutex> hold(mutex_);
        closable_ = 1000;
        changed_.notify_all();
    }

private:
    static int Hook(plat::WindowRef owner, const std::u16string& text,
                    const std::u16string& caption, unsigned flags) {
        HeldBoxes* self = self_;
        std::unique_lock<std::mutex> hold(self->mutex_);
        self->shown_.push_back({owner, text, caption, flags});
        self->changed_.wait_for(hold, std::chrono::seconds(10),
                                [self] { return self->closable_ > 0; });
        if (self->closable_ > 0) --self->closable_;
        return plat::kIdOk;
    }
    static inline HeldBoxes* self_ = nullptr;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<testing_support::RecordedBox> shown_;
    int closable_ = 0;
    plat::MessageBoxHook previous_;
};

std::atomic<int> g_focusReturns{0};
void CountFocusReturn() { ++g_focusReturns; }

using MessageControl = PanelTest;

TEST_F(MessageControl, IconFromTheFlagBits) {
    const std::pair<std::uint32_t, unsigned> cases[] = {
        {0x00000, 0},    {0x10000, 0},    {0x20000, 0x10}, {0x30000, 0x30},
        {0x40000, 0x20}, {0x50000, 0},    {0x70000, 0},    {0x20011, 0x10},
    };
    for (auto [flags, icon] : cases) EXPECT_EQ(icon, MessageIconFlags(flags)) << std::hex << flags;
}

TEST_F(MessageControl, TheBoxShowsTheTextUnderThePanelName) {
    SetControls({TextControl(7, u"M", u"Door open", 0x30000, kTypeMessage)});
    ASSERT_TRUE(StartMessageBox(7, nullptr));
    ASSERT_TRUE(boxes.WaitFor(u"Door open", std::chrono::seconds(5)));
    testing_support::RecordedBox box = boxes.Boxes().at(0);
    EXPECT_EQ(LinkPanelId(), box.caption);
    EXPECT_EQ(0x30u, box.flags) << "OK button and the exclamation icon";
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 0; }));
}

TEST_F(MessageControl, OnlyVisibleMessagesOpenABox) {
    SetControls({TextControl(1, u"M", u"x", kFlagHidden, kTypeMessage),
                 TextControl(2, u"T", u"x")});
    EXPECT_FALSE(StartMessageBox(1, nullptr));
    EXPECT_FALSE(StartMessageBox(2, nullptr));
    EXPECT_FALSE(StartMessageBox(3, nullptr));
    EXPECT_EQ(0, OpenMessageBoxes());
    EXPECT_EQ(0u, boxes.Count());
}

TEST_F(MessageControl, FocusReturnsOnlyWhenTheLastBoxCloses) {
    HeldBoxes held;
    g_focusReturns = 0;
    SetControls({TextControl(1, u"M", u"first", 0, kTypeMessage),
                 TextControl(2, u"M", u"second", 0, kTypeMessage)});
    ASSERT_TRUE(StartMessageBox(1, &CountFocusReturn));
    ASSERT_TRUE(StartMessageBox(2, &CountFocusReturn));
    ASSERT_TRUE(WaitUntil([&] { return held.Shown() == 2; }));
    EXPECT_EQ(2, OpenMessageBoxes());

    held.CloseOne();
    ASSERT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 1; }));
    EXPECT_EQ(0, g_focusReturns.load());

    held.CloseOne();
    ASSERT_TRUE(WaitUntil([] { return g_focusReturns == 1; }));
    EXPECT_EQ(0, OpenMessageBoxes());
}

TEST_F(MessageControl, TheTextIsReadUpTo1024Bytes) {
    SetControls({TextControl(1, u"M", std::u16string(700, u'w'), 0, kTypeMessage)});
    ASSERT_TRUE(StartMessageBox(1, nullptr));
    ASSERT_TRUE(boxes.WaitFor(std::u16string(512, u'w'), std::chrono::seconds(5)));
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 0; }));
}

}  // namespace
