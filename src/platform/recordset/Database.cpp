#include "platform/recordset/Database.h"

#include <algorithm>
#include <utility>

#include "platform/recordset/DatabaseState.h"
#include "platform/recordset/Names.h"
#include "platform/recordset/Recordset.h"
#include "platform/recordset/RecordsetState.h"
#include "platform/recordset/Sql.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

constexpr std::chrono::milliseconds kDefaultBusyWait(2000);

[[noreturn]] void AlreadyThere(std::string_view what, std::string_view name) {
    throw PlatformError(Failure::InvalidCall, std::string(what) + " already exists: " + std::string(name));
}

// Nulls that are there already would make the index a rule that the table does not keep.
void RequireNoNulls(DatabaseState& state, const TableDef& table, const Index& index) {
    if (!index.Primary && !index.Required) return;
    for (const std::string& name : index.Fields) {
        Statement nulls(state.Db(),
                        "SELECT 1 FROM " + sql::Quote(table.Name) + " WHERE " + sql::Quote(name) + " IS NULL LIMIT 1");
        if (nulls.Step()) throw PlatformError::About(Failure::NullKey, name);
    }
}

void RequireFields(const TableDef& table, const Index& index) {
    for (const std::string& name : index.Fields) {
        if (table.FindField(name) == nullptr) {
            throw PlatformError::About(Failure::ItemNotFound, name);
        }
    }
}

}  // namespace

Database::Database(std::shared_ptr<DatabaseState> state) : state_(std::move(state)) {}

Database::Database(Database&&) noexcept = default;

Database& Database::operator=(Database&& other) noexcept {
    if (this != &other) {
        if (state_ != nullptr) state_->Close();
        state_ = std::move(other.state_);
    }
    return *this;
}

Database::~Database() {
    if (state_ != nullptr) state_->Close();
}

Database Database::Create(const std::filesystem::path& path) {
    return Database(std::make_shared<DatabaseState>(path, Connection::Mode::Create, kDefaultBusyWait));
}

Database Database::Open(const std::filesystem::path& path, std::chrono::milliseconds busyWait) {
    return Database(std::make_shared<DatabaseState>(path, Connection::Mode::Open, busyWait));
}

const std::filesystem::path& Database::Path() const {
    return state_->Db().Path();
}

void Database::TraceTo(Trace& trace) {
    state_->TraceTo(trace);
}

std::vector<std::string> Database::TableNames() const {
    return state_->TableNames();
}

TableDef Database::GetTableDef(std::string_view table) const {
    return state_->Table(table)->Definition();
}

bool Database::HasTable(std::string_view table) const {
    const std::vector<std::string> names = TableNames();
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) { return SameName(name, table); });
}

std::int64_t Database::CountRows(std::string_view table) const {
    Statement count(state_->Db(), "SELECT count(*) FROM " + sql::Quote(GetTableDef(table).Name));
    count.Step();
    return count.Int64(0);
}

void Database::RequireIntegrity() const {
    Statement check(state_->Db(), "PRAGMA integrity_check(1)");
    check.Step();
    const std::string found = check.Utf8(0);
    if (found == "ok") return;
    throw PlatformError::About(Failure::UnrecognizedFormat, FromUtf8(Path().string()) + " (" + FromUtf8(found) + ")");
}

void Database::CreateTable(const TableDef& table) {
    if (HasTable(table.Name)) AlreadyThere("The table", table.Name);
    std::vector<std::string> statements = {sql::CreateTable(table)};
    for (const Index& index : table.Indexes) {
        RequireFields(table, index);
        statements.push_back(sql::CreateIndex(table, index));
    }
    state_->Define(statements);
}

void Database::CreateField(std::string_view table, const Field& field) {
    const TableDef definition = GetTableDef(table);
    if (definition.FindField(field.Name) != nullptr) AlreadyThere("The field", field.Name);
    std::vector<std::string> statements = {sql::AddField(definition.Name, field)};
    if (field.Type == FieldType::Boolean) {
        statements.push_back("UPDATE " + sql::Quote(definition.Name) + " SET " + sql::Quote(field.Name) + " = 0");
    }
    state_->Define(statements);
}

void Database::CreateIndex(std::string_view table, const Index& index) {
    const TableDef definition = GetTableDef(table);
    if (definition.FindIndex(index.Name) != nullptr) AlreadyThere("The index", index.Name);
    RequireFields(definition, index);
    RequireNoNulls(*state_, definition, index);
    state_->Define({sql::CreateIndex(definition, index)});
}

Recordset Database::OpenRecordset(std::string_view table) {
    state_->TraceLine("recordset", table);
    return Recordset(std::make_unique<RecordsetState>(state_, state_->Table(table)));
}

WriteBatch::WriteBatch(Database& database) : state_(database.state_) {
    state_->BeginBatch();
    open_ = true;
}

WriteBatch::~WriteBatch() = default;

void WriteBatch::Run(Database& database, OnFailure ending, const std::function<void(WriteBatch&)>& body) {
    WriteBatch batch(database);
    try {
        body(batch);
    } catch (const std::exception& failure) {
        batch.EndAfterFailure(ending, failure.what());
        throw;
    } catch (...) {
        batch.EndAfterFailure(ending, "Unknown failure");
        throw;
    }
    batch.Commit();
}

void WriteBatch::EndAfterFailure(OnFailure ending, const std::string& told) {
    try {
        ending == OnFailure::KeepDone ? Commit() : Rollback();
    } catch (const PlatformError& second) {
        // The batch may have been lost by the very failure that ended the body.
        const bool same = told.find(second.what()) != std::string::npos;
        throw BatchTakenBack(second.Code(), same ? told : told + ". Then: " + second.what());
    }
}

void WriteBatch::Commit() {
    if (std::exchange(open_, false)) state_->CommitBatch();
}

void WriteBatch::Rollback() {
    if (std::exchange(open_, false)) state_->RollbackBatch();
}

ReadSnapshot::ReadSnapshot(Database& database) : state_(database.state_) {
    state_->BeginSnapshot();
}

ReadSnapshot::~ReadSnapshot() {
    try {
        state_->EndSnapshot();
    } catch (const PlatformError&) {
        // Nothing was written that could be lost.
    }
}

}  // namespace tallymar::recordset
