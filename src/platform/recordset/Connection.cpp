#include "platform/recordset/Connection.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace fs = std::filesystem;

namespace {

PlatformError Named(Failure failure, const fs::path& path, const std::string& more = {}) {
    return PlatformError::About(failure, FromUtf8(path.string()) + more);
}

// In bytes, far above what a company holds in one row, and in the definition of its widest table.
constexpr int kLongestRow = 1'000'000;

void DeleteForCreation(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) throw Named(Failure::CannotOpenFile, path);
    fs::remove(path, error);
    // A journal left beside it would be played back into the new file.
    for (const char* companion : kCompanions) {
        if (!error) fs::remove(path.string() + companion, error);
    }
    if (error) throw Named(Failure::PermissionDenied, path, " (" + error.message() + ")");
}

void CreatePrivate(const fs::path& path) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) throw FileFailure(errno, path);
    close(descriptor);
}

// By its name alone, never by opening it: closing any other descriptor of a file drops the locks that this process holds on it.
void RequireOpenable(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error == std::errc::permission_denied) throw Named(Failure::PermissionDenied, path);
    if (!fs::is_regular_file(status)) throw Named(Failure::CannotOpenFile, path);
    if (access(path.c_str(), R_OK) != 0 && errno == EACCES) throw Named(Failure::PermissionDenied, path);
}

}  // namespace

Connection::Connection(fs::path path, Mode mode, std::chrono::milliseconds busyWait) : path_(fs::absolute(path)) {
    if (mode == Mode::Open) {
        RequireOpenable(path_);
    } else {
        DeleteForCreation(path_);
    }
    if (mode == Mode::CreatePrivate) CreatePrivate(path_);
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(path_.c_str(), &handle_, flags, nullptr);
    try {
        if (handle_ == nullptr) throw std::bad_alloc();
        sqlite3_extended_result_codes(handle_, 1);
        if (code != SQLITE_OK) {
            const int reason = sqlite3_system_errno(handle_);
            if (reason == EACCES || reason == EPERM || reason == EROFS) throw Named(Failure::PermissionDenied, path_);
            throw Named(Failure::CannotOpenFile, path_);
        }
        sqlite3_busy_timeout(handle_, static_cast<int>(busyWait.count()));
        TrustNothing();
    } catch (...) {
        sqlite3_close(handle_);
        throw;
    }
}

// Before the first statement: whoever sent the file may have put into it what runs by itself.
void Connection::TrustNothing() {
    struct Setting {
        int Verb;
        int On;
    };
    constexpr Setting kSettings[] = {
        {SQLITE_DBCONFIG_DEFENSIVE, 1},
        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        {SQLITE_DBCONFIG_WRITABLE_SCHEMA, 0},
        {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
        {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
        {SQLITE_DBCONFIG_ENABLE_FKEY, 0},
        {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
        // A misspelt column must be an error, not a text.
        {SQLITE_DBCONFIG_DQS_DDL, 0},
        {SQLITE_DBCONFIG_DQS_DML, 0},
    };
    for (const Setting& setting : kSettings) {
        int now = -1;
        const int code = sqlite3_db_config(handle_, setting.Verb, setting.On, &now);
        if (code != SQLITE_OK || now != setting.On)
            throw Named(Failure::InvalidCall, path_, " (the database library is too old)");
    }
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, kLongestRow);
    Execute("PRAGMA cell_size_check = ON");
}

PlatformError Connection::About(Failure failure, const std::string& more) const {
    return Named(failure, path_, more);
}

Connection::~Connection() {
    Close();
}

void Connection::Close() {
    if (handle_ == nullptr) return;
    sqlite3_close(handle_);
    handle_ = nullptr;
}

void Connection::Execute(const std::string& sql) {
    const int code = sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) Fail(code);
}

void Connection::Fail(int code) const {
    if ((code & 0xff) == SQLITE_NOMEM) throw std::bad_alloc();
    throw ErrorOf(code);
}

PlatformError Connection::ErrorOf(int code) const {
    const std::string detail = std::string(" (") + (handle_ != nullptr ? sqlite3_errmsg(handle_) : sqlite3_errstr(code)) + ")";
    const int reason = handle_ != nullptr ? sqlite3_system_errno(handle_) : 0;
    switch (code & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return Named(Failure::RecordLocked, path_);
        case SQLITE_READONLY:
            if (code == SQLITE_READONLY_DBMOVED) {
                return Named(Failure::DeviceError, path_, " (the file was moved or deleted while it was open)");
            }
            return Named(Failure::DatabaseReadOnly, path_);
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return Named(Failure::PermissionDenied, path_);
        case SQLITE_CANTOPEN:
            // The journal stands in the same folder.
            if (access(path_.parent_path().c_str(), W_OK) != 0) return Named(Failure::DatabaseReadOnly, path_);
            return Named(Failure::DeviceError, path_, detail);
        case SQLITE_FULL:
            return Named(Failure::DiskFull, path_);
        case SQLITE_IOERR:
            if (reason == ENOSPC || reason == EDQUOT) return Named(Failure::DiskFull, path_);
            return Named(Failure::DeviceError, path_, detail);
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return Named(Failure::UnrecognizedFormat, path_);
        case SQLITE_CONSTRAINT:
            if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID) {
                return PlatformError(Failure::DuplicateKey);
            }
            if (code == SQLITE_CONSTRAINT_NOTNULL) return PlatformError(Failure::NullKey);
            return Named(Failure::InvalidCall, path_, detail);
        case SQLITE_MISMATCH:
        case SQLITE_TOOBIG:
            return Named(Failure::TypeMismatch, path_, detail);
        default:
            return Named(Failure::DeviceError, path_, detail);
    }
}

Statement::Statement(Connection& connection, const std::string& sql) : connection_(&connection) {
    const int code = sqlite3_prepare_v3(connection.Handle(), sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &handle_, nullptr);
    if (code != SQLITE_OK) connection.Fail(code);
}

Statement::~Statement() {
    sqlite3_finalize(handle_);
}

Statement::Statement(Statement&& other) noexcept
    : connection_(other.connection_), handle_(std::exchange(other.handle_, nullptr)) {}

bool Statement::Step() {
    const int code = sqlite3_step(handle_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    PlatformError error = connection_->ErrorOf(code);
    sqlite3_reset(handle_);
    if ((code & 0xff) == SQLITE_NOMEM) throw std::bad_alloc();
    throw error;
}

std::string Statement::Utf8(int column) const {
    const unsigned char* text = sqlite3_column_text(handle_, column);
    if (text == nullptr) return {};
    return std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(sqlite3_column_bytes(handle_, column)));
}

}  // namespace tallymar::recordset
