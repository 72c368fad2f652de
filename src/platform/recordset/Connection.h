#pragma once

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/runtime/PlatformError.h"

namespace tallymar::recordset {

// What stands beside a database file while it is written.
inline constexpr std::array<const char*, 3> kCompanions = {"-journal", "-wal", "-shm"};

// One connection to a database file; turns SQLite's result codes into this platform's failures.
class Connection {
 public:
    enum class Mode { Create, CreatePrivate, Open };  // a private file nobody but its owner may read

    Connection(std::filesystem::path path, Mode mode, std::chrono::milliseconds busyWait);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* Handle() const { return handle_; }
    bool IsOpen() const { return handle_ != nullptr; }
    const std::filesystem::path& Path() const { return path_; }
    // Every statement must be gone by then.
    void Close();

    // For statements that give no rows and are not repeated.
    void Execute(const std::string& sql);
    bool InTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

    [[noreturn]] void Fail(int code) const;
    PlatformError ErrorOf(int code) const;
    // The failure's text, the file and what more there is to say.
    PlatformError About(Failure failure, const std::string& more = {}) const;

 private:
    void TrustNothing();

    std::filesystem::path path_;
    sqlite3* handle_ = nullptr;
};

// A compiled statement, kept for many runs. A run ends with Reset (StatementRun sees to it), so that no lock outlives a call.
class Statement {
 public:
    Statement(Connection& connection, const std::string& sql);
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&&) = delete;

    // False when there is no (further) row. A failure resets the statement.
    bool Step();
    void Reset() { sqlite3_reset(handle_); }

    // Texts and blobs are not copied: they must last until the run ends.
    void BindNull(int parameter) { Check(sqlite3_bind_null(handle_, parameter)); }
    void Bind(int parameter, std::int64_t value) { Check(sqlite3_bind_int64(handle_, parameter, value)); }
    void Bind(int parameter, double value) { Check(sqlite3_bind_double(handle_, parameter, value)); }
    void BindText(int parameter, std::string_view utf8) {
        Check(sqlite3_bind_text64(handle_, parameter, utf8.data() == nullptr ? "" : utf8.data(), utf8.size(), SQLITE_STATIC,
                                  SQLITE_UTF8));
    }
    void BindTextCopy(int parameter, std::string_view utf8) {
        Check(sqlite3_bind_text64(handle_, parameter, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    }
    void BindBlobCopy(int parameter, std::string_view bytes) {
        Check(sqlite3_bind_blob64(handle_, parameter, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_TRANSIENT));
    }

    std::int64_t Int64(int column) const { return sqlite3_column_int64(handle_, column); }
    std::string Utf8(int column) const;
    sqlite3_stmt* Handle() const { return handle_; }

 private:
    void Check(int code) {
        if (code != SQLITE_OK) connection_->Fail(code);
    }

    Connection* connection_;
    sqlite3_stmt* handle_ = nullptr;
};

class StatementRun {
 public:
    explicit StatementRun(Statement& statement) : statement_(statement) {}
    ~StatementRun() { statement_.Reset(); }
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

 private:
    Statement& statement_;
};

}  // namespace tallymar::recordset
