// Turning untrusted text (a panel name from the device) into one safe file-name component.
#pragma once

#include <string>
#include <string_view>

namespace plat {

// Letters, digits, '-' and '_' stay; every other UTF-16 unit becomes "%XXXX", so the result
// never holds a path separator, never is "." or "..", and different names never collide.
// Very long names are cut and given a hash of the whole name. Never empty.
std::string SafeFileStem(std::u16string_view name);

}  // namespace plat
