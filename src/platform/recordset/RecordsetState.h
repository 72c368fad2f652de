#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/CellValue.h"
#include "platform/recordset/DatabaseState.h"
#include "platform/recordset/ReadMark.h"
#include "platform/recordset/RowBlock.h"
#include "platform/recordset/RowEdit.h"
#include "platform/recordset/TableState.h"
#include "platform/recordset/Value.h"

namespace tallymar::recordset {

// What a Recordset is made of. A move reads the rows that follow into a block, more of them the longer a pass goes on, and the
// next moves are served from it. For how long the block, the current row and the columns of an edit are good: ReadMark.h.
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
    std::int64_t RowsBefore();

    std::string Bookmark();
    void SetBookmark(const std::string& bookmark);
    std::int64_t RowNumber();

    int Ordinal(std::string_view field) const;
    Value Get(int ordinal) {
        const std::size_t column = Checked(ordinal);
        if (!edit_.IsPending()) {
            RequireRow();
            return ValueOf(types_[column], Cells()[column]);
        }
        if (table_->Stale) RequireUsable();
        return ValueOf(types_[column], edit_.Cells()[column]);
    }
    void Edit();
    void AddNew();
    void Set(int ordinal, const Value& value) { edit_.Set(Checked(ordinal), value); }
    void Update();
    void CancelUpdate() { edit_.End(); }
    bool EditPending() const { return edit_.IsPending(); }
    void Delete();

 private:
    enum class Position { Empty, Bof, Row, Eof, NoMatch, Deleted };

    ReadMark Now() const { return ReadMark(*table_, *database_); }
    RowOrder& Order() const { return table_->Orders()[order_]; }
    const Cell* Cells() const { return block_.Cells(slot_); }
    std::size_t Checked(int ordinal) const {
        const auto column = static_cast<std::size_t>(ordinal);
        if (ordinal < 0 || column >= types_.size()) throw PlatformError(Failure::ItemNotFound);
        return column;
    }

    void BeginMove();
    bool CanUseBlock() const;
    bool MoveInBlock(bool forward);
    bool StepFromHere(bool forward);
    std::int64_t CountBefore(std::size_t depth, bool beyond, std::uint32_t nulls);
    std::uint32_t NullKeys() const;
    void BindShape(Statement& statement, int& parameter, const sql::StepShape& shape, std::span<const std::size_t> keys) const;
    bool Probe(const sql::StepShape& shape, std::span<const std::size_t> keys, bool forward);
    bool Take(Statement& statement, bool forward);
    bool IsTableEmpty() const;
    void BindKey(Statement& statement, int parameter, std::size_t column) const;
    void DropNeighbours();

    void RequireUsable() const;
    void RequireRow() {
        if (position_ != Position::Row || !rowRead_.IsCurrent(Now())) LookAgain();
    }
    void LookAgain();
    void Follow();
    bool ReadAgain();

    void WriteChanges();
    void WriteNewRow();

    std::shared_ptr<DatabaseState> database_;
    std::shared_ptr<TableState> table_;
    std::vector<FieldType> types_;
    std::size_t order_ = 0;

    Position position_ = Position::Empty;
    RowBlock block_;
    RowBlock spare_;
    std::size_t slot_ = 0;   // of the current row in the block
    std::size_t first_ = 0;  // the slots first_ to last_ hold rows that follow each other
    std::size_t last_ = 0;
    bool forward_ = true;  // the direction in which they do
    ReadMark blockRead_;
    std::chrono::steady_clock::time_point blockTime_;
    std::size_t readAhead_ = 1;
    ReadMark rowRead_;

    RowEdit edit_;
};

}  // namespace tallymar::recordset
