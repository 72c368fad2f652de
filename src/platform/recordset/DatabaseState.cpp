#include "platform/recordset/DatabaseState.h"

#include <algorithm>

#include "platform/recordset/Names.h"
#include "platform/recordset/PlainTable.h"
#include "platform/recordset/Sql.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

constexpr const char* kTakenBack = " Nothing that this command changed has been kept.";

BatchTakenBack TakenBack(const PlatformError& error) {
    return BatchTakenBack(error.Code(), std::string(error.what()) + "." + kTakenBack);
}

}  // namespace

DatabaseState::DatabaseState(const std::filesystem::path& path, Connection::Mode mode, std::chrono::milliseconds busyWait)
    : connection_(path, mode, busyWait) {
    if (mode == Connection::Mode::Open) {
        CheckFormat();
    } else {
        CreateHeader();
    }
    connection_.Execute("PRAGMA synchronous = FULL");
    connection_.Execute("PRAGMA cache_size = -16384");  // bounds the memory of a batch, however large the company
}

void DatabaseState::CreateHeader() {
    connection_.Execute("BEGIN IMMEDIATE; PRAGMA application_id = " + std::to_string(kApplicationId) +
                        "; PRAGMA user_version = " + std::to_string(kFormatVersion) + "; COMMIT");
}

// Cheap, for it runs at every opening: it finds what is no database, or only the front part of one.
void DatabaseState::CheckFormat() {
    const std::int64_t declared = Pragma("page_count") * Pragma("page_size");
    Pragma("schema_version");
    connection_.Execute("SELECT count(*) FROM sqlite_schema");
    std::error_code error;
    const auto size = static_cast<std::int64_t>(std::filesystem::file_size(connection_.Path(), error));
    if (error) throw connection_.About(Failure::CannotOpenFile);
    if (declared == 0 || size < declared) {
        throw connection_.About(Failure::UnrecognizedFormat, declared == 0 ? "" : " (part of the file is missing)");
    }
    if (Pragma("application_id") == kApplicationId && Pragma("user_version") > kFormatVersion) {
        throw connection_.About(Failure::UnrecognizedFormat, " (written by a later release)");
    }
    // A file that another tool has left in write-ahead mode could lose its last commits when it is copied.
    try {
        connection_.Execute("PRAGMA journal_mode = DELETE");
    } catch (const PlatformError&) {
        // Read-only, or in use: it is good as it is.
    }
}

void DatabaseState::Close() {
    if (!connection_.IsOpen()) return;
    TraceLine("close", connection_.Path().string());
    for (auto& [name, table] : tables_) {
        table->Release();
        table->Stale = true;
        ++table->Changes;
    }
    tables_.clear();
    dataVersion_.reset();
    connection_.Close();
}

// SQLite itself tells of each statement as it begins, so that a database without a trace looks at nothing.
void DatabaseState::TraceTo(Trace& trace) {
    trace_ = &trace;
    TraceLine("open", connection_.Path().string());
    const auto write = [](unsigned, void* to, void* statement, void*) {
        char* sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
        if (sql != nullptr) static_cast<Trace*>(to)->Line("sql", sql);
        sqlite3_free(sql);
        return 0;
    };
    sqlite3_trace_v2(connection_.Handle(), SQLITE_TRACE_STMT, write, &trace);
}

void DatabaseState::RequireOpen() const {
    if (!connection_.IsOpen()) throw PlatformError(Failure::InvalidCall, "The database has been closed");
}

std::int64_t DatabaseState::Pragma(const std::string& name) {
    Statement statement(connection_, "PRAGMA " + name);
    return statement.Step() ? statement.Int64(0) : 0;
}

std::int64_t DatabaseState::FileVersion() {
    if (!dataVersion_) dataVersion_.emplace(connection_, "PRAGMA data_version");
    const StatementRun run(*dataVersion_);
    return dataVersion_->Step() ? dataVersion_->Int64(0) : 0;
}

std::vector<std::string> DatabaseState::TableNames() {
    RequireOpen();
    std::vector<std::string> names;
    Statement statement(
        connection_,
        "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY _rowid_");
    while (statement.Step()) names.push_back(FromUtf8(statement.Utf8(0)));
    return names;
}

std::shared_ptr<TableState> DatabaseState::Table(std::string_view name) {
    RequireOpen();
    if (const std::int64_t version = Pragma("schema_version"); version != schemaVersion_) {
        std::erase_if(tables_, [this](auto& entry) {
            TableState& table = *entry.second;
            try {
                table.Stale = !(ReadDefinition(table.Definition().Name) == table.Definition());
            } catch (const PlatformError&) {
                table.Stale = true;
            }
            if (!table.Stale) return false;
            table.Release();
            ++table.Changes;
            return true;
        });
        schemaVersion_ = version;
    }
    std::shared_ptr<TableState>& table = tables_[FoldName(name)];
    if (table == nullptr) {
        try {
            table = std::make_shared<TableState>(connection_, ReadDefinition(std::string(name)));
        } catch (...) {
            tables_.erase(FoldName(name));
            throw;
        }
    }
    return table;
}

