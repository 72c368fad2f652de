#include "store/AppPath.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/runtime/FindFile.h"
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

fs::path DeliveredWith(const fs::path& programFolder) {
    return Exists(programFolder / kMarker) ? programFolder : programFolder / kSharedData;
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
    return AppPath(fs::absolute(folder), DeliveredWith(programFolder));
}

AppPath AppPath::Of(const fs::path& programFolder) {
    const bool portable = Exists(programFolder / kMarker) && access(programFolder.c_str(), W_OK) == 0;
    return At(portable ? programFolder : UserDataFolder(), programFolder);
}

void AppPath::Prepare() const {
    MakeFolder(folder_);
    // Copies of companies are nobody else's to read. The rights of a folder that is there are its owner's decision.
    mkdir(Backup().c_str(), S_IRWXU);
    std::error_code ignored;
    fs::create_directory(Images(), ignored);
}

fs::path AppPath::Find(const fs::path& name) const {
    const fs::path own = FindAnyCase(folder_, name);
    return own.empty() ? FindAnyCase(delivered_, name) : own;
}

fs::path AppPath::ProgramFolder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

}  // namespace tallymar
