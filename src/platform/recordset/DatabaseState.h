#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/recordset/Connection.h"
#include "platform/recordset/Database.h"
#include "platform/recordset/TableDef.h"
#include "platform/recordset/TableState.h"
#include "platform/runtime/Trace.h"

namespace tallymar::recordset {

// One open file: its connection, its tables, and the transaction that a batch holds. Recordsets and batches share it; Close
// leaves an empty shell to those that outlive the database.
class DatabaseState {
 public:
    DatabaseState(const std::filesystem::path& path, Connection::Mode mode, std::chrono::milliseconds busyWait);
    DatabaseState(const DatabaseState&) = delete;
    DatabaseState& operator=(const DatabaseState&) = delete;

    Connection& Db() { return connection_; }
    void Close();
    void TraceTo(Trace& trace);
    void TraceLine(std::string_view subject, std::string_view text) const {
        if (trace_ != nullptr) trace_->Line(subject, text);
    }
    void RequireOpen() const;

    std::vector<std::string> TableNames();
    // NoSuchTable when there is none of the name. The definition is as the file has it now.
    std::shared_ptr<TableState> Table(std::string_view name);
    // Runs statements that change definitions as one transaction.
    void Define(const std::vector<std::string>& statements);

    // Runs one statement that changes rows.
    void Write(Statement& statement);

    // 0 outside batches and snapshots, else a number that no other has had: rows read under it cannot have changed.
    std::uint64_t Batch() const { return batch_; }
    void BeginBatch();
    void CommitBatch();
    void RollbackBatch();

    // A snapshot is a transaction that only reads; snapshots nest.
    void BeginSnapshot();
    void EndSnapshot();

    // Changes when another connection has changed the file.
    std::int64_t FileVersion();

 private:
    void CreateHeader();
    void CheckFormat();
    std::int64_t Pragma(const std::string& name);
    TableDef ReadDefinition(const std::string& name);
    void ForgetRows();
    void RequireWritable() const;
    void EndBatch();

    Connection connection_;
    Trace* trace_ = nullptr;
    std::unordered_map<std::string, std::shared_ptr<TableState>> tables_;  // by folded name
    std::int64_t schemaVersion_ = 0;
    std::optional<Statement> dataVersion_;
    std::uint64_t batch_ = 0;
    std::uint64_t lastBatch_ = 0;
    int batchDepth_ = 0;
    int snapshotDepth_ = 0;
    std::optional<BatchTakenBack> lost_;  // the failure that took the batch's transaction back
};

}  // namespace tallymar::recordset
