#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/TableDef.h"

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
    // open file by reading it: closing it again would drop the locks that this process holds. A failure leaves no file behind.
    void CopyTo(const std::filesystem::path& path) const;

    // Definitions of the tables, read from the file. NoSuchTable when there is none of the name.
    std::vector<std::string> TableNames() const;
    TableDef GetTableDef(std::string_view table) const;
    bool HasTable(std::string_view table) const;

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
};

// One command that goes over many rows. While it stands, every change is part of one transaction. Rows done before a failure
// stay: leaving the scope commits what is done, whether by Commit or by a failure's unwinding. After a crash or power cut none of
// it is there. Batches do not nest: an inner one takes part in the outer.
class WriteBatch {
 public:
    explicit WriteBatch(Database& database);  // Failure::RecordLocked when another program is writing
    ~WriteBatch();                            // commits what stands; a failure of that is lost, so call Commit on the good path
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    void Commit();
    // Takes back everything since the batch began, for a command that must be all or nothing on a failure too.
    void Rollback();

 private:
    std::shared_ptr<DatabaseState> state_;
    bool open_ = false;
};

}  // namespace tallymar::recordset
