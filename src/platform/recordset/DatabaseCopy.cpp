#include "platform/recordset/Database.h"
#include "platform/recordset/DatabaseState.h"

namespace tallymar::recordset {

void Database::CopyTo(const std::filesystem::path& path) const {
    state_->RequireOpen();
    constexpr int kAllPages = -1;
    // SQLite does not copy from a connection that is writing; one of its own sees the same file as it was before the batch.
    Connection from(Path(), Connection::Mode::Open, std::chrono::milliseconds(2000));
    Connection to(path, Connection::Mode::Create, std::chrono::milliseconds(0));
    to.Execute("PRAGMA synchronous = FULL");
    sqlite3_backup* copy = sqlite3_backup_init(to.Handle(), "main", from.Handle(), "main");
    if (copy == nullptr) to.Fail(sqlite3_errcode(to.Handle()));
    const int stepped = sqlite3_backup_step(copy, kAllPages);
    const int finished = sqlite3_backup_finish(copy);
    if (stepped == SQLITE_DONE && finished == SQLITE_OK) return;
    // A copy in its place that is only half of one would be worse than none.
    const PlatformError failure = to.ErrorOf(finished != SQLITE_OK ? finished : stepped);
    to.Close();
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    throw failure;
}

}  // namespace tallymar::recordset
