#include "model/device_settings.h"
#include "platform/safe_name.h"
#include "platform/settings_store.h"
#include "platform/utf.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

using testing_support::TempFolder;
using testing_support::UniqueName;

namespace {

class DeviceSettings : public ::testing::Test {
protected:
    void SetUp() override { SetSettingsPanelName(u""); }
    void AnnouncePanel(const std::u16string& name) { SetSettingsPanelName(name); }
    TempFolder folder_;
};

std::u16string Unique(const char* prefix) { return plat::Utf8ToUtf16(UniqueName(prefix)); }

}  // namespace

TEST(SettingName, IsOwnerThenKindInSixteenHexDigits) {
    EXPECT_EQ(u"0000000000000300", DeviceSettingName(0, 768));
    EXPECT_EQ(u"DEADBEEF000001E0", DeviceSettingName(0xDEADBEEF, 480));
}

TEST_F(DeviceSettings, ReadsFallBackWriteReadsBack) {
    AnnouncePanel(Unique("panel"));
    EXPECT_EQ(3, ReadDeviceSetting(0, kSettingPingSeconds, 3));
    EXPECT_EQ(0, HasDeviceSetting(0, kSettingPingSeconds));
    ASSERT_EQ(0, WriteDeviceSetting(0, kSettingPingSeconds, 10));
    EXPECT_EQ(10, ReadDeviceSetting(0, kSettingPingSeconds, 3));
    EXPECT_EQ(1, HasDeviceSetting(0, kSettingPingSeconds));
    ASSERT_EQ(0, WriteDeviceSetting(0, kSettingPingSeconds, 0xFFFFFFFFu));
    EXPECT_EQ(-1, ReadDeviceSetting(0, kSettingPingSeconds, 3)) << "32-bit, signed on read";
    ASSERT_EQ(0, WriteDeviceSetting(17, kSettingPingSeconds, 5));
    EXPECT_EQ(-1, ReadDeviceSetting(0, kSettingPingSeconds, 3)) << "owners are apart";
}

TEST_F(DeviceSettings, EachPanelNameHasItsOwnSettings) {
    std::u16string first = Unique("first"), second = Unique("second");
    AnnouncePanel(first);
    ASSERT_EQ(0, WriteDeviceSetting(42, kSettingLayoutFastKey, 7));
    AnnouncePanel(second);
    EXPECT_EQ(0, ReadDeviceSetting(42, kSettingLayoutFastKey, 0));
    EXPECT_EQ(0, HasDeviceSetting(42, kSettingLayoutFastKey));
    ASSERT_EQ(0, WriteDeviceSetting(42, kSettingLayoutFastKey, 9));
    AnnouncePanel(first);
    EXPECT_EQ(7, ReadDeviceSetting(42, kSettingLayoutFastKey, 0));
}

// A device may announce any number of names and send any number of settings: the store keeps
// so many of each and refuses new ones beyond, while what it holds stays writable.
TEST_F(DeviceSettings, TheStoreRefusesNewValuesAndPanelsBeyondItsCeilings) {
    const std::u16string full = Unique("full");
    AnnouncePanel(full);
    std::vector<StoredSetting> many;
    for (std::uint32_t i = 0; i <= plat::kMaxSettingsValues; ++i) many.push_back({i, 1, i});
    EXPECT_EQ(plat::kSettingsFull, WriteDeviceSettings(many));
    EXPECT_EQ(plat::kMaxSettingsValues, ListDeviceSettings().size());
    EXPECT_EQ(plat::kSettingsFull, WriteDeviceSetting(0, 2, 1));
    ASSERT_EQ(0, WriteDeviceSetting(7, 1, 77)) << "a value it holds is rewritten";
    EXPECT_EQ(77, ReadDeviceSetting(7, 1, 0));

    std::size_t made = 0;
    int rc = 0;
    while (made <= plat::kMaxSettingsPanels &&
           (rc = plat::SettingsWrite(Unique("panel"), DeviceSettingName(0, 1), 1)) == 0) {
        ++made;
    }
    EXPECT_EQ(plat::kSettingsFull, rc);
    EXPECT_LT(made, plat::kMaxSettingsPanels) << "the first panel counts too";
    EXPECT_EQ(0, WriteDeviceSetting(7, 1, 78)) << "a panel it holds is still written";
}

TEST(SafeFileStem, NamesNeverLeaveTheFolder) {
    const std::u16string hostile[] = {u"..", u".", u"../../etc/passwd", u"a/b", u"a\\b", u"",
                                      u"C:\\x", u"con", u"\u00E9t\u00E9",
                                      std::u16string(400, u'x')};
    for (const auto& name : hostile) {
        std::string stem = plat::SafeFileStem(name);
        EXPECT_FALSE(stem.empty());
        EXPECT_EQ(std::string::npos, stem.find('/')) << stem;
        EXPECT_EQ(std::string::npos, stem.find('\\')) << stem;
        EXPECT_EQ(std::string::npos, stem.find(':')) << stem;
        EXPECT_NE(".", stem);
        EXPECT_NE("..", stem);
        EXPECT_LE(stem.size(), 160u);
    }
    EXPECT_NE(plat::SafeFileStem(u"a/b"), plat::SafeFileStem(u"a_b"));
    EXPECT_NE(plat::SafeFileStem(std::u16string(400, u'x')),
              plat::SafeFileStem(std::u16string(401, u'x')));
}

#ifndef _WIN32
TEST_F(DeviceSettings, HostilePanelNamesStayInTheSettingsFolder) {
    namespace fs = std::filesystem;
    for (const char16_t* name : {u"../../escape", u"..", u"/tmp/abs", u"a/../../b"}) {
        AnnouncePanel(name);
        ASSERT_EQ(0, WriteDeviceSetting(1, 2, 3));
        EXPECT_EQ(3, ReadDeviceSetting(1, 2, 0));
    }
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path())) {
        if (!entry.is_regular_file()) continue;
        ++files;
        EXPECT_EQ(fs::path(folder_.Path()) / "config" / "tremolanth",
                  entry.path().parent_path());
        EXPECT_EQ(".settings", entry.path().extension()) << "no temporary file is left behind";
    }
    EXPECT_EQ(4u, files);
}
#endif
