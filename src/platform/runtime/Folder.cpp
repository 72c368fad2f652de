#include "platform/runtime/Folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/runtime/FileFailure.h"

namespace tallymar {

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

void FlushFolderOf(const std::filesystem::path& file) {
    const int descriptor = open(FolderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    const int error = fsync(descriptor) == 0 ? 0 : errno;
    close(descriptor);
    if (error == EIO) throw FileFailure(error, file);
}

}  // namespace tallymar
