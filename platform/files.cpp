#include "platform/files.h"

#include <mutex>

namespace plat {

namespace {
std::mutex g_mutex;
std::u16string g_override;
}  // namespace

void SetReceivedFilesFolder(const std::u16string& folder) {
    std::lock_guard<std::mutex> hold(g_mutex);
    g_override = folder;
}

std::u16string ReceivedFilesFolder() {
    {
        std::lock_guard<std::mutex> hold(g_mutex);
        if (!g_override.empty()) return g_override;
    }
    return SystemReceivedFilesFolder();
}

}  // namespace plat
