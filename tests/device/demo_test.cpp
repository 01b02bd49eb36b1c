// The demo device's own rules: where its Messages stand, and how it takes what the client
// sends.
#include "device/client_message.h"
#include "device/control_flags.h"
#include "device/demo/demo_apply.h"
#include "device/demo/demo_panel.h"
#include "device/values.h"
#include "tests/support/wire_builder.h"

#include <gtest/gtest.h>

#include <set>

using namespace testing_support;
using namespace demo;

namespace {

dev::ClientMessage Values(std::vector<dev::ValueItem> items) {
    dev::ClientMessage m;
    m.type = 7;
    m.count = static_cast<std::uint32_t>(items.size());
    m.items = std::move(items);
    return m;
}

dev::Bytes Password(const std::string& first, const std::string& second) {
    dev::Bytes b(68, 0);
    std::copy(first.begin(), first.end(), b.begin());
    std::copy(second.begin(), second.end(), b.begin() + 34);
    return b;
}

// The data of the last value item for key in the reaction, or empty.
dev::Bytes Echo(const Reaction& r, std::uint32_t key) {
    dev::Bytes out;
    for (const dev::Item& item : r.values) {
        if (item.key == key) out = item.data;
    }
    return out;
}

std::set<std::uint32_t> LayoutKeys(const Reaction& r) {
    std::set<std::uint32_t> keys;
    for (const dev::Item& item : r.layouts) keys.insert(item.key);
    return keys;
}

}  // namespace

TEST(DemoPanel, EachVisibilityHasAMessageAtThePositionOfTheRowCount) {
    // The client announces a Message only from the position equal to its row count.
    for (bool open : {false, true}) {
        for (bool loggedIn : {false, true}) {
            DemoState state = MakeDemoState();
            state.advancedOpen = open;
            state.loggedIn = loggedIn;
            const std::vector<dev::Record> records = DemoRecords(state);
            std::uint32_t rows = 0;
            for (const dev::Record& r : records) {
                rows += (r.tag != 'X' && !(r.flags & dev::kHidden)) ? 1 : 0;
            }
            ASSERT_LT(rows, records.size());
            EXPECT_EQ('X', records[rows].tag);
            EXPECT_EQ(records[rows].key, DemoMessageFor(state)) << open << loggedIn;
            EXPECT_EQ(rows, DemoVisibleRows(state));
        }
    }
}

TEST(DemoPanel, KeysAreUniqueAndOnlyTheManualIsABlob) {
    std::set<std::uint32_t> keys;
    for (const dev::Record& r : DemoRecords(MakeDemoState())) {
        EXPECT_TRUE(keys.insert(r.key).second) << r.key;
        EXPECT_EQ(r.tag == 'O', DemoIsBlob(r.key)) << r.key;
    }
}

TEST(DemoApply, ValuesAreClampedCheckedAndEchoed) {
    struct Case {
        const char* name;
        dev::ValueItem item;
        std::uint32_t echoKey;
        Bytes echo;
    } cases[] = {
        {"set point above its maximum", {kKeySetPoint, U32(400)}, kKeySetPoint, U32(300)},
        {"set point below its minimum", {kKeySetPoint, U32(0xFFFFFFFF)}, kKeySetPoint, U32(50)},
        {"list index past the end", {kKeyMode, U32(7)}, kKeyMode, U32(3)},
        {"lamp on", {kKeyLamp, U8({1})}, kKeyLamp, U8({255})},
        {"name", {kKeyName, Ascii("Al") + Bytes(30, 0)}, kKeyName, Ascii("Al") + Bytes(30, 0)},
        {"date gets its weekday", {kKeyAlarm, U8({0, 5, 6, 29, 0, 2, 0xD0, 0x07})}, kKeyAlarm,
         U8({0, 5, 6, 29, 2, 2, 0xD0, 0x07})},  // 29 February 2000, a Tuesday
        {"an impossible date keeps the old one", {kKeyAlarm, U8({0, 5, 6, 29, 0, 2, 0xD1, 0x07})},
         kKeyAlarm, U8({0, 30, 7, 1, 2, 1, 0xEE, 0x07})},
        {"a short number is ignored", {kKeySetPoint, U8({1})}, kKeySetPoint, {}},
    };
    for (const auto& c : cases) {
        DemoState state = MakeDemoState();
        Reaction r;
        ApplyValues(state, Values({c.item}), &r);
        EXPECT_EQ(Hex(c.echo), Hex(Echo(r, c.echoKey))) << c.name;
    }
}

