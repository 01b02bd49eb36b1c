// Shared set-up of the fuzz targets: quiet boxes and posts, a private folder for the files
// and settings the decoders write, and a store with one control of each kind.
#pragma once

#include "model/control_record.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fuzzing {

// Once per process: hooks, folders, LinkInit.
void Initialise();
// A store of one control per type, keyed 1 to 14 by type, with buffers of modest size.
std::vector<ControlRecord> OneOfEach();

}  // namespace fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
