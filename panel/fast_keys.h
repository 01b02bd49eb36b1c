// The twelve fast keys of the panel list: keys 1 to 12 stand for the phone keys "1" to "9",
// "*", "0" and "#". Each key remembers the control and the row it selects; a key nobody
// assigned keeps what it held (0 and row 0 after a clear).
#pragma once

#include <cstdint>

inline constexpr int kFastKeyCount = 12;

struct FastKeyTable {
    std::uint32_t controlIds[kFastKeyCount] = {};  // key k at index k - 1
    std::int32_t rows[kFastKeyCount] = {};
};

// The program's table, read by the panel screen's key handling (UI thread only).
FastKeyTable& FastKeys();

void ClearFastKeys(FastKeyTable& table);

// Sets key's entry; keys outside 1..12 are ignored.
void AssignFastKey(FastKeyTable& table, int key, std::uint32_t controlId, std::int32_t row);

// The character a row's second column shows for a key; empty outside 1..12.
const char16_t* FastKeyLabel(int key);
