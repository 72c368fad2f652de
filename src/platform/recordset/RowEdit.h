#pragma once

#include <cstddef>
#include <vector>

#include "platform/recordset/ColumnSet.h"
#include "platform/recordset/ReadMark.h"
#include "platform/recordset/RowBlock.h"
#include "platform/recordset/TableState.h"
#include "platform/recordset/Value.h"

namespace tallymar::recordset {

// The row that an Edit or an AddNew is making, until Update or a move.
class RowEdit {
 public:
    explicit RowEdit(const TableState& table);

    void BeginEdit(const Cell* row, TextArena& texts, const ReadMark& read);
    void BeginNew();
    void End() { pending_ = Pending::None; }

    bool IsPending() const { return pending_ != Pending::None; }
    bool IsNew() const { return pending_ == Pending::New; }
    const std::vector<Cell>& Cells() const { return edited_; }
    const ColumnSet& Changed() const { return changed_; }  // in which columns the row differs from what it was
    const ReadMark& Read() const { return read_; }         // when Edit read the row

    void Set(std::size_t column, const Value& value);  // failures: see Recordset::Set
    void RequireKeys() const;                          // NullKey

 private:
    enum class Pending { None, Edit, New };

    void SetText(std::size_t column, std::string_view text);
    void Put(std::size_t column, const Cell& cell);

    const TableState& table_;
    Pending pending_ = Pending::None;
    std::vector<std::size_t> required_;  // the columns of keys that no Null may stand in
    std::vector<Cell> blank_;            // a new row
    std::vector<Cell> before_;
    std::vector<Cell> edited_;
    TextArena* texts_ = nullptr;  // what edited_ borrows from: of an edit, the row's own
    TextArena added_;
    ColumnSet changed_;
    ReadMark read_;
};

}  // namespace tallymar::recordset
