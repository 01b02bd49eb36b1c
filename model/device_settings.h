// Per-panel settings: 32-bit values addressed by (owner, kind), owner 0 for the whole panel or
// a control key, kept under the current panel name. There is no cache: every call reaches the
// store, and every read failure gives the default.
//
// The panel name is handed down by whoever learns it (the link at start, the identity the
// device sends); until then settings land under the product name.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Setting kinds.
inline constexpr std::uint32_t kSettingLayoutLocked = 256;   // panel: "Control Layout..." off
inline constexpr std::uint32_t kSettingPingsLocked = 512;    // panel: "Pings..." off
inline constexpr std::uint32_t kSettingPingSeconds = 768;    // panel: ping period, default 3
inline constexpr std::uint32_t kSettingLayoutStyle = 336;
inline constexpr std::uint32_t kSettingLayoutTitleLength = 448;
inline constexpr std::uint32_t kSettingLayoutValueShow = 464;
inline constexpr std::uint32_t kSettingLayoutFastKey = 480;
inline constexpr std::uint32_t kSettingChartValueMin = 512;
inline constexpr std::uint32_t kSettingChartValueMax = 528;
inline constexpr std::uint32_t kSettingChartSampleMin = 544;
inline constexpr std::uint32_t kSettingChartSampleMax = 560;

// The name the settings are kept under from now on (under the program lock).
void SetSettingsPanelName(const std::u16string& name);
std::u16string SettingsPanelName();

std::int32_t ReadDeviceSetting(std::uint32_t owner, std::uint32_t kind, std::int32_t fallback);
std::int32_t HasDeviceSetting(std::uint32_t owner, std::uint32_t kind);
std::int32_t WriteDeviceSetting(std::uint32_t owner, std::uint32_t kind, std::uint32_t value);

struct StoredSetting {
    std::uint32_t owner = 0;
    std::uint32_t kind = 0;
    std::uint32_t value = 0;
};
// Writes them all in one go; 0, or the store's error for those it could not take.
std::int32_t WriteDeviceSettings(const std::vector<StoredSetting>& settings);
// Every setting of the current panel, by owner and kind (names of another form are left out).
std::vector<StoredSetting> ListDeviceSettings();

// "%08X%08X" of owner and kind.
std::u16string DeviceSettingName(std::uint32_t owner, std::uint32_t kind);
