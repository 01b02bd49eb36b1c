#include "tests/support/temp_folder.h"

#include "platform/files.h"
#include "platform/utf.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>

namespace testing_support {

namespace {

void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

void UnsetVariable(const char* name) {
#ifdef _WIN32
    _putenv_s(name, "");
#else
    unsetenv(name);
#endif
}

}  // namespace

std::string UniqueName(const std::string& prefix) {
    static std::atomic<unsigned> counter{0};
    static const unsigned long long seed =
        std::random_device{}() ^
        static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
    return prefix + "-" + std::to_string(seed % 1000000007ULL) + "-" + std::to_string(counter++);
}

TempFolder::TempFolder() {
    namespace fs = std::filesystem;
    path_ = (fs::temp_directory_path() / UniqueName("tremolanth-test")).generic_string();
    fs::create_directories(path_);
    if (const char* v = std::getenv("XDG_CONFIG_HOME")) savedConfig_ = v, hadConfig_ = true;
    if (const char* v = std::getenv("XDG_DATA_HOME")) savedData_ = v, hadData_ = true;
    SetVariable("XDG_CONFIG_HOME", path_ + "/config");
    SetVariable("XDG_DATA_HOME", path_ + "/data");
    fs::create_directories(path_ + "/received");
    plat::SetReceivedFilesFolder(plat::Utf8ToUtf16(path_ + "/received"));
}

TempFolder::~TempFolder() {
    plat::SetReceivedFilesFolder(u"");
    if (hadConfig_) SetVariable("XDG_CONFIG_HOME", savedConfig_); else UnsetVariable("XDG_CONFIG_HOME");
    if (hadData_) SetVariable("XDG_DATA_HOME", savedData_); else UnsetVariable("XDG_DATA_HOME");
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace testing_support
