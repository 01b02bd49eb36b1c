// Persistent 32-bit values kept per panel name: the registry on Windows, one file per panel
// name elsewhere. Names of values are given by the caller.
#pragma once

#include <cstddef>
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

// A device may announce any number of panel names and send any number of settings: the store
// keeps at most this many values per panel and this many panels, refusing new ones beyond
// (with kSettingsFull); values and panels it holds can always be rewritten.
inline constexpr std::size_t kMaxSettingsValues = 16384;
inline constexpr std::size_t kMaxSettingsPanels = 256;
// The system's own "no room" error: ENOSPC, or ERROR_NOT_ENOUGH_QUOTA on Windows.
extern const int kSettingsFull;

// Creates the panel's key or file when missing and stores the value; 0 or an error code.
int SettingsWrite(std::u16string_view panel, std::u16string_view valueName, std::uint32_t value);

// Stores the values in one go: 0, or the error of the first value refused (those that fit are
// stored all the same).
int SettingsWriteAll(std::u16string_view panel,
                     const std::vector<std::pair<std::u16string, std::uint32_t>>& values);

// Every value of the panel that fits 4 bytes, by name (empty when the panel has none).
std::vector<std::pair<std::u16string, std::uint32_t>> SettingsList(std::u16string_view panel);

}  // namespace plat
