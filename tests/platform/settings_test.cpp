#include "link/link_client.h"
#include "model/device_settings.h"
#include "platform/safe_name.h"
#include "platform/settings_store.h"
#include "platform/utf.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#ifdef _WIN32
#include <windows.h>
#endif

using testing_support::TempFolder;
using testing_support::UniqueName;

namespace {

class DeviceSettings : public ::testing::Test {
protected:
    void SetUp() override { SetSettingsPanelName(u""); }
    void TearDown() override { LinkShutdown(); }
    void AnnouncePanel(const std::u16string& name) { SetSettingsPanelName(name); }
    TempFolder folder_;
};

std::u16string Unique(const char* prefix) { return plat::Utf8ToUtf16(UniqueName(prefix)); }

}  // namespace

TEST(SettingName, IsOwnerThenKindInSixteenHexDigits) {
    EXPECT_EQ(u"0000000000000300", DeviceSettingName(0, 768));
    EXPECT_EQ(u"DEADBEEF000001E0", DeviceSettingName(0xDEADBEEF, 480));
}

TEST_F(DeviceSettings, BeforeTheIdentityTheProductNameIsThePanel) {
    LinkInit();  // hands the product name down to the settings
    EXPECT_EQ(u"Tremolanth", SettingsPanelName());
    std::uint32_t owner = 0x7E570000 | (static_cast<std::uint32_t>(::testing::UnitTest::GetInstance()->random_seed()) & 0xFFFF);
    ASSERT_EQ(0, WriteDeviceSetting(owner, 336, 2));
    std::uint32_t raw = 0;
    ASSERT_EQ(0, plat::SettingsRead(u"Tremolanth", DeviceSettingName(owner, 336), &raw));
    EXPECT_EQ(2u, raw);
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

TEST_F(DeviceSettings, ValuesOfOtherLengthsReadAsARegistryWould) {
    AnnouncePanel(u"lengths");
    ASSERT_EQ(0, WriteDeviceSetting(0, 1, 1));
    std::string file = folder_.Path() + "/config/tremolanth/" + plat::SafeFileStem(u"lengths") +
                       ".settings";
    FILE* f = std::fopen(file.c_str(), "ab");
    ASSERT_NE(nullptr, f);
    std::fputs("0000000000000002 3412\n0000000000000003 0102030405060708\nbroken line\n", f);
    std::fclose(f);
    EXPECT_EQ(0x1234, ReadDeviceSetting(0, 2, -1)) << "two bytes, zero-extended";
    EXPECT_EQ(-1, ReadDeviceSetting(0, 3, -1)) << "eight bytes do not fit";
    EXPECT_EQ(1, ReadDeviceSetting(0, 1, -1));
}
#else
TEST_F(DeviceSettings, RegistryValuesOfAnotherTypeAreReadAsTheyAre) {
    std::u16string panel = Unique("regtype");
    AnnouncePanel(panel);
    std::wstring path = L"Software\\Tremolanth\\" + std::wstring(panel.begin(), panel.end());
    HKEY key;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0,
                                             KEY_ALL_ACCESS, nullptr, &key, nullptr));
    const BYTE two[2] = {0x34, 0x12};
    const BYTE eight[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const BYTE four[4] = {0x78, 0x56, 0x34, 0x12};
    RegSetValueExW(key, L"0000000000000002", 0, REG_BINARY, two, 2);
    RegSetValueExW(key, L"0000000000000003", 0, REG_BINARY, eight, 8);
    RegSetValueExW(key, L"0000000000000004", 0, REG_SZ, four, 4);
    RegCloseKey(key);
    EXPECT_EQ(0x1234, ReadDeviceSetting(0, 2, -1));
    EXPECT_EQ(-1, ReadDeviceSetting(0, 3, -1)) << "too long for 4 bytes";
    EXPECT_EQ(0x12345678, ReadDeviceSetting(0, 4, -1)) << "the type is not checked";
    ASSERT_EQ(0, WriteDeviceSetting(0, 5, 9));
    DWORD type = 0, value = 0, size = sizeof value;
    ASSERT_EQ(ERROR_SUCCESS, RegGetValueW(HKEY_CURRENT_USER, path.c_str(), L"0000000000000005",
                                          RRF_RT_ANY, &type, &value, &size));
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), type);
    EXPECT_EQ(9u, value);
    RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
}
#endif
