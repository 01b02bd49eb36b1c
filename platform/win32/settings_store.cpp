// Settings in the registry under Software\Tremolanth\<panel name>. Windows CE keeps them in
// HKEY_LOCAL_MACHINE; desktop Windows in HKEY_CURRENT_USER, since ordinary users cannot write
// HKEY_LOCAL_MACHINE there. Subkey and value names are the same on both.
#include "platform/settings_store.h"

#include <windows.h>

#include <string>

namespace plat {

const int kSettingsFull = ERROR_NOT_ENOUGH_QUOTA;

namespace {

#ifdef _WIN32_WCE
const HKEY kRoot = HKEY_LOCAL_MACHINE;
#else
const HKEY kRoot = HKEY_CURRENT_USER;
#endif

std::wstring KeyPath(std::u16string_view panel) {
    std::wstring path = L"Software\\Tremolanth\\";
    path.append(reinterpret_cast<const wchar_t*>(panel.data()), panel.size());
    return path;
}

std::wstring Name(std::u16string_view name) {
    return std::wstring(reinterpret_cast<const wchar_t*>(name.data()), name.size());
}

// The panels that have settings: one key each.
std::size_t PanelCount() {
    HKEY key;
    if (RegOpenKeyExW(kRoot, L"Software\\Tremolanth", 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return 0;
    }
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    return count;
}

}  // namespace

int SettingsRead(std::u16string_view panel, std::u16string_view valueName, std::uint32_t* value) {
    HKEY key;
    LONG rc = RegOpenKeyExW(kRoot, KeyPath(panel).c_str(), 0, KEY_QUERY_VALUE, &key);
    if (rc != ERROR_SUCCESS) return static_cast<int>(rc);
    DWORD data = 0, size = sizeof data;
    rc = RegQueryValueExW(key, Name(valueName).c_str(), nullptr, nullptr,
                          reinterpret_cast<BYTE*>(&data), &size);
    LONG closed = RegCloseKey(key);
    if (rc != ERROR_SUCCESS) return static_cast<int>(rc);
    if (closed != ERROR_SUCCESS) return static_cast<int>(closed);
    *value = data;
    return 0;
}

int SettingsWriteAll(std::u16string_view panel,
                     const std::vector<std::pair<std::u16string, std::uint32_t>>& values) {
    HKEY key;
    const std::wstring path = KeyPath(panel);
    LONG rc = RegOpenKeyExW(kRoot, path.c_str(), 0, KEY_SET_VALUE | KEY_QUERY_VALUE, &key);
    if (rc != ERROR_SUCCESS) {
        // A new panel, when there is room for one more.
        if (PanelCount() >= kMaxSettingsPanels) return kSettingsFull;
        DWORD disposition;
        rc = RegCreateKeyExW(kRoot, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE | KEY_QUERY_VALUE,
                             nullptr, &key, &disposition);
        if (rc != ERROR_SUCCESS) return static_cast<int>(rc);
    }
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr,
                     nullptr, nullptr, nullptr);
    int result = 0;
    for (const auto& [valueName, value] : values) {
        const std::wstring name = Name(valueName);
        const bool present =
            RegQueryValueExW(key, name.c_str(), nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
        if (!present && count >= kMaxSettingsValues) {
            if (result == 0) result = kSettingsFull;
            continue;
        }
        DWORD data = value;
        rc = RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&data),
                            sizeof data);
        if (rc != ERROR_SUCCESS) {
            if (result == 0) result = static_cast<int>(rc);
            continue;
        }
        if (!present) ++count;
    }
    RegCloseKey(key);
    return result;
}

int SettingsWrite(std::u16string_view panel, std::u16string_view valueName, std::uint32_t value) {
    return SettingsWriteAll(panel, {{std::u16string(valueName), value}});
}

std::vector<std::pair<std::u16string, std::uint32_t>> SettingsList(std::u16string_view panel) {
    std::vector<std::pair<std::u16string, std::uint32_t>> list;
    HKEY key;
    if (RegOpenKeyExW(kRoot, KeyPath(panel).c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return list;
    }
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD nameLength = 256, data = 0, size = sizeof data;
        LONG rc = RegEnumValueW(key, index, name, &nameLength, nullptr, nullptr,
                                reinterpret_cast<BYTE*>(&data), &size);
        if (rc == ERROR_NO_MORE_ITEMS) break;
        if (rc != ERROR_SUCCESS) continue;  // a value too long for 4 bytes
        list.emplace_back(std::u16string(reinterpret_cast<const char16_t*>(name), nameLength),
                          data);
    }
    RegCloseKey(key);
    return list;
}

}  // namespace plat
