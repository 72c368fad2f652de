#pragma once

#include <filesystem>
#include <string>

namespace tallymar {

// The name of another process on this machine that has the file open ("tallymar, process 4711"); empty when there is none, or
// none that may be looked at. Only asks the system: the file is not opened, which would drop this process's locks on it.
std::string HolderOf(const std::filesystem::path& file);

}  // namespace tallymar
