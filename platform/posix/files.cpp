#include "platform/files.h"

#include "platform/posix/folders.h"
#include "platform/utf.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace plat {

std::u16string SystemReceivedFilesFolder() {
    const char* xdg = std::getenv("XDG_DATA_HOME");
    std::string base;
    if (xdg && *xdg == '/') {
        base = xdg;
    } else {
        const char* home = std::getenv("HOME");
        base = std::string(home && *home ? home : ".") + "/.local/share";
    }
    std::string folder = base + "/tremolanth/received";
    if (MakeFolders(folder) != 0) return {};
    return Utf8ToUtf16(folder);
}

std::u16string JoinPath(const std::u16string& folder, const std::u16string& name) {
    return folder + u"/" + name;
}

FileHandle FileCreate(const std::u16string& path) {
    int fd = ::open(Utf16ToUtf8(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, 0600);
    return fd < 0 ? kInvalidFile : fd;
}

long FileWrite(FileHandle file, const void* data, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        ssize_t n = ::write(static_cast<int>(file), static_cast<const char*>(data) + done,
                            size - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return -1;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<long>(done);
}

void FileClose(FileHandle file) {
    if (file != kInvalidFile) ::close(static_cast<int>(file));
}

int FileLastError() { return errno ? errno : EIO; }

}  // namespace plat