TEST(DemoApply, TheTickedRadioButtonWinsAndTheGroupIsEchoed) {
    DemoState state = MakeDemoState();
    Reaction r;
    ApplyValues(state, Values({{kKeySpeedLow, U8({0})}, {kKeySpeedMedium, U8({0})},
                               {kKeySpeedHigh, U8({255})}}), &r);
    EXPECT_EQ(2, state.speed);
    EXPECT_EQ(Hex(U8({0})), Hex(Echo(r, kKeySpeedLow)));
    EXPECT_EQ(Hex(U8({0})), Hex(Echo(r, kKeySpeedMedium)));
    EXPECT_EQ(Hex(U8({255})), Hex(Echo(r, kKeySpeedHigh)));
}

TEST(DemoApply, PasswordLogsInShowsWhatItGuardsChangesAndLogsOut) {
    DemoState state = MakeDemoState();
    Reaction wrong;
    ApplyValues(state, Values({{kKeyService, Password("12345", "")}}), &wrong);
    EXPECT_FALSE(state.loggedIn);
    EXPECT_TRUE(wrong.popup);
    EXPECT_EQ(2, wrong.popupIcon);
    EXPECT_TRUE(wrong.layouts.empty());

    Reaction guardedPress;
    ApplyValues(state, Values({{kKeyReport, {}}, {kKeyOffset, U32(5)}}), &guardedPress);
    EXPECT_FALSE(guardedPress.pushReport) << "guarded controls do nothing while logged out";
    EXPECT_EQ(0, state.offset);

    Reaction login;
    ApplyValues(state, Values({{kKeyService, Password("1234", "")}}), &login);
    EXPECT_TRUE(state.loggedIn);
    EXPECT_EQ(Hex(U8({1})), Hex(Echo(login, kKeyService)));
    EXPECT_EQ((std::set<std::uint32_t>{kKeyOffset, kKeyReport}), LayoutKeys(login));

    Reaction change;
    ApplyValues(state, Values({{kKeyService, Password("1234", "99")}}), &change);
    EXPECT_EQ("99", state.password);

    Reaction press;
    ApplyValues(state, Values({{kKeyReport, {}}}), &press);
    EXPECT_TRUE(press.pushReport);

    Reaction logout;
    ApplyValues(state, Values({{kKeyService, Password("", "")}}), &logout);
    EXPECT_FALSE(state.loggedIn);
    EXPECT_EQ(Hex(U8({0})), Hex(Echo(logout, kKeyService)));
    EXPECT_EQ((std::set<std::uint32_t>{kKeyOffset, kKeyReport}), LayoutKeys(logout));
}

TEST(DemoApply, TheSectionShowsAndHidesWhatIsUnderIt) {
    DemoState state = MakeDemoState();
    Reaction open;
    ApplyValues(state, Values({{kKeyAdvanced, U8({255})}}), &open);
    EXPECT_EQ((std::set<std::uint32_t>{kKeyPin, kKeyManual, kKeyLogo}), LayoutKeys(open));
    for (const dev::Item& item : open.layouts) EXPECT_EQ(0, item.data[0] & 1) << item.key;
    Reaction close;
    ApplyValues(state, Values({{kKeyAdvanced, U8({0})}}), &close);
    for (const dev::Item& item : close.layouts) EXPECT_EQ(1, item.data[0] & 1) << item.key;
}
