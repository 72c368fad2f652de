#include "store/AppPath.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

// The delivered data lies beside the program in a portable copy, else in the share folder of the same installation.
constexpr const char* kSharedData = "../share/tallymar";
// A folder that holds this table holds the delivered data.
constexpr const char* kMarker = "MACSDB05.DPP";

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

fs::path UserDataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') return fs::path(data) / "tallymar";
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        if (const passwd* user = getpwuid(geteuid()); user != nullptr) home = user->pw_dir;
    }
    if (home == nullptr) throw PlatformError(Failure::PathNotFound, "There is no home folder to keep the program's data in");
    return fs::path(home) / ".local/share/tallymar";
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error) return;
    const bool denied = error == std::errc::permission_denied || error == std::errc::read_only_file_system;
    throw PlatformError(denied ? Failure::PermissionDenied : Failure::PathAccess,
                        "The folder " + folder.string() + " cannot be made: " + error.message());
}

}  // namespace

AppPath::AppPath(fs::path folder, fs::path delivered) : folder_(std::move(folder)), delivered_(std::move(delivered)) {}

AppPath AppPath::At(const fs::path& folder, const fs::path& programFolder) {
    return AppPath(fs::absolute(folder), programFolder / kSharedData);
}

AppPath AppPath::Find(const fs::path& programFolder) {
    const bool portable = Exists(programFolder / kMarker) && access(programFolder.c_str(), W_OK) == 0;
    return At(portable ? programFolder : UserDataFolder(), programFolder);
}

void AppPath::Prepare() const {
    MakeFolder(folder_);
    // Copies of companies are nobody else's to read. The rights of a folder that is there are its owner's decision.
    if (mkdir(Backup().c_str(), S_IRWXU) != 0) MakeFolder(Backup());
    MakeFolder(Images());
    if (!Exists(delivered_)) return;
    for (const fs::directory_entry& entry : fs::directory_iterator(delivered_)) {
        const fs::path target = folder_ / entry.path().filename();
        if (!entry.is_regular_file() || Exists(target)) continue;
        std::error_code error;
        fs::copy_file(entry.path(), target, error);
        if (error)
            throw PlatformError(Failure::PathAccess, "The file " + target.string() + " cannot be written: " + error.message());
    }
}

fs::path AppPath::Tables() const {
    return Exists(folder_ / kMarker) || !Exists(delivered_ / kMarker) ? folder_ : delivered_;
}

fs::path AppPath::ProgramFolder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

}  // namespace tallymar
