// Settings elsewhere than Windows: one small text file per panel name under
// $XDG_CONFIG_HOME/tremolanth (or ~/.config/tremolanth). Each line is a value name and the
// value's bytes in hex, so a value keeps its length as a registry value would. Writes go to a
// temporary file that is renamed over the old one, so a crash never leaves half a file.
#include "platform/settings_store.h"

#include "platform/posix/folders.h"
#include "platform/safe_name.h"
#include "platform/utf.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace plat {

const int kSettingsFull = ENOSPC;

namespace {

// A full panel file: 16384 lines of a 16-character name and 4 bytes in hex.
constexpr size_t kMaxFileBytes = 1 << 20;
constexpr const char* kFileSuffix = ".settings";

std::mutex g_mutex;

std::string ConfigFolder() {
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    std::string base;
    if (xdg && *xdg == '/') {
        base = xdg;
    } else {
        const char* home = std::getenv("HOME");
        base = std::string(home && *home ? home : ".") + "/.config";
    }
    return base + "/tremolanth";
}

std::string PanelFile(std::u16string_view panel) {
    return ConfigFolder() + "/" + SafeFileStem(panel) + kFileSuffix;
}

// The panels that have settings: one file each.
std::size_t PanelCount(const std::string& folder) {
    std::size_t count = 0;
    if (DIR* dir = ::opendir(folder.c_str())) {
        while (const dirent* entry = ::readdir(dir)) {
            std::string_view name = entry->d_name;
            if (name.size() > std::strlen(kFileSuffix) && name.ends_with(kFileSuffix)) ++count;
        }
        ::closedir(dir);
    }
    return count;
}

// name -> raw value bytes
using ValueMap = std::map<std::string, std::string>;

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// Lines that do not parse are skipped: a damaged file loses those values only.
int LoadFile(const std::string& file, ValueMap* values) {
    FILE* f = std::fopen(file.c_str(), "rb");
    if (!f) return errno ? errno : ENOENT;
    std::string content;
    char chunk[4096];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, f)) > 0 && content.size() < kMaxFileBytes) {
        content.append(chunk, n);
    }
    std::fclose(f);
    size_t pos = 0;
    while (pos < content.size()) {
        size_t end = content.find('\n', pos);
        if (end == std::string::npos) end = content.size();
        std::string line = content.substr(pos, end - pos);
        pos = end + 1;
        size_t space = line.find(' ');
        if (space == std::string::npos || (line.size() - space - 1) % 2 != 0) continue;
        std::string bytes;
        bool ok = true;
        for (size_t i = space + 1; i < line.size(); i += 2) {
            int hi = HexDigit(line[i]), lo = HexDigit(line[i + 1]);
            if (hi < 0 || lo < 0) {
                ok = false;
                break;
            }
            bytes += static_cast<char>(hi * 16 + lo);
        }
        if (ok) (*values)[line.substr(0, space)] = bytes;
    }
    return 0;
}

int SaveFile(const std::string& file, const ValueMap& values) {
    std::string content;
    static const char* kHex = "0123456789ABCDEF";
    for (const auto& [name, bytes] : values) {
        content += name;
        content += ' ';
        for (unsigned char b : bytes) {
            content += kHex[b >> 4];
            content += kHex[b & 15];
        }
        content += '\n';
    }
    std::string temporary = file + ".tmp" + std::to_string(::getpid());
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (fd < 0) return errno;
    size_t done = 0;
    while (done < content.size()) {
        ssize_t w = ::write(fd, content.data() + done, content.size() - done);
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) {
            int error = errno ? errno : EIO;
            ::close(fd);
            ::unlink(temporary.c_str());
            return error;
        }
        done += static_cast<size_t>(w);
    }
    // Fuzzing writes thousands of settings; it may skip the flush to disk.
    static const bool sync = std::getenv("TREMOLANTH_SETTINGS_NO_SYNC") == nullptr;
    if ((sync && ::fsync(fd) != 0) || ::close(fd) != 0) {
        int error = errno;
        ::unlink(temporary.c_str());
        return error;
    }
    if (::rename(temporary.c_str(), file.c_str()) != 0) {
        int error = errno;
        ::unlink(temporary.c_str());
        return error;
    }
    return 0;
}

}  // namespace

int SettingsRead(std::u16string_view panel, std::u16string_view valueName, std::uint32_t* value) {
    std::lock_guard<std::mutex> hold(g_mutex);
    ValueMap values;
    if (int rc = LoadFile(PanelFile(panel), &values)) return rc;
    auto it = values.find(Utf16ToUtf8(valueName));
    if (it == values.end()) return ENOENT;
    if (it->second.size() > 4) return EOVERFLOW;  // does not fit the 4-byte buffer
    std::uint32_t v = 0;
    for (size_t i = 0; i < it->second.size(); ++i) {
        v |= static_cast<std::uint32_t>(static_cast<unsigned char>(it->second[i])) << (8 * i);
    }
    *value = v;
    return 0;
}

std::vector<std::pair<std::u16string, std::uint32_t>> SettingsList(std::u16string_view panel) {
    std::lock_guard<std::mutex> hold(g_mutex);
    ValueMap values;
    std::vector<std::pair<std::u16string, std::uint32_t>> list;
    if (LoadFile(PanelFile(panel), &values) != 0) return list;
    for (const auto& [name, bytes] : values) {
        if (bytes.size() > 4) continue;
        std::uint32_t v = 0;
        for (size_t i = 0; i < bytes.size(); ++i) {
            v |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
        }
        list.emplace_back(Utf8ToUtf16(name), v);
    }
    return list;
}

int SettingsWriteAll(std::u16string_view panel,
                     const std::vector<std::pair<std::u16string, std::uint32_t>>& values) {
    std::lock_guard<std::mutex> hold(g_mutex);
    std::string folder = ConfigFolder();
    if (int rc = MakeFolders(folder)) return rc;
    std::string file = PanelFile(panel);
    ValueMap stored;
    // A missing file starts empty, when there is room for one more panel.
    if (LoadFile(file, &stored) != 0 && PanelCount(folder) >= kMaxSettingsPanels) {
        return kSettingsFull;
    }
    int refused = 0;
    for (const auto& [valueName, value] : values) {
        std::string bytes;
        for (int i = 0; i < 4; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
        std::string name = Utf16ToUtf8(valueName);
        if (stored.size() >= kMaxSettingsValues && stored.find(name) == stored.end()) {
            refused = kSettingsFull;
            continue;
        }
        stored[name] = bytes;
    }
    if (int rc = SaveFile(file, stored)) return rc;
    return refused;
}

int SettingsWrite(std::u16string_view panel, std::u16string_view valueName, std::uint32_t value) {
    return SettingsWriteAll(panel, {{std::u16string(valueName), value}});
}

}  // namespace plat
