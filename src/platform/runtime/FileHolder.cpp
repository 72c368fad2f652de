#include "platform/runtime/FileHolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace tallymar {

namespace fs = std::filesystem;

namespace {

bool HasOpen(const fs::path& process, const struct stat& wanted) {
    std::error_code unreadable;
    for (fs::directory_iterator at(process / "fd", unreadable), end; !unreadable && at != end; at.increment(unreadable)) {
        struct stat open {};
        if (stat(at->path().c_str(), &open) == 0 && open.st_dev == wanted.st_dev && open.st_ino == wanted.st_ino) return true;
    }
    return false;
}

}  // namespace

std::string HolderOf(const fs::path& file) {
    struct stat wanted {};
    if (stat(file.c_str(), &wanted) != 0) return {};
    const std::string own = std::to_string(getpid());
    std::error_code unreadable;
    for (fs::directory_iterator at("/proc", unreadable), end; !unreadable && at != end; at.increment(unreadable)) {
        const std::string number = at->path().filename().string();
        if (number == own || number.find_first_not_of("0123456789") != std::string::npos || !HasOpen(at->path(), wanted))
            continue;
        std::string name;
        std::getline(std::ifstream(at->path() / "comm"), name);
        return name + ", process " + number;
    }
    return {};
}

}  // namespace tallymar
