#include "platform/recordset/DatabaseFiles.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <random>
#include <string>

#include "platform/recordset/Connection.h"
#include "platform/recordset/Recordset.h"
#include "platform/runtime/FileFailure.h"
#include "platform/runtime/FileHolder.h"
#include "platform/runtime/Folder.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace fs = std::filesystem;

namespace {

PlatformError InUse(const fs::path& path, const std::string& by) {
    return PlatformError::About(Failure::FileInUse, FromUtf8(path.string()) + (by.empty() ? "" : " (" + FromUtf8(by) + ")"));
}

// Nobody else has the file open or locked. What a crash left half written in it is taken back on the way, so that no journal is
// left that could be played into another file.
void RequireUnused(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) return;
    if (const std::string holder = HolderOf(path); !holder.empty()) throw InUse(path, holder);
    try {
        Connection connection(path, Connection::Mode::Open, std::chrono::milliseconds(0));
        connection.Execute("BEGIN EXCLUSIVE");
        connection.Execute("ROLLBACK");
    } catch (const PlatformError& failure) {
        // Anything else, such as a file that is no database or cannot be written, says nothing of who uses it.
        if (failure.Code() == Failure::RecordLocked) throw InUse(path, {});
    }
}

void RemoveWithCompanions(const fs::path& path, std::error_code& error) {
    fs::remove(path, error);
    for (const char* companion : kCompanions) {
        if (!error) fs::remove(path.string() + companion, error);
    }
}

// Names its process, so that a later one can tell what a run that died has left.
std::string UnfinishedStart() {
    char host[64] = "";
    gethostname(host, sizeof host - 1);
    return std::string(".tallymar-") + host + "-";
}

// A whole company may lie hidden in what a killed run has left.
void SweepUnfinished(const fs::path& folder) {
    const std::string start = UnfinishedStart();
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (!name.starts_with(start)) continue;
        const int process = std::atoi(name.c_str() + start.size());
        std::error_code ignored;
        if (process > 0 && kill(process, 0) != 0 && errno == ESRCH) fs::remove(at->path(), ignored);
    }
}

void RequireWhole(const Database& source, const fs::path& copyPath) {
    Database copy = Database::Open(copyPath);
    copy.RequireIntegrity();
    for (const std::string& table : source.TableNames()) {
        if (copy.CountRows(table) == source.CountRows(table)) continue;
        throw PlatformError(Failure::UnrecognizedFormat,
                            "The copy of " + FromUtf8(source.Path().string()) + " does not hold every row of " + table);
    }
}

}  // namespace

DatabaseReplacement::DatabaseReplacement(const fs::path& place) : place_(fs::absolute(place)) {
    std::error_code error;
    const fs::file_status status = fs::status(place_, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) throw FileFailure(EISDIR, place_);
    if (fs::exists(status)) place_ = fs::canonical(place_);  // a link stays one
    // A rename asks for no right to the file itself; a file that its owner has protected stays.
    if (fs::exists(status) && access(place_.c_str(), W_OK) != 0) throw FileFailure(errno, place_);
    RequireUnused(place_);
    SweepUnfinished(FolderOf(place_));
    std::random_device random;
    unfinished_ = FolderOf(place_) / (UnfinishedStart() + std::to_string(getpid()) + "-" + std::to_string(random()) + ".part");
}

DatabaseReplacement::~DatabaseReplacement() {
    std::error_code ignored;
    RemoveWithCompanions(unfinished_, ignored);
}

void DatabaseReplacement::PutInPlace() {
    RequireUnused(place_);
    std::error_code error;
    for (const char* companion : kCompanions) fs::remove(place_.string() + companion, error);
    if (rename(unfinished_.c_str(), place_.c_str()) != 0) throw FileFailure(errno, place_);
    FlushFolderOf(place_);
}

void CopyDatabase(const Database& source, const fs::path& place) {
    DatabaseReplacement replacement(place);
    source.CopyTo(replacement.Unfinished());
    RequireWhole(source, replacement.Unfinished());
    replacement.PutInPlace();
}

void DeleteDatabase(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::is_regular_file(status)) throw FileFailure(fs::exists(status) ? EISDIR : ENOENT, file);
    RequireUnused(file);
    if (access(FolderOf(file).c_str(), W_OK) != 0 || access(file.c_str(), W_OK) != 0) throw FileFailure(errno, file);
    RemoveWithCompanions(file, error);
    if (error) throw FileFailure(error.value(), file);
    FlushFolderOf(file);
}

}  // namespace tallymar::recordset
