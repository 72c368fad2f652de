#pragma once

#include <cstdint>

#include "platform/recordset/DatabaseState.h"
#include "platform/recordset/TableState.h"

namespace tallymar::recordset {

// When something was read from a table, which says for what it is still good. All that is kept, and what ends it:
//
//   definition of a table,     the file's schema changes; looked at by every OpenRecordset. Recordsets that are open on a table
//   compiled statements        whose definition is another one fail from then on (TableState::Stale).
//   rows read ahead            the table is changed through this database other than in the current row, a batch begins or ends,
//                              or, outside a batch, where other programs can write, a moment has gone by.
//   current row                the table is changed through this database, or a batch begins after it was read: then it is read
//                              again when it is next looked at. Edit reads it again unless it is certain.
//   columns of a pending edit  nothing: an update writes what was changed. It may write the row's other columns along only while
//                              they are certain.
//   number of rows             another program changes the file, a batch is taken back. Our own rows are counted along.
//   highest row number         nothing: it only rises.
class ReadMark {
 public:
    ReadMark() = default;  // never
    ReadMark(const TableState& table, const DatabaseState& database) : changes_(table.Changes), batch_(database.Batch()) {}

    // Nothing has changed it through this database, and the batch that is under way, if any, is the one that it was read in.
    bool IsCurrent(const ReadMark& now) const { return changes_ == now.changes_ && (now.batch_ == 0 || batch_ == now.batch_); }
    // Nor can another program have: it was read in this batch.
    bool IsCertain(const ReadMark& now) const { return changes_ == now.changes_ && batch_ != 0 && batch_ == now.batch_; }
    bool IsInBatch() const { return batch_ != 0; }

    friend bool operator==(const ReadMark&, const ReadMark&) = default;

 private:
    std::uint64_t changes_ = 0;  // TableState::Changes
    std::uint64_t batch_ = 0;    // DatabaseState::Batch
};

}  // namespace tallymar::recordset
