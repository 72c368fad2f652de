#include "platform/runtime/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

std::size_t SizeOf(const struct stat& status) {
    return static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
}

std::int64_t WrittenAt(const struct stat& status) {
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

}  // namespace

InputFile::InputFile(const std::filesystem::path& path) : path_(path) {
    // Looked at first: some devices act on being opened. Not blocking all the same, for a pipe that takes the file's name
    // between.
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) throw FileFailure(errno, path);
    if (S_ISREG(status.st_mode)) {
        descriptor_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor_ < 0) throw FileFailure(errno, path);
        if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
            size_ = SizeOf(status);
            written_ = WrittenAt(status);
            return;
        }
        close(descriptor_);
    }
    throw PlatformError(Failure::PathAccess,
                        FromUtf8(path.string()) + (S_ISDIR(status.st_mode) ? " is a folder; a file is wanted"
                                                                           : " is a pipe or a device; a file is wanted"));
}

InputFile::~InputFile() {
    close(descriptor_);
}

std::size_t InputFile::Read(char* buffer, std::size_t room) {
    for (;;) {
        const ssize_t count = read(descriptor_, buffer, room);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw FileFailure(errno, path_);
    }
}

bool InputFile::IsUnchanged() const {
    struct stat status {};
    return fstat(descriptor_, &status) == 0 && SizeOf(status) == size_ && WrittenAt(status) == written_;
}

void InputFile::Rewind() {
    GoTo(0);
}

void InputFile::GoTo(std::uint64_t place) {
    if (lseek(descriptor_, static_cast<off_t>(place), SEEK_SET) < 0) throw FileFailure(errno, path_);
}

std::string ReadWholeFile(const std::filesystem::path& path) {
    InputFile file(path);
    std::string contents;
    std::size_t length = 0;
    // One byte more than there should be, so that one read finds the end.
    std::size_t room = file.Size() + 1;
    for (;;) {
        contents.resize(length + room);
        const std::size_t count = file.Read(contents.data() + length, room);
        if (count == 0) break;
        length += count;
        room = std::max<std::size_t>(contents.size() - length, 65536);
    }
    contents.resize(length);
    return contents;
}

}  // namespace tallymar
