// Small types shared by every operating-system seam.
#pragma once

#include <cstdint>

namespace plat {

// An opaque window: an HWND on Windows, a test's own token elsewhere.
using WindowRef = void*;

}  // namespace plat
