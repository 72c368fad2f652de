#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/runtime/PlatformError.h"

namespace tallymar::test {

// A folder of its own for one test, gone with it.
class TempFolder {
 public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tallymar-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw PlatformError(Failure::PathAccess, name);
        path_ = name;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

 private:
    std::filesystem::path path_;
};

}  // namespace tallymar::test
