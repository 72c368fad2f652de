#include "platform/runtime/FileReplacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/Folder.h"
#include "platform/runtime/SequentialFile.h"

namespace tallymar {

namespace {

// An open file, closed with its owner.
class Descriptor {
 public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    ~Descriptor() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return descriptor_; }
    bool IsOpen() const { return descriptor_ >= 0; }
    // Network file systems report a full disk here at the latest.
    bool Close() {
        const int result = close(descriptor_);
        descriptor_ = -1;
        return result == 0 || errno == EINTR;
    }

 private:
    int descriptor_;
};

bool WriteAll(int descriptor, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = write(descriptor, contents.data(), contents.size());
        if (written >= 0) {
            contents.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// The path that a chain of links ends in, whether or not a file is there.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    constexpr int kLongestChain = 40;
    for (int i = 0; i < kLongestChain; ++i) {
        std::error_code noLink;
        const std::filesystem::path target = std::filesystem::read_symlink(path, noLink);
        if (noLink) return path;
        path = path.parent_path() / target;
    }
    throw FileFailure(ELOOP, path);
}

constexpr std::string_view kTemporaryPrefix = ".tallymar-";
constexpr std::string_view kTemporarySuffix = ".tmp";

// Removes the temporary files of runs that died: a living one holds a lock on its own.
void SweepTemporaries(const std::filesystem::path& folder) {
    DIR* entries = opendir(folder.c_str());
    if (entries == nullptr) return;
    while (const dirent* entry = readdir(entries)) {
        const std::string_view name(entry->d_name);
        if (!name.starts_with(kTemporaryPrefix) || !name.ends_with(kTemporarySuffix)) continue;
        const std::filesystem::path path = folder / name;
        const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    }
    closedir(entries);
}

// A new file in a folder under a name of its own, removed again unless it was put in its place.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::filesystem::path& folder) : file_(Create(folder, path_)) {}
    ~TemporaryFile() {
        if (!path_.empty()) unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    Descriptor& File() { return file_; }
    // The lock goes with the last of these, after the name.
    bool RenameTo(const std::filesystem::path& path) {
        if (rename(path_.c_str(), path.c_str()) != 0) return false;
        path_.clear();
        return file_.Close();
    }

 private:
    static int Create(const std::filesystem::path& folder, std::filesystem::path& path) {
        // Not mkstemp: a new file is to get the permissions that the user's mask gives every new file.
        std::random_device random;
        for (;;) {
            path = folder / (std::string(kTemporaryPrefix) + std::to_string(random()) + std::string(kTemporarySuffix));
            const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (descriptor >= 0 && IsHeld(descriptor)) return descriptor;
            if (descriptor >= 0) {  // swept by another run before it was locked
                close(descriptor);
                continue;
            }
            if (errno != EEXIST && errno != EINTR) {
                path.clear();
                return -1;
            }
        }
    }

    static bool IsHeld(int descriptor) {
        struct stat status {};
        // Where a file system has no locks, nothing is swept either.
        if (flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
        return fstat(descriptor, &status) != 0 || status.st_nlink > 0;
    }

    std::filesystem::path path_;
    Descriptor file_;
};

void KeepPermissions(int descriptor, const struct stat& earlier) {
    // An owner can be restored by the superuser only; a group often. Neither is a reason to lose the user's data.
    if (fchown(descriptor, earlier.st_uid, earlier.st_gid) != 0 &&
        fchown(descriptor, static_cast<uid_t>(-1), earlier.st_gid) != 0) {
        errno = 0;
    }
    fchmod(descriptor, earlier.st_mode & 07777);
}

}  // namespace

struct FileReplacement::Target {
    explicit Target(std::filesystem::path path) : Path(std::move(path)) {}

    std::filesystem::path Path;  // where all links end
    std::optional<TemporaryFile> Temporary;
    std::optional<Descriptor> InPlace;

    Descriptor& File() { return Temporary ? Temporary->File() : *InPlace; }
};

FileReplacement::FileReplacement(const std::filesystem::path& path) : target_(std::make_unique<Target>(LinkTarget(path))) {
    const std::filesystem::path& target = target_->Path;
    if (!target.has_filename()) throw FileFailure(target.empty() ? EINVAL : EISDIR, path);

    struct stat earlier {};
    const bool exists = stat(target.c_str(), &earlier) == 0;
    if (exists && S_ISDIR(earlier.st_mode)) throw FileFailure(EISDIR, path);
    if (exists && !S_ISREG(earlier.st_mode)) {
        target_->InPlace.emplace(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    } else {
        // A rename asks for no right to the file itself; a file that its owner has protected stays.
        if (exists && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) throw FileFailure(errno, path);
        SweepTemporaries(FolderOf(target));
        target_->Temporary.emplace(FolderOf(target));
    }
    if (!target_->File().IsOpen()) throw FileFailure(errno, path);
    if (exists && target_->Temporary) KeepPermissions(target_->File().Get(), earlier);
}

FileReplacement::~FileReplacement() = default;

void FileReplacement::Write(std::string_view contents) {
    constexpr std::size_t kBuffer = 1 << 16;
    buffer_.append(contents);
    if (buffer_.size() >= kBuffer) Flush();
}

void FileReplacement::Flush() {
    if (!WriteAll(target_->File().Get(), buffer_)) throw FileFailure(errno, target_->Path);
    buffer_.clear();
}

void FileReplacement::Finish() {
    Flush();
    const bool kept = target_->InPlace ? target_->InPlace->Close() : fsync(target_->Temporary->File().Get()) == 0;
    if (!kept) throw FileFailure(errno, target_->Path);
}

void FileReplacement::PutInPlace() {
    if (target_->InPlace) return;
    if (!target_->Temporary->RenameTo(target_->Path)) throw FileFailure(errno, target_->Path);
    FlushFolderOf(target_->Path);
}

void FileReplacement::Commit() {
    Finish();
    PutInPlace();
}

void ReplaceFile(const std::filesystem::path& path, std::string_view contents) {
    FileReplacement file(path);
    file.Write(contents);
    file.Commit();
}

}  // namespace tallymar
