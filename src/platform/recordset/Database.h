#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/recordset/TableDef.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
class Trace;
}

namespace tallymar::recordset {

class Recordset;
class DatabaseState;

// Marks a file as this program's in its header, so that other tools can tell it.
inline constexpr int kApplicationId = 0x54414C59;  // "TALY"
inline constexpr int kFormatVersion = 1;           // user_version

// One open database file. Durable and crash-safe: rollback journal, every commit reaches the disk. Other processes may have it
// open too; one that writes is waited for, briefly, and then Failure::RecordLocked says so.
//
// Failures of opening: CannotOpenFile (no such file, or a folder), PermissionDenied, UnrecognizedFormat (no database, truncated,
// damaged, or written by a later release), RecordLocked. Failures of any write: DatabaseReadOnly, DiskFull, RecordLocked,
// DeviceError. Each text names the file. What a crash has left half written is taken back at the next opening.
class Database {
 public:
    // A new empty file; an existing one of that path is deleted first.
    static Database Create(const std::filesystem::path& path);
    // A file that cannot be written opens for reading.
    static Database Open(const std::filesystem::path& path, std::chrono::milliseconds busyWait = std::chrono::milliseconds(2000));

    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();  // closes; recordsets that are still there fail from then on

    const std::filesystem::path& Path() const;

    // The whole file as it was last committed, flushed to the disk, under another path; an existing file of that path is deleted
    // first. At the beginning of a WriteBatch that is the state before it, which nobody else can change meanwhile. Never copy an
    // open file by reading it: closing it again would drop the locks that this process holds. Whoever may not read this file may
    // not read the copy, at no time. A failure leaves no file.
    void CopyTo(const std::filesystem::path& path) const;

    // From here on writes every statement with its values, and what recordsets are opened and ordered by. It must outlast the
    // database.
    void TraceTo(Trace& trace);

    // Definitions of the tables, read from the file. NoSuchTable when there is none of the name.
    std::vector<std::string> TableNames() const;
    TableDef GetTableDef(std::string_view table) const;
    bool HasTable(std::string_view table) const;

    std::int64_t CountRows(std::string_view table) const;
    // Reads the whole file. Failure::UnrecognizedFormat, with what the database found, when it is damaged.
    void RequireIntegrity() const;

    // Each is one transaction: wholly there or not there. InvalidCall when there is one of the name; ItemNotFound when an index
    // names no field. Recordsets that are open on a table whose definition changes fail from then on.
    void CreateTable(const TableDef& table);
    void CreateField(std::string_view table, const Field& field);  // a Boolean is False in every row that exists, others Null
    void CreateIndex(std::string_view table, const Index& index);  // DuplicateKey or NullKey when the rows do not fit it

    // A table-type recordset, positioned on the first row in row order (no index chosen yet).
    Recordset OpenRecordset(std::string_view table);

 private:
    explicit Database(std::shared_ptr<DatabaseState> state);

    std::shared_ptr<DatabaseState> state_;
    friend class WriteBatch;
    friend class ReadSnapshot;
};

// What becomes of the rows that a command has done when a failure ends it.
enum class OnFailure {
    KeepDone,      // they stay: the batch is committed all the same
    AllOrNothing,  // they are taken back
};

// What a command reads while this stands is one state of the file, whatever other programs write beside it. They may: what they
// have written is kept for the end of it, and a commit that comes meanwhile waits its busy time, after which that program is told
// Failure::RecordLocked. So a snapshot lasts as long as a computation and never as long as somebody looks at its result. Nothing
// is written while it stands (InvalidCall). Within a batch, which nobody can write beside, it has nothing to do.
class ReadSnapshot {
 public:
    explicit ReadSnapshot(Database& database);  // Failure::RecordLocked when another program does not end its writing
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot&) = delete;
    ReadSnapshot& operator=(const ReadSnapshot&) = delete;

 private:
    std::shared_ptr<DatabaseState> state_;
};

// Ends a command of which nothing has been kept, whatever it was to keep: the disk refused it. Its text says so.
class BatchTakenBack : public PlatformError {
    using PlatformError::PlatformError;
};

// The transaction of a command that goes over many rows, as the body of RunBatch sees it.
class WriteBatch {
 public:
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    // Takes back everything since the batch began: for a command that its user has thought better of. What follows in the body is
    // no part of the batch.
    void Rollback();

 private:
    template <typename Body>
    friend auto RunBatch(Database& database, OnFailure ending, Body&& body);

    explicit WriteBatch(Database& database);
    ~WriteBatch();
    static void Run(Database& database, OnFailure ending, const std::function<void(WriteBatch&)>& body);
    void Commit();
    void EndAfterFailure(OnFailure ending, const std::string& told);

    std::shared_ptr<DatabaseState> state_;
    bool open_ = false;
};

// Runs a command as one transaction and gives what its body gives; the body takes the WriteBatch or nothing.
//
// The write lock is taken before the body begins (Failure::RecordLocked when another program is writing), so what the body reads
// cannot change any more; a command that has asked its user something looks again in there. The body's end commits. A failure
// that leaves the body ends the batch as `ending` says and goes on to the caller; if the batch cannot be ended so, the caller
// gets BatchTakenBack with both texts. After a crash or power cut none of a batch is there. Batches do not nest: an inner one
// takes part in the outer, and AllOrNothing takes back its own part.
template <typename Body>
auto RunBatch(Database& database, OnFailure ending, Body&& body) {
    const auto run = [&](WriteBatch& batch) {
        if constexpr (std::is_invocable_v<Body&, WriteBatch&>) {
            return body(batch);
        } else {
            return body();
        }
    };
    using Result = decltype(run(std::declval<WriteBatch&>()));
    if constexpr (std::is_void_v<Result>) {
        WriteBatch::Run(database, ending, run);
    } else {
        std::optional<Result> result;
        WriteBatch::Run(database, ending, [&](WriteBatch& batch) { result.emplace(run(batch)); });
        return std::move(*result);
    }
}

}  // namespace tallymar::recordset
