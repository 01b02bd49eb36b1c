#include "link/decoders.h"
std::int32_t DecodePanel(ReceiveSource&) { return 0; }
std::int32_t DecodeValueUpdates(ReceiveSource&) { return 0; }
std::int32_t DecodeLayoutUpdates(ReceiveSource&) { return 0; }
std::int32_t DecodeFiles(ReceiveSource&) { return 0; }
