#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/recordset/ColumnSet.h"
#include "platform/recordset/Connection.h"
#include "platform/recordset/Sql.h"
#include "platform/recordset/TableDef.h"

namespace tallymar::recordset {

// An order in which rows can be walked: an index, or row order. Holds its compiled steps.
class RowOrder {
 public:
    RowOrder(Connection& connection, const TableDef& table, const Index* index);

    const std::string& Name() const { return name_; }
    const std::vector<std::size_t>& Keys() const { return keys_; }
    const ColumnSet& KeySet() const { return keySet_; }
    // Rows with equal keys, none of them Null, cannot be.
    bool IsUnique() const { return index_ != nullptr && index_->Primary; }

    Statement& Step(const sql::StepShape& shape) { return Compiled(steps_, sql::Step, shape); }
    Statement& Count(const sql::StepShape& shape) { return Compiled(counts_, sql::Count, shape); }
    void Release() {
        steps_.clear();
        counts_.clear();
    }

 private:
    using Shaped = std::vector<std::pair<sql::StepShape, Statement>>;

    Statement& Compiled(Shaped& known, std::string (*makeSql)(const TableDef&, const Index*, const sql::StepShape&),
                        const sql::StepShape& shape);

    Connection& connection_;
    const TableDef& table_;
    const Index* index_;
    std::string name_;
    std::vector<std::size_t> keys_;
    ColumnSet keySet_;
    Shaped steps_;
    Shaped counts_;
};

// What all recordsets on one table of one database share: the definition, the compiled statements, the count of its changes.
class TableState {
 public:
    TableState(Connection& connection, TableDef definition);
    TableState(const TableState&) = delete;
    TableState& operator=(const TableState&) = delete;

    const TableDef& Definition() const { return definition_; }
    int FindOrdinal(std::string_view field) const;       // -1 when there is none of the name
    std::vector<RowOrder>& Orders() { return orders_; }  // row order first, then the indexes as in the definition

    Statement& SelectByRow();
    Statement& Insert();
    Statement& DeleteByRow();
    Statement& CountRows();
    // Sets at least the columns of `changed`. With `mayWiden` it may name further columns, none of them a key, that are then
    // written with the value they have: a pass that changes now these and now those columns does with few statements that way.
    std::pair<Statement*, const ColumnSet*> Update(const ColumnSet& changed, bool mayWiden);
    void Release();  // lets go of every statement

    // Goes up with each change of a row through this connection; what was read at a lower one may be out of date.
    std::uint64_t Changes = 1;
    std::optional<std::int64_t> RowCount;
    std::int64_t RowCountVersion = 0;  // the file's version that the count belongs to
    // Row numbers up to here have been in use: none is given out again, so that a bookmark of a deleted row stays invalid.
    std::int64_t HighestRow = 0;
    // The definition has changed since; the recordsets that were open on it are no longer good.
    bool Stale = false;

 private:
    struct UpdateStatement {
        ColumnSet Columns;
        Statement Run;
    };

    Statement& Lazy(std::optional<Statement>& statement, std::string (*makeSql)(const TableDef&));

    Connection& connection_;
    TableDef definition_;
    std::unordered_map<std::string, int> ordinals_;  // by folded name
    std::vector<RowOrder> orders_;
    ColumnSet indexed_;
    std::optional<Statement> selectByRow_;
    std::optional<Statement> insert_;
    std::optional<Statement> deleteByRow_;
    std::optional<Statement> countRows_;
    std::list<UpdateStatement> updates_;  // the last used first
};

}  // namespace tallymar::recordset
