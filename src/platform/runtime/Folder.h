#pragma once

#include <filesystem>

namespace tallymar {

// The folder that a file of this path lies in; "." for a name alone.
std::filesystem::path FolderOf(const std::filesystem::path& file);

// A name that is new, changed or gone in the folder of this file outlasts a power cut from here on. Some file systems cannot
// flush a folder, and keep the order by themselves; only a failing device is a failure (DeviceError, its text naming the file).
void FlushFolderOf(const std::filesystem::path& file);

}  // namespace tallymar
