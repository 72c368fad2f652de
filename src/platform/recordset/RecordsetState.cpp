#include "platform/recordset/RecordsetState.h"

#include <algorithm>
#include <utility>

#include "platform/recordset/CellValue.h"

namespace tallymar::recordset {

RecordsetState::RecordsetState(std::shared_ptr<DatabaseState> database, std::shared_ptr<TableState> table)
    : database_(std::move(database)), table_(std::move(table)), edit_(*table_) {
    for (const Field& field : Definition().Fields) types_.push_back(field.Type);
    MoveToEnd(true);
}

void RecordsetState::RequireUsable() const {
    database_->RequireOpen();
    if (table_->Stale)
        throw PlatformError::About(Failure::InvalidCall, "the definition of " + table_->Definition().Name + " has changed");
}

std::int64_t RecordsetState::RecordCount() {
    RequireUsable();
    const std::int64_t version = database_->FileVersion();
    if (!table_->RowCount || table_->RowCountVersion != version) {
        Statement& statement = table_->CountRows();
        const StatementRun run(statement);
        table_->RowCount = statement.Step() ? statement.Int64(0) : 0;
        table_->RowCountVersion = version;
    }
    return *table_->RowCount;
}

std::int64_t RecordsetState::RowNumber() {
    RequireRow();
    return block_.Row(slot_);
}

// If the row may have changed since it was read: what it is now. One whose key has changed is then at its new place; one that is
// gone leaves the recordset between its neighbours.
void RecordsetState::Follow() {
    if (position_ == Position::Row && !rowRead_.IsCurrent(Now()) && !ReadAgain()) position_ = Position::Deleted;
}

bool RecordsetState::ReadAgain() {
    Statement& statement = table_->SelectByRow();
    const StatementRun run(statement);
    statement.Bind(1, block_.Row(slot_));
    DropNeighbours();
    if (!statement.Step()) return false;
    block_.Overwrite(slot_, statement.Handle(), Definition().Fields);
    rowRead_ = blockRead_ = Now();
    return true;
}

void RecordsetState::LookAgain() {
    RequireUsable();
    Follow();
    if (position_ != Position::Row) throw PlatformError(Failure::NoCurrentRecord);
}

bool RecordsetState::HasCurrentRow() {
    RequireUsable();
    Follow();
    return position_ == Position::Row;
}

int RecordsetState::Ordinal(std::string_view field) const {
    const int ordinal = table_->FindOrdinal(field);
    if (ordinal < 0) throw PlatformError::About(Failure::ItemNotFound, std::string(field));
    return ordinal;
}

void RecordsetState::Edit() {
    BeginMove();
    RequireRow();
    // What another program has written since must not be taken for a change of ours.
    if (!rowRead_.IsCertain(Now()) && !ReadAgain()) {
        position_ = Position::Deleted;
        throw PlatformError(Failure::NoCurrentRecord);
    }
    edit_.BeginEdit(Cells(), block_.Texts(), rowRead_);
}

void RecordsetState::AddNew() {
    BeginMove();
    edit_.BeginNew();
}

void RecordsetState::Update() {
    RequireUsable();
    if (!edit_.IsPending()) throw PlatformError(Failure::UpdateWithoutEdit);
    if (edit_.IsNew()) {
        edit_.RequireKeys();
        WriteNewRow();
    } else if (!edit_.Changed().IsEmpty()) {
        edit_.RequireKeys();
        WriteChanges();
    }
    edit_.End();
}

void RecordsetState::WriteChanges() {
    const ReadMark before = Now();
    const ColumnSet& changed = edit_.Changed();
    const std::vector<Cell>& cells = edit_.Cells();
    const bool mayWiden = edit_.Read().IsCertain(before) && !block_.HasUnconverted();
    const auto [statement, columns] = table_->Update(changed, mayWiden);
    int parameter = 0;
    columns->ForEach([&, update = statement](std::size_t column) { BindCell(*update, ++parameter, cells[column]); });
    statement->Bind(++parameter, block_.Row(slot_));
    database_->Write(*statement);
    if (sqlite3_changes(database_->Db().Handle()) == 0) throw PlatformError(Failure::NoCurrentRecord);

    ++table_->Changes;
    if (!edit_.Read().IsCurrent(before)) return;  // the row is read again when it is next looked at
    rowRead_ = Now();
    changed.ForEach([&](std::size_t column) {
        block_.Cells(slot_)[column] = cells[column];
        block_.ForgetUnconverted(slot_, column);
    });
    if (blockRead_ == before) blockRead_ = rowRead_;
    if (changed.Meets(Order().KeySet())) DropNeighbours();
}

void RecordsetState::WriteNewRow() {
    const ReadMark before = Now();
    Statement& statement = table_->Insert();
    int parameter = 0;
    for (const Cell& cell : edit_.Cells()) BindCell(statement, ++parameter, cell);
    statement.Bind(++parameter, table_->HighestRow);
    database_->Write(statement);

    table_->HighestRow =
        std::max(table_->HighestRow, static_cast<std::int64_t>(sqlite3_last_insert_rowid(database_->Db().Handle())));
    if (table_->RowCount) ++*table_->RowCount;
    ++table_->Changes;
    // The current row is as it was; its neighbours need not be.
    if (rowRead_.IsCurrent(before)) rowRead_ = Now();
}

void RecordsetState::Delete() {
    BeginMove();
    RequireRow();
    const ReadMark before = Now();
    Statement& statement = table_->DeleteByRow();
    statement.Bind(1, block_.Row(slot_));
    database_->Write(statement);
    position_ = Position::Deleted;
    if (sqlite3_changes(database_->Db().Handle()) == 0) throw PlatformError(Failure::NoCurrentRecord);

    table_->HighestRow = std::max(table_->HighestRow, block_.Row(slot_));
    if (table_->RowCount) --*table_->RowCount;
    ++table_->Changes;
    if (blockRead_ == before) blockRead_ = Now();
}

}  // namespace tallymar::recordset
