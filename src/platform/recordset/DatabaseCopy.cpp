#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/recordset/Database.h"
#include "platform/recordset/DatabaseState.h"
#include "platform/runtime/FileFailure.h"

namespace tallymar::recordset {

namespace {

namespace fs = std::filesystem;

// Takes a copy away again unless it is whole: one in its place that is only half of one would be worse than none.
class Unfinished {
 public:
    explicit Unfinished(Connection& copy) : copy_(copy) {}
    ~Unfinished() {
        if (whole_) return;
        copy_.Close();
        std::error_code ignored;
        fs::remove(copy_.Path(), ignored);
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    void IsWhole() { whole_ = true; }

 private:
    Connection& copy_;
    bool whole_ = false;
};

void CopyPages(Connection& from, Connection& to) {
    constexpr int kAllPages = -1;
    sqlite3_backup* copy = sqlite3_backup_init(to.Handle(), "main", from.Handle(), "main");
    if (copy == nullptr) to.Fail(sqlite3_errcode(to.Handle()));
    const int stepped = sqlite3_backup_step(copy, kAllPages);
    const int finished = sqlite3_backup_finish(copy);
    if (stepped != SQLITE_DONE || finished != SQLITE_OK) throw to.ErrorOf(finished != SQLITE_OK ? finished : stepped);
}

// By its name: opening it once more and closing it would drop its locks. Where the group cannot be kept, another group gets no
// more than everybody has.
void CopyRights(const fs::path& from, const fs::path& to) {
    struct stat source {};
    struct stat copy {};
    if (stat(from.c_str(), &source) != 0) throw FileFailure(errno, from);
    if (stat(to.c_str(), &copy) != 0) throw FileFailure(errno, to);
    mode_t mode = source.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    if (copy.st_gid != source.st_gid && chown(to.c_str(), static_cast<uid_t>(-1), source.st_gid) != 0) {
        mode &= S_IRWXU | S_IRWXO | (mode & S_IRWXO) << 3;
    }
    if (chmod(to.c_str(), mode) != 0) throw FileFailure(errno, to);
}

}  // namespace

void Database::CopyTo(const fs::path& path) const {
    state_->RequireOpen();
    // SQLite does not copy from a connection that is writing; one of its own sees the same file as it was before the batch.
    Connection from(Path(), Connection::Mode::Open, std::chrono::milliseconds(2000));
    Connection to(path, Connection::Mode::CreatePrivate, std::chrono::milliseconds(0));
    Unfinished copy(to);
    to.Execute("PRAGMA synchronous = FULL");
    CopyPages(from, to);
    to.Close();
    CopyRights(Path(), path);
    copy.IsWhole();
}

}  // namespace tallymar::recordset