TableDef DatabaseState::ReadDefinition(const std::string& name) {
    TableDef definition;
    for (const std::string& known : TableNames()) {
        if (SameName(known, name)) definition.Name = known;
    }
    if (definition.Name.empty()) {
        throw PlatformError::About(Failure::NoSuchTable, name);
    }
    const std::string utf8 = ToUtf8(definition.Name);
    RequirePlainTable(connection_, utf8);
    {
        Statement columns(connection_, "SELECT name, type FROM pragma_table_info(?) ORDER BY cid");
        columns.BindText(1, utf8);
        while (columns.Step()) {
            definition.Fields.push_back(sql::FieldFromDeclaredType(FromUtf8(columns.Utf8(0)), columns.Utf8(1)));
        }
    }
    Statement indexes(connection_,
                      "SELECT sql FROM sqlite_schema WHERE type = 'index' AND tbl_name = ? COLLATE NOCASE AND sql IS NOT NULL "
                      "ORDER BY _rowid_");
    indexes.BindText(1, utf8);
    while (indexes.Step()) {
        if (auto index = sql::IndexFromSql(definition, indexes.Utf8(0))) definition.Indexes.push_back(std::move(*index));
    }
    RequirePlainIndexes(connection_, definition);
    return definition;
}

void DatabaseState::Define(const std::vector<std::string>& statements) {
    BeginBatch();
    try {
        for (const std::string& statement : statements) connection_.Execute(statement);
    } catch (...) {
        RollbackBatch();
        throw;
    }
    CommitBatch();
    ForgetRows();
}

void DatabaseState::Write(Statement& statement) {
    RequireOpen();
    RequireWritable();
    if (lost_) throw *lost_;
    const StatementRun run(statement);
    try {
        while (statement.Step()) continue;
    } catch (const PlatformError& error) {
        // A full or failing disk can make SQLite take the whole transaction back by itself. What follows in the same command must
        // not then be written as if nothing had happened.
        if (batchDepth_ == 0 || connection_.InTransaction()) throw;
        lost_ = TakenBack(error);
        ForgetRows();
        throw *lost_;
    }
}

void DatabaseState::BeginSnapshot() {
    RequireOpen();
    if (batchDepth_ > 0 || snapshotDepth_ > 0) {
        ++snapshotDepth_;
        return;
    }
    connection_.Execute("BEGIN");
    try {
        Pragma("schema_version");  // the state is that of the first read
    } catch (...) {
        connection_.Execute("ROLLBACK");
        throw;
    }
    snapshotDepth_ = 1;
    batch_ = ++lastBatch_;
    ForgetRows();
}

void DatabaseState::EndSnapshot() {
    if (--snapshotDepth_ > 0 || batchDepth_ > 0) return;
    batch_ = 0;
    if (connection_.IsOpen() && connection_.InTransaction()) connection_.Execute("ROLLBACK");
}

void DatabaseState::RequireWritable() const {
    if (snapshotDepth_ > 0 && batchDepth_ == 0) {
        throw PlatformError(Failure::InvalidCall, "Nothing can be written while the file is being read as a whole");
    }
}

void DatabaseState::BeginBatch() {
    RequireOpen();
    RequireWritable();
    if (lost_) throw *lost_;
    if (batchDepth_ == 0) {
        connection_.Execute("BEGIN IMMEDIATE");
        batch_ = ++lastBatch_;
    } else {
        connection_.Execute("SAVEPOINT batch");
    }
    ++batchDepth_;
}

void DatabaseState::EndBatch() {
    if (--batchDepth_ > 0) return;
    batch_ = 0;
    lost_.reset();
}

void DatabaseState::CommitBatch() {
    if (!connection_.IsOpen()) {
        EndBatch();
        RequireOpen();
    }
    if (lost_) {
        const BatchTakenBack error = *lost_;
        EndBatch();
        throw error;
    }
    if (batchDepth_ > 1) {
        EndBatch();
        connection_.Execute("RELEASE batch");
        return;
    }
    try {
        connection_.Execute("COMMIT");
    } catch (const PlatformError& error) {
        const BatchTakenBack told = TakenBack(error);
        RollbackBatch();
        throw told;
    } catch (...) {
        RollbackBatch();
        throw;
    }
    EndBatch();
}

void DatabaseState::RollbackBatch() {
    const bool inner = batchDepth_ > 1;
    const bool gone = lost_.has_value() || !connection_.IsOpen() || !connection_.InTransaction();
    EndBatch();
    ForgetRows();
    if (gone) return;
    connection_.Execute(inner ? "ROLLBACK TO batch; RELEASE batch" : "ROLLBACK");
}

void DatabaseState::ForgetRows() {
    for (auto& [name, table] : tables_) {
        ++table->Changes;
        table->RowCount.reset();
    }
}

}  // namespace tallymar::recordset
