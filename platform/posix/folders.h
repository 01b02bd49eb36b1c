// Creating a folder and the folders above it (private to the owner).
#pragma once

#include <string>

namespace plat {

// 0 when the folder exists afterwards, else the errno of the step that failed.
int MakeFolders(const std::string& path);

}  // namespace plat
