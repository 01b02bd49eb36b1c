// Files the program writes: where received files go, and plain create/write/close.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace plat {

// The folder for files the device sends: Documents\Tremolanth\Received on Windows,
// $XDG_DATA_HOME/tremolanth/received (or ~/.local/share/...) elsewhere. Created on demand;
// empty when it cannot be made.
std::u16string ReceivedFilesFolder();

// Points received files at another, existing folder (tests keep them out of the user's
// documents); an empty folder restores the system's.
void SetReceivedFilesFolder(const std::u16string& folder);

// The system's folder, behind the override.
std::u16string SystemReceivedFilesFolder();

// Joins a folder and a file name with the system's separator.
std::u16string JoinPath(const std::u16string& folder, const std::u16string& name);

using FileHandle = std::intptr_t;
inline constexpr FileHandle kInvalidFile = -1;

// Creates (or replaces) a file for writing, not shared with other openers.
FileHandle FileCreate(const std::u16string& path);
// Bytes written, or -1.
long FileWrite(FileHandle file, const void* data, std::size_t size);
void FileClose(FileHandle file);
// The system's code of the last failed file call (never 0).
int FileLastError();

}  // namespace plat
