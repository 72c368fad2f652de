#include "platform/runtime/FileFailure.h"

#include <cerrno>
#include <system_error>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

Failure FailureOf(int error, const std::filesystem::path& path) {
    switch (error) {
        case ENOENT: {
            // A missing folder and a missing file call for different answers of the user.
            const std::filesystem::path folder = path.parent_path();
            std::error_code ignored;
            return folder.empty() || std::filesystem::is_directory(folder, ignored) ? Failure::FileNotFound
                                                                                    : Failure::PathNotFound;
        }
        case ENOTDIR:
            return Failure::PathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
            return Failure::PermissionDenied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Failure::DiskFull;
        case EISDIR:
        case ELOOP:
        case ETXTBSY:
        case EMFILE:
        case ENFILE:
            return Failure::PathAccess;
        case ENAMETOOLONG:
        case EINVAL:
            return Failure::BadFileName;
        case EEXIST:
            return Failure::FileExists;
        default:
            return Failure::DeviceError;
    }
}

}  // namespace

PlatformError FileFailure(int error, const std::filesystem::path& path) {
    return PlatformError::About(FailureOf(error, path), FromUtf8(path.string()));
}

}  // namespace tallymar
