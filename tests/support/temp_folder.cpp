#include "tests/support/temp_folder.h"

#include "platform/files.h"
#include "platform/utf.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

namespace testing_support {

namespace {

// A null value unsets the variable.
void SetVariable(const char* name, const std::string* value) {
#ifdef _WIN32
    _putenv_s(name, value ? value->c_str() : "");
#else
    if (value) setenv(name, value->c_str(), 1); else unsetenv(name);
#endif
}

// The part of every unique name that marks this run.
const std::string& RunMark() {
    static const unsigned long long seed =
        std::random_device{}() ^
        static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
    static const std::string mark = "-" + std::to_string(seed % 1000000007ULL) + "-";
    return mark;
}

}  // namespace

std::string UniqueName(const std::string& prefix) {
    static std::atomic<unsigned> counter{0};
    return prefix + RunMark() + std::to_string(counter++);
}

void RemoveThisRunsSettings() {
#ifdef _WIN32
    HKEY root;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Tremolanth", 0,
                      KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE | DELETE, &root) != ERROR_SUCCESS) {
        return;
    }
    const std::wstring mark(RunMark().begin(), RunMark().end());
    std::vector<std::wstring> ours;
    wchar_t name[512];
    for (DWORD i = 0, size = 512; RegEnumKeyExW(root, i, name, &size, nullptr, nullptr, nullptr,
                                                 nullptr) == ERROR_SUCCESS;
         ++i, size = 512) {
        if (std::wstring(name).find(mark) != std::wstring::npos) ours.push_back(name);
    }
    for (const std::wstring& key : ours) RegDeleteTreeW(root, key.c_str());
    RegCloseKey(root);
#endif
}


TempFolder::TempFolder() {
    namespace fs = std::filesystem;
    path_ = (fs::temp_directory_path() / UniqueName("tremolanth-test")).generic_string();
    fs::create_directories(path_);
    if (const char* v = std::getenv("XDG_CONFIG_HOME")) savedConfig_ = v, hadConfig_ = true;
    if (const char* v = std::getenv("XDG_DATA_HOME")) savedData_ = v, hadData_ = true;
    const std::string config = path_ + "/config", data = path_ + "/data";
    SetVariable("XDG_CONFIG_HOME", &config);
    SetVariable("XDG_DATA_HOME", &data);
    fs::create_directories(path_ + "/received");
    plat::SetReceivedFilesFolder(plat::Utf8ToUtf16(path_ + "/received"));
}

TempFolder::~TempFolder() {
    plat::SetReceivedFilesFolder(u"");
    SetVariable("XDG_CONFIG_HOME", hadConfig_ ? &savedConfig_ : nullptr);
    SetVariable("XDG_DATA_HOME", hadData_ ? &savedData_ : nullptr);
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace testing_support
