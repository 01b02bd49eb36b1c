#include "model/device_settings.h"

#include "platform/program_lock.h"
#include "platform/settings_store.h"

#include <cstdio>

namespace {
std::u16string g_panelName = u"Tremolanth";
}  // namespace

void SetSettingsPanelName(const std::u16string& name) {
    plat::ProgramLockHold hold;
    g_panelName = name;
}

std::u16string SettingsPanelName() {
    plat::ProgramLockHold hold;
    return g_panelName;
}

std::u16string DeviceSettingName(std::uint32_t owner, std::uint32_t kind) {
    char name[17];
    std::snprintf(name, sizeof name, "%08X%08X", static_cast<unsigned>(owner),
                  static_cast<unsigned>(kind));
    return std::u16string(name, name + 16);
}

std::int32_t ReadDeviceSetting(std::uint32_t owner, std::uint32_t kind, std::int32_t fallback) {
    std::uint32_t value;
    if (plat::SettingsRead(SettingsPanelName(), DeviceSettingName(owner, kind), &value) != 0) {
        return fallback;
    }
    return static_cast<std::int32_t>(value);
}

std::int32_t HasDeviceSetting(std::uint32_t owner, std::uint32_t kind) {
    std::uint32_t value;
    return plat::SettingsRead(SettingsPanelName(), DeviceSettingName(owner, kind), &value) == 0 ? 1 : 0;
}

std::int32_t WriteDeviceSetting(std::uint32_t owner, std::uint32_t kind, std::uint32_t value) {
    return plat::SettingsWrite(SettingsPanelName(), DeviceSettingName(owner, kind), value);
}

std::int32_t WriteDeviceSettings(const std::vector<StoredSetting>& settings) {
    if (settings.empty()) return 0;
    std::vector<std::pair<std::u16string, std::uint32_t>> values;
    values.reserve(settings.size());
    for (const StoredSetting& s : settings) {
        values.emplace_back(DeviceSettingName(s.owner, s.kind), s.value);
    }
    return plat::SettingsWriteAll(SettingsPanelName(), values);
}

std::vector<StoredSetting> ListDeviceSettings() {
    std::vector<StoredSetting> settings;
    for (const auto& [name, value] : plat::SettingsList(SettingsPanelName())) {
        if (name.size() != 16) continue;
        std::uint64_t both = 0;
        bool hex = true;
        for (char16_t c : name) {
            int digit = c >= u'0' && c <= u'9' ? c - u'0' : c >= u'A' && c <= u'F' ? c - u'A' + 10 : -1;
            if (digit < 0) hex = false;
            both = both << 4 | static_cast<std::uint64_t>(digit < 0 ? 0 : digit);
        }
        if (hex) settings.push_back({static_cast<std::uint32_t>(both >> 32),
                                     static_cast<std::uint32_t>(both), value});
    }
    return settings;
}
