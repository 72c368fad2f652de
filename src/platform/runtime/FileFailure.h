#pragma once

#include <filesystem>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

// What an errno of the file system is to the user: the failure's text and the path.
PlatformError FileFailure(int error, const std::filesystem::path& path);

}  // namespace tallymar
