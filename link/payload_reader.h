// Reading payload pieces from a worker's source.
#pragma once

#include "link/receive_source.h"
#include "link/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// A 32-bit little-endian word.
DecodeStatus ReceiveWord(ReceiveSource& source, std::uint32_t* word);

// n bytes into out. The buffer grows as the bytes arrive, so a length the device never
// sends is never allocated up front.
DecodeStatus ReceiveBytes(ReceiveSource& source, std::size_t n, std::vector<std::uint8_t>* out);
