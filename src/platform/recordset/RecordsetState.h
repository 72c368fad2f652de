#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/ColumnSet.h"
#include "platform/recordset/DatabaseState.h"
#include "platform/recordset/RowBlock.h"
#include "platform/recordset/TableState.h"
#include "platform/recordset/Value.h"

namespace tallymar::recordset {

// What a Recordset is made of. A move reads the rows that follow into a block, more of them the longer a pass goes on, and the
// next moves are served from it. The block is dropped as soon as anything could have changed what it shows: a change of the table
// through this database other than of the current row itself, and, outside a batch (where other programs can write), a moment's
// age.
class RecordsetState {
 public:
    RecordsetState(std::shared_ptr<DatabaseState> database, std::shared_ptr<TableState> table);

    const TableDef& Definition() const { return table_->Definition(); }

    void SetIndex(std::string_view name);
    const std::string& IndexName() const { return Order().Name(); }

    void MoveToEnd(bool forward);  // the first row when forward, else the last
    void Move(bool forward);
    void Seek(std::span<const Value> key);

    bool Bof() const { return position_ == Position::Bof || position_ == Position::Empty; }
    bool Eof() const { return position_ == Position::Eof || position_ == Position::Empty; }
    bool NoMatch() const { return position_ == Position::NoMatch; }
    bool HasCurrentRow();
    std::int64_t RecordCount();

    std::string Bookmark();
    void SetBookmark(const std::string& bookmark);
    std::int64_t RowNumber();

    int Ordinal(std::string_view field) const;
    Value Get(int ordinal);
    void Edit();
    void AddNew();
    void Set(int ordinal, const Value& value);
    void Update();
    void CancelUpdate() { pending_ = Pending::None; }
    bool EditPending() const { return pending_ != Pending::None; }
    void Delete();

 private:
    enum class Position { Empty, Bof, Row, Eof, NoMatch, Deleted };
    enum class Pending { None, Edit, AddNew };

    RowOrder& Order() const { return table_->Orders()[order_]; }
    const Cell* Cells() const { return block_.Cells(slot_); }
    std::size_t Checked(int ordinal) const;

    void BeginMove();
    bool CanUseBlock() const;
    bool MoveInBlock(bool forward);
    bool StepFromHere(bool forward);
    bool Probe(const sql::StepShape& shape, std::span<const std::size_t> keys, bool forward);
    bool Take(Statement& statement, bool forward);
    bool IsTableEmpty() const;
    void BindKey(Statement& statement, int parameter, std::size_t column) const;
    void DropNeighbours();

    void RequireUsable() const;
    void RequireRow();
    void Follow();
    bool ReadAgain();

    void SetText(std::size_t column, std::string_view text);
    void Put(std::size_t column, const Cell& cell);
    void RequireKeys() const;
    void WriteChanges();
    void WriteNewRow();

    std::shared_ptr<DatabaseState> database_;
    std::shared_ptr<TableState> table_;
    std::size_t order_ = 0;

    Position position_ = Position::Empty;
    RowBlock block_;
    RowBlock spare_;
    std::size_t slot_ = 0;   // of the current row in the block
    std::size_t first_ = 0;  // the slots first_ to last_ hold rows that follow each other
    std::size_t last_ = 0;
    bool forward_ = true;  // the direction in which they do
    std::uint64_t blockChanges_ = 0;
    std::uint64_t blockBatch_ = 0;
    std::chrono::steady_clock::time_point blockTime_;
    std::size_t readAhead_ = 1;
    std::uint64_t rowChanges_ = 0;  // the table's count of changes when the current row was read
    std::uint64_t rowBatch_ = 0;    // the batch in which it was

    Pending pending_ = Pending::None;
    std::vector<Cell> edited_;       // the row as it will be; texts of an edit stand in the block, those of a new row in added_
    std::vector<Cell> before_;       // the row as Edit found it, or blank_
    std::vector<Cell> blank_;        // a new row
    std::uint64_t editChanges_ = 0;  // the table's count of changes at Edit
    TextArena added_;
    ColumnSet changed_;  // where edited_ differs from before_
};

}  // namespace tallymar::recordset
