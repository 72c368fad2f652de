#include "Floor.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace tallymar::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 3;
constexpr const char* kFind = "SELECT _rowid_, * FROM Assets WHERE rtrim(AssetNum) COLLATE NOCASE = ?";

// Printed at the end of nothing: it only keeps the sums from being optimised away.
volatile double kept = 0;

}  // namespace

double ReadColumns(sqlite3_stmt* statement, int first) {
    double sum = 0;
    const int columns = sqlite3_column_count(statement);
    for (int i = first; i < columns; ++i) {
        switch (sqlite3_column_type(statement, i)) {
            case SQLITE_INTEGER:
                sum += static_cast<double>(sqlite3_column_int64(statement, i));
                break;
            case SQLITE_FLOAT:
                sum += sqlite3_column_double(statement, i);
                break;
            case SQLITE_TEXT:
                sum += sqlite3_column_text(statement, i)[0];
                sum += sqlite3_column_bytes(statement, i);
                break;
            default:
                break;
        }
    }
    return sum;
}

Bare::Bare(const std::filesystem::path& path) {
    Require(sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
    Run("PRAGMA cache_size = -16384; PRAGMA synchronous = FULL");
}

Bare::~Bare() {
    sqlite3_close(handle_);
}

void Bare::Require(int code) const {
    if (code == SQLITE_OK) return;
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(handle_));
    std::exit(1);
}

void Bare::Run(const std::string& sql) const {
    Require(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr));
}

sqlite3_stmt* Bare::Prepare(const std::string& sql) const {
    sqlite3_stmt* statement = nullptr;
    Require(sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr));
    return statement;
}

void Bare::Write(sqlite3_stmt* statement) const {
    if (sqlite3_step(statement) != SQLITE_DONE) Require(SQLITE_ERROR);
    sqlite3_reset(statement);
}

double Bare::Scan(const char* sql) const {
    sqlite3_stmt* scan = Prepare(sql);
    double sum = 0;
    while (sqlite3_step(scan) == SQLITE_ROW) sum += ReadColumns(scan, 1);
    sqlite3_finalize(scan);
    return sum;
}

double Bare::Update(int round) const {
    Run("BEGIN IMMEDIATE");
    sqlite3_stmt* scan = Prepare(kScanByNumber);
    sqlite3_stmt* update = Prepare(std::string("UPDATE Assets SET \"") + kChanged + "\" = ? WHERE _rowid_ = ?");
    double sum = 0;
    int row = 0;
    while (sqlite3_step(scan) == SQLITE_ROW) {
        sum += ReadColumns(scan, 1);
        sqlite3_bind_int64(update, 1, ++row * 100 + round);
        sqlite3_bind_int64(update, 2, sqlite3_column_int64(scan, 0));
        Write(update);
    }
    sqlite3_finalize(scan);
    sqlite3_finalize(update);
    Run("COMMIT");
    return sum;
}

double Bare::Find(int rows, int finds) const {
    sqlite3_stmt* find = Prepare(kFind);
    double sum = 0;
    for (int i = 0; i < finds; ++i) {
        const std::string number = AssetNumber(static_cast<int>(std::int64_t{i} * 104729 % rows));
        sqlite3_bind_text(find, 1, number.c_str(), -1, SQLITE_STATIC);
        if (sqlite3_step(find) == SQLITE_ROW) sum += ReadColumns(find, 1);
        sqlite3_reset(find);
    }
    sqlite3_finalize(find);
    return sum;
}

ModelRow::ModelRow(const std::filesystem::path& company) {
    const Bare bare(company);
    sqlite3_stmt* row = bare.Prepare("SELECT * FROM Assets ORDER BY AssetNum LIMIT 1");
    if (sqlite3_step(row) != SQLITE_ROW) std::exit(1);
    for (int i = 0; i < sqlite3_column_count(row); ++i) {
        names_.emplace_back(sqlite3_column_name(row, i));
        values_.emplace_back(sqlite3_value_dup(sqlite3_column_value(row, i)));
    }
    sqlite3_finalize(row);
}

std::string ModelRow::InsertSql() const {
    std::string places;
    for (std::size_t i = 0; i < values_.size(); ++i) places += i == 0 ? "?" : ",?";
    return "INSERT INTO Assets VALUES (" + places + ")";
}

void ModelRow::Bind(sqlite3_stmt* insert) const {
    for (std::size_t i = 0; i < values_.size(); ++i) sqlite3_bind_value(insert, static_cast<int>(i) + 1, values_[i].get());
}

int ModelRow::Parameter(std::string_view column) const {
    return static_cast<int>(std::find(names_.begin(), names_.end(), column) - names_.begin()) + 1;
}

std::string AssetNumber(int row) {
    char text[16];
    std::snprintf(text, sizeof text, "%06d", row);
    return text;
}

double NanosecondsPer(int count, const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / count;
}

void PrintHead(int rows) {
    std::printf("%d rows, ns a row %*s %10s %8s\n", rows, 37, "floor", "ours", "ratio");
}

void Pair(const char* name, int count, const std::function<double(int)>& floor, const std::function<double(int)>& ours,
          const std::function<void()>& prepare) {
    double best[2] = {1e30, 1e30};
    for (int round = 0; round < kRounds; ++round) {
        if (prepare) prepare();
        best[0] = std::min(best[0], NanosecondsPer(count, [&] { kept = kept + floor(2 * round); }));
        if (prepare) prepare();
        best[1] = std::min(best[1], NanosecondsPer(count, [&] { kept = kept + ours(2 * round + 1); }));
    }
    std::printf("%-44s %10.0f %10.0f %8.2f\n", name, best[0], best[1], best[1] / best[0]);
    std::fflush(stdout);
}

}  // namespace tallymar::bench
