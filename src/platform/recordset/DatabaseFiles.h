#pragma once

#include <filesystem>

#include "platform/recordset/Database.h"

// Whole database files: made anew, copied, deleted. Nothing of a file that is there is harmed before what takes its place is
// whole on the disk.
namespace tallymar::recordset {

// A database that is made beside its place and put there when it is whole. Until then, and when it never is, what stands in the
// place stays as it was.
class DatabaseReplacement {
 public:
    // Fails with FileInUse when another process has the file of that path open or is writing to it, with PermissionDenied when it
    // is write-protected, and as Database::Create does when nothing can be made there. Removes what runs that died have left in
    // the folder.
    explicit DatabaseReplacement(const std::filesystem::path& place);
    ~DatabaseReplacement();  // removes what has not been put in its place
    DatabaseReplacement(const DatabaseReplacement&) = delete;
    DatabaseReplacement& operator=(const DatabaseReplacement&) = delete;

    // Where to make it, in the same folder.
    const std::filesystem::path& Unfinished() const { return unfinished_; }
    // Every Database on it must be closed. Fails with FileInUse when somebody has opened the earlier file meanwhile, PathAccess
    // when the folder refuses.
    void PutInPlace();

 private:
    std::filesystem::path place_;
    std::filesystem::path unfinished_;
};

// The database as it was last committed, under another name: copied page by page through the database itself, found whole (its
// own integrity check, and as many rows in every table), flushed, and put in place. Rights are those of the source. Failures:
// those of DatabaseReplacement and CopyTo; UnrecognizedFormat when the copy is not whole.
void CopyDatabase(const Database& source, const std::filesystem::path& place);

// Deletes the file and the journal beside it. Fails with FileInUse when another process has it open or is writing to it,
// FileNotFound, PermissionDenied, PathAccess.
void DeleteDatabase(const std::filesystem::path& file);

}  // namespace tallymar::recordset
