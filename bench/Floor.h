#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

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

 private:
    void Require(int code) const;
    void Run(const char* sql) const;
    sqlite3_stmt* Prepare(const std::string& sql) const;

    sqlite3* handle_ = nullptr;
};

// Assets are numbered 000000 to rows - 1, in another order than that of the rows.
std::string AssetNumber(int row);
inline int ShuffledNumber(int row, int rows) {
    return static_cast<int>(std::int64_t{row} * 7919 % rows);
}

// Both in turn, three times; prints the least time per item of each, and their ratio.
void Pair(const char* name, int count, const std::function<double(int round)>& floor,
          const std::function<double(int round)>& ours);
void PrintHead(int rows);
double NanosecondsPer(int count, const std::function<void()>& work);

}  // namespace tallymar::bench
