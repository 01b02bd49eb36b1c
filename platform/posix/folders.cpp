#include "platform/posix/folders.h"

#include <sys/stat.h>

#include <cerrno>

namespace plat {

int MakeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        std::string part = path.substr(0, slash);
        if (::mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) return errno;
        if (slash == std::string::npos) return 0;
    }
}

}  // namespace plat
