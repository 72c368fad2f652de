#include "platform/runtime/FindFile.h"

#include <string>
#include <system_error>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

fs::path FindEntry(const fs::path& folder, const fs::path& name) {
    std::error_code error;
    if (fs::path exact = folder / name; fs::exists(exact, error)) return exact;
    const std::string wanted = LCase(name.string());
    fs::path found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        // Of several spellings the first in byte order, not the first that the file system tells of.
        const fs::path& path = entry->path();
        if (LCase(path.filename().string()) == wanted && (found.empty() || path < found)) found = path;
    }
    return found;
}

}  // namespace

fs::path FindAnyCase(const fs::path& folder, const fs::path& name) {
    if (name.empty() || name.is_absolute()) return {};
    fs::path path = folder;
    for (const fs::path& part : name) {
        if (part.empty() || part == "." || part == "..") return {};
        path = FindEntry(path, part);
        if (path.empty()) return {};
    }
    return path;
}

}  // namespace tallymar
