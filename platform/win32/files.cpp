#include "platform/files.h"

#include <windows.h>
#include <shlobj.h>

namespace plat {

namespace {

const wchar_t* Wide(const std::u16string& s) { return reinterpret_cast<const wchar_t*>(s.c_str()); }

}  // namespace

std::u16string SystemReceivedFilesFolder() {
    wchar_t documents[MAX_PATH];
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PERSONAL | CSIDL_FLAG_CREATE, nullptr, 0,
                                documents))) {
        return {};
    }
    std::u16string folder(reinterpret_cast<const char16_t*>(documents));
    for (const char16_t* part : {u"\\Tremolanth", u"\\Received"}) {
        folder += part;
        if (!CreateDirectoryW(Wide(folder), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
            return {};
        }
    }
    return folder;
}

std::u16string JoinPath(const std::u16string& folder, const std::u16string& name) {
    return folder + u"\\" + name;
}

FileHandle FileCreate(const std::u16string& path) {
    HANDLE h = CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    return h == INVALID_HANDLE_VALUE ? kInvalidFile : reinterpret_cast<FileHandle>(h);
}

long FileWrite(FileHandle file, const void* data, std::size_t size) {
    DWORD written = 0;
    if (!WriteFile(reinterpret_cast<HANDLE>(file), data, static_cast<DWORD>(size), &written,
                   nullptr)) {
        return -1;
    }
    return static_cast<long>(written);
}

void FileClose(FileHandle file) {
    if (file != kInvalidFile) CloseHandle(reinterpret_cast<HANDLE>(file));
}

int FileLastError() {
    DWORD e = GetLastError();
    return e ? static_cast<int>(e) : ERROR_WRITE_FAULT;
}

}  // namespace plat
