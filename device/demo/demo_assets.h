// The demo's picture and the report it pushes as a file.
#pragma once

#include "device/demo/demo_panel.h"
#include "device/out_bytes.h"

#include <string>

namespace demo {

// A 16 x 16 24-bit BMP.
dev::Bytes DemoLogoBitmap();
// A small HTML page describing the state (texts the user typed are escaped).
std::string DemoReportHtml(const DemoState& state);

}  // namespace demo
