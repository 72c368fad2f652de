#include "platform/recordset/TableState.h"

#include <algorithm>

#include "platform/recordset/Names.h"

namespace tallymar::recordset {

namespace {

constexpr std::size_t kMostUpdates = 32;

}  // namespace

RowOrder::RowOrder(Connection& connection, const TableDef& table, const Index* index)
    : connection_(connection), table_(table), index_(index), keySet_(table.Fields.size()) {
    if (index == nullptr) return;
    name_ = index->Name;
    for (const std::string& name : index->Fields) {
        keys_.push_back(static_cast<std::size_t>(table.FindField(name) - table.Fields.data()));
        keySet_.Add(keys_.back());
    }
}

Statement& RowOrder::Compiled(Shaped& known, std::string (*makeSql)(const TableDef&, const Index*, const sql::StepShape&),
                              const sql::StepShape& shape) {
    for (auto& [its, statement] : known) {
        if (its == shape) return statement;
    }
    known.emplace_back(shape, Statement(connection_, makeSql(table_, index_, shape)));
    return known.back().second;
}

TableState::TableState(Connection& connection, TableDef definition)
    : connection_(connection), definition_(std::move(definition)), indexed_(definition_.Fields.size()) {
    for (std::size_t i = 0; i < definition_.Fields.size(); ++i) {
        ordinals_.emplace(FoldName(definition_.Fields[i].Name), static_cast<int>(i));
    }
    orders_.emplace_back(connection_, definition_, nullptr);
    for (const Index& index : definition_.Indexes) {
        orders_.emplace_back(connection_, definition_, &index);
        indexed_ = indexed_.With(orders_.back().KeySet());
    }
}

int TableState::FindOrdinal(std::string_view field) const {
    const auto found = ordinals_.find(FoldName(field));
    return found == ordinals_.end() ? -1 : found->second;
}

Statement& TableState::Lazy(std::optional<Statement>& statement, std::string (*makeSql)(const TableDef&)) {
    if (!statement) statement.emplace(connection_, makeSql(definition_));
    return *statement;
}

Statement& TableState::SelectByRow() {
    return Lazy(selectByRow_, sql::SelectByRow);
}

Statement& TableState::Insert() {
    return Lazy(insert_, sql::Insert);
}

Statement& TableState::DeleteByRow() {
    return Lazy(deleteByRow_, sql::DeleteByRow);
}

Statement& TableState::CountRows() {
    return Lazy(countRows_, [](const TableDef& table) { return "SELECT count(*) FROM " + sql::Quote(table.Name); });
}

std::pair<Statement*, const ColumnSet*> TableState::Update(const ColumnSet& changed, bool mayWiden) {
    const auto fits = [&](const UpdateStatement& update) {
        if (update.Columns == changed) return true;
        return mayWiden && update.Columns.Contains(changed) && !update.Columns.Without(changed).Meets(indexed_);
    };
    auto found = std::find_if(updates_.begin(), updates_.end(), fits);
    if (found == updates_.end()) {
        ColumnSet columns = changed;
        if (mayWiden && !updates_.empty()) columns = columns.With(updates_.front().Columns.Without(indexed_));
        std::vector<int> ordinals;
        columns.ForEach([&](std::size_t column) { ordinals.push_back(static_cast<int>(column)); });
        Statement statement(connection_, sql::UpdateByRow(definition_, ordinals));
        if (updates_.size() >= kMostUpdates) updates_.pop_back();
        updates_.push_front({std::move(columns), std::move(statement)});
    } else if (found != updates_.begin()) {
        updates_.splice(updates_.begin(), updates_, found);
    }
    return {&updates_.front().Run, &updates_.front().Columns};
}

void TableState::Release() {
    for (RowOrder& order : orders_) order.Release();
    selectByRow_.reset();
    insert_.reset();
    deleteByRow_.reset();
    countRows_.reset();
    updates_.clear();
}

}  // namespace tallymar::recordset
