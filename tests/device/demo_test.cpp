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

// What the device does with one value message.
Reaction Apply(DemoState& state, std::vector<dev::ValueItem> items) {
    dev::ClientMessage m;
    m.type = 7;
    m.count = static_cast<std::uint32_t>(items.size());
    m.items = std::move(items);
    Reaction r;
    ApplyValues(state, m, &r);
    return r;
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

TEST(DemoPanel, InEachVisibilityKeysAreUniqueOnlyTheManualIsABlobAndAMessageIsAtTheRowCount) {
    // The client announces a Message only from the position equal to its row count.
    for (bool open : {false, true}) {
        for (bool loggedIn : {false, true}) {
            DemoState state = MakeDemoState();
            state.advancedOpen = open;
            state.loggedIn = loggedIn;
            const std::vector<dev::Record> records = DemoRecords(state);
            std::uint32_t rows = 0;
            std::set<std::uint32_t> keys;
            for (const dev::Record& r : records) {
                rows += (r.tag != 'X' && !(r.flags & dev::kHidden)) ? 1 : 0;
                EXPECT_TRUE(keys.insert(r.key).second) << r.key;
                EXPECT_EQ(r.tag == 'O', DemoIsBlob(r.key)) << r.key;
            }
            ASSERT_LT(rows, records.size());
            EXPECT_EQ('X', records[rows].tag);
            EXPECT_EQ(records[rows].key, DemoMessageFor(state)) << open << loggedIn;
            EXPECT_EQ(rows, DemoVisibleRows(state));
        }
    }
}

TEST(DemoApply, ValuesAreClampedCheckedAndEchoed) {
    using Items = std::vector<dev::ValueItem>;
    const struct {
        const char* name;
        Items items;
        Items echoes;  // an empty echo: none for that key
    } cases[] = {
        {"set point above its maximum", {{kKeySetPoint, U32(400)}}, {{kKeySetPoint, U32(300)}}},
        {"set point below its minimum", {{kKeySetPoint, U32(0xFFFFFFFF)}},
         {{kKeySetPoint, U32(50)}}},
        {"list index past the end", {{kKeyMode, U32(7)}}, {{kKeyMode, U32(3)}}},
        {"lamp on", {{kKeyLamp, U8({1})}}, {{kKeyLamp, U8({255})}}},
        {"name", {{kKeyName, Ascii("Al") + Bytes(30, 0)}},
         {{kKeyName, Ascii("Al") + Bytes(30, 0)}}},
        {"date gets its weekday", {{kKeyAlarm, U8({0, 5, 6, 29, 0, 2, 0xD0, 0x07})}},
         {{kKeyAlarm, U8({0, 5, 6, 29, 2, 2, 0xD0, 0x07})}}},  // 29 February 2000, a Tuesday
        {"an impossible date keeps the old one",
         {{kKeyAlarm, U8({0, 5, 6, 29, 0, 2, 0xD1, 0x07})}},
         {{kKeyAlarm, U8({0, 30, 7, 1, 2, 1, 0xEE, 0x07})}}},
        {"a short number is ignored", {{kKeySetPoint, U8({1})}}, {{kKeySetPoint, {}}}},
        {"the ticked radio button wins and the whole group is echoed",
         {{kKeySpeedLow, U8({0})}, {kKeySpeedHigh, U8({255})}, {kKeySpeedMedium, U8({0})}},
         {{kKeySpeedLow, U8({0})}, {kKeySpeedMedium, U8({0})}, {kKeySpeedHigh, U8({255})}}},
    };
    for (const auto& c : cases) {
        DemoState state = MakeDemoState();
        const Reaction r = Apply(state, c.items);
        for (const dev::ValueItem& echo : c.echoes) {
            EXPECT_EQ(Hex(echo.data), Hex(Echo(r, echo.key))) << c.name << ": " << echo.key;
        }
    }
}

TEST(DemoApply, PasswordLogsInShowsWhatItGuardsChangesAndLogsOut) {
    DemoState state = MakeDemoState();
    const Reaction wrong = Apply(state, {{kKeyService, Password("12345", "")}});
    EXPECT_FALSE(state.loggedIn);
    EXPECT_TRUE(wrong.popup);
    EXPECT_EQ(2, wrong.popupIcon);
    EXPECT_TRUE(wrong.layouts.empty());

    const Reaction guardedPress = Apply(state, {{kKeyReport, {}}, {kKeyOffset, U32(5)}});
    EXPECT_FALSE(guardedPress.pushReport) << "guarded controls do nothing while logged out";
    EXPECT_EQ(0, state.offset);

    const Reaction login = Apply(state, {{kKeyService, Password("1234", "")}});
    EXPECT_TRUE(state.loggedIn);
    EXPECT_EQ(Hex(U8({1})), Hex(Echo(login, kKeyService)));
    EXPECT_EQ((std::set<std::uint32_t>{kKeyOffset, kKeyReport}), LayoutKeys(login));

    Apply(state, {{kKeyService, Password("1234", "99")}});
    EXPECT_EQ("99", state.password);
    EXPECT_TRUE(Apply(state, {{kKeyReport, {}}}).pushReport);

    const Reaction logout = Apply(state, {{kKeyService, Password("", "")}});
    EXPECT_FALSE(state.loggedIn);
    EXPECT_EQ(Hex(U8({0})), Hex(Echo(logout, kKeyService)));
    EXPECT_EQ((std::set<std::uint32_t>{kKeyOffset, kKeyReport}), LayoutKeys(logout));
}

TEST(DemoApply, TheSectionShowsAndHidesWhatIsUnderIt) {
    DemoState state = MakeDemoState();
    for (const auto& [value, hidden] : {std::pair{255, 0}, std::pair{0, 1}}) {
        const Reaction r = Apply(state, {{kKeyAdvanced, U8({value})}});
        EXPECT_EQ((std::set<std::uint32_t>{kKeyPin, kKeyManual, kKeyLogo}), LayoutKeys(r));
        for (const dev::Item& item : r.layouts) EXPECT_EQ(hidden, item.data[0] & 1) << item.key;
    }
}
