#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The floor that the benchmarks measure against: the same rows read and written by bare SQLite calls, on the same file, in the
// same run.
namespace tallymar::bench {

inline constexpr const char* kChanged = "CurrDepr(1)";  // the amount that an updating pass changes

inline constexpr const char* kScanByRow = "SELECT _rowid_, * FROM Assets ORDER BY _rowid_";
inline constexpr const char* kScanByNumber =
    "SELECT _rowid_, * FROM Assets INDEXED BY Assets_AssetNum ORDER BY rtrim(AssetNum) COLLATE NOCASE";

class Bare {
 public:
    explicit Bare(const std::filesystem::path& path);
    ~Bare();
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    // Each reads every column of each row it meets and returns a sum of them, so that nothing can be left out.
    double Scan(const char* sql) const;
    double Update(int round) const;  // a pass in the order of AssetNum that changes one amount in every row, in one transaction
    double Find(int rows, int finds) const;

    // For a floor of another shape. A failure ends the bench.
    void Run(const std::string& sql) const;
    sqlite3_stmt* Prepare(const std::string& sql) const;
    void Write(sqlite3_stmt* statement) const;  // steps and resets one that gives no rows

 private:
    void Require(int code) const;

    sqlite3* handle_ = nullptr;
};

// Reads every column of the statement's row but the first ones, so that nothing can be left out.
double ReadColumns(sqlite3_stmt* statement, int first);

// The row of Assets that a floor inserts again and again: the one of the least number in some company.
class ModelRow {
 public:
    explicit ModelRow(const std::filesystem::path& company);

    std::string InsertSql() const;  // every column, in the table's order
    void Bind(sqlite3_stmt* insert) const;
    int Parameter(std::string_view column) const;  // of the insert, from 1

 private:
    struct ValueFree {
        void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
    };

    std::vector<std::string> names_;
    std::vector<std::unique_ptr<sqlite3_value, ValueFree>> values_;
};

// Assets are numbered 000000 to rows - 1, in another order than that of the rows.
std::string AssetNumber(int row);
inline int ShuffledNumber(int row, int rows) {
    return static_cast<int>(std::int64_t{row} * 7919 % rows);
}

// Both in turn, three times; prints the least time per item of each, and their ratio. `prepare` comes before each, untimed.
void Pair(const char* name, int count, const std::function<double(int round)>& floor,
          const std::function<double(int round)>& ours, const std::function<void()>& prepare = {});
void PrintHead(int rows);
double NanosecondsPer(int count, const std::function<void()>& work);

}  // namespace tallymar::bench
