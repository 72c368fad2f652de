#include "platform/runtime/FileIdentity.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <system_error>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

// What a database keeps beside its file; a stranger's text in one of them would be played into it.
constexpr const char* kDatabaseFiles[] = {"", "-journal", "-wal", "-shm"};

bool SameNode(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Where a new file of that path would come to be: at the end of all links.
fs::path Destination(fs::path path) {
    constexpr int kLongestChain = 40;
    std::error_code noLink;
    for (int i = 0; i < kLongestChain; ++i) {
        const fs::path target = fs::read_symlink(path, noLink);
        if (noLink) break;
        path = path.parent_path() / target;
    }
    return fs::absolute(path).lexically_normal();
}

[[noreturn]] void RefuseInput(const fs::path& output) {
    throw PlatformError(Failure::PathAccess, FromUtf8(output.string()) + " is the company's own file; name another one");
}

}  // namespace

bool IsSameFile(const fs::path& a, const fs::path& b) {
    if (a.empty() || b.empty()) return false;
    struct stat first {};
    struct stat second {};
    const bool hasFirst = stat(a.c_str(), &first) == 0;
    const bool hasSecond = stat(b.c_str(), &second) == 0;
    if (hasFirst != hasSecond) return false;
    if (hasFirst) return SameNode(first, second);
    const fs::path newFirst = Destination(a);
    const fs::path newSecond = Destination(b);
    return newFirst.filename() == newSecond.filename() && stat(newFirst.parent_path().c_str(), &first) == 0 &&
           stat(newSecond.parent_path().c_str(), &second) == 0 && SameNode(first, second);
}

bool IsSameFile(int descriptor, const fs::path& path) {
    struct stat open {};
    struct stat named {};
    return fstat(descriptor, &open) == 0 && stat(path.c_str(), &named) == 0 && SameNode(open, named);
}

void RequireApart(const fs::path& output, const fs::path& database) {
    for (const char* ending : kDatabaseFiles) {
        if (IsSameFile(output, database.string() + ending)) RefuseInput(output);
    }
}

void RequireStandardOutputApart(const fs::path& database) {
    for (const char* ending : kDatabaseFiles) {
        for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
            if (IsSameFile(descriptor, database.string() + ending)) RefuseInput(database.string() + ending);
        }
    }
}

void RequireOrdinaryOutput(const fs::path& output) {
    struct stat status {};
    if (stat(output.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return;
    throw PlatformError(Failure::PathAccess,
                        FromUtf8(output.string()) +
                            (S_ISDIR(status.st_mode) ? " is a folder; name a file" : " is a pipe or a device; name a file"));
}

}  // namespace tallymar
