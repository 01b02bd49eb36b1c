// Persistent 32-bit values kept per panel name: the registry on Windows, one file per panel
// name elsewhere. Names of values are given by the caller.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace plat {

// 0 and the value when it exists and fits 4 bytes; otherwise a non-zero error and *value is
// left alone. The stored type is not checked: a shorter value of another type reads as its
// bytes, zero-extended.
int SettingsRead(std::u16string_view panel, std::u16string_view valueName, std::uint32_t* value);

// Creates the panel's key or file when missing and stores the value; 0 or an error code.
int SettingsWrite(std::u16string_view panel, std::u16string_view valueName, std::uint32_t value);

// Every value of the panel that fits 4 bytes, by name (empty when the panel has none).
std::vector<std::pair<std::u16string, std::uint32_t>> SettingsList(std::u16string_view panel);

}  // namespace plat
