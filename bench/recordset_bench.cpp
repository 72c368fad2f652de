// Recordsets against the floor: the same rows read and written by bare SQLite calls, on the same file, in the same run.
// Usage: recordset_bench [rows] [folder]

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/jet/Database.h"
#include "platform/jet/Recordset.h"
#include "store/Schema.h"

namespace {

using namespace tallymar;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 3;
constexpr const char* kChanged = "CurrDepr(1)";

std::string AssetNumber(int row) {
    char text[16];
    std::snprintf(text, sizeof text, "%06d", row);
    return text;
}

jet::Value Filling(const jet::Field& field, int row) {
    switch (field.Type) {
        case jet::FieldType::Text:
            if (field.Name == "AccountNum") return row % 2 == 0 ? "1500-01" : "1500-02";
            return field.Size >= 16 ? "Desk, walnut    " : field.Size >= 6 ? "ABC   " : "M";
        case jet::FieldType::Date: return Date::FromSerial(37000.0 + row % 900);
        case jet::FieldType::Currency: return CurrencyAmount::FromTenThousandths(std::int64_t{row} * 12345 % 100'000'000);
        case jet::FieldType::Integer: return static_cast<std::int16_t>(row % 7);
        case jet::FieldType::Boolean: return row % 5 == 0;
    }
    return {};
}

void Build(const std::filesystem::path& path, int rows) {
    jet::Database database = jet::Database::Create(path);
    CreateSchema(database);
    jet::Recordset assets = database.OpenRecordset("Assets");
    const std::vector<jet::Field> fields = assets.Definition().Fields;
    jet::WriteBatch batch(database);
    for (int row = 0; row < rows; ++row) {
        assets.AddNew();
        for (std::size_t i = 0; i < fields.size(); ++i) assets.Set(static_cast<int>(i), Filling(fields[i], row));
        assets.Set("AssetNum", AssetNumber(static_cast<int>(std::int64_t{row} * 7919 % rows)));
        assets.Update();
    }
    batch.Commit();
}

// --- The floor

struct Bare {
    explicit Bare(const std::filesystem::path& path) {
        Require(sqlite3_open_v2(path.c_str(), &Handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
        Run("PRAGMA cache_size = -65536; PRAGMA synchronous = FULL");
    }
    ~Bare() { sqlite3_close(Handle); }
    void Require(int code) const {
        if (code == SQLITE_OK) return;
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(Handle));
        std::exit(1);
    }
    void Run(const char* sql) const { Require(sqlite3_exec(Handle, sql, nullptr, nullptr, nullptr)); }
    sqlite3_stmt* Prepare(const std::string& sql) const {
        sqlite3_stmt* statement = nullptr;
        Require(sqlite3_prepare_v2(Handle, sql.c_str(), -1, &statement, nullptr));
        return statement;
    }

    sqlite3* Handle = nullptr;
};

double ReadColumns(sqlite3_stmt* statement, int first) {
    double sum = 0;
    const int columns = sqlite3_column_count(statement);
    for (int i = first; i < columns; ++i) {
        switch (sqlite3_column_type(statement, i)) {
            case SQLITE_INTEGER: sum += static_cast<double>(sqlite3_column_int64(statement, i)); break;
            case SQLITE_FLOAT: sum += sqlite3_column_double(statement, i); break;
            case SQLITE_TEXT:
                sum += sqlite3_column_text(statement, i)[0];
                sum += sqlite3_column_bytes(statement, i);
                break;
            default: break;
        }
    }
    return sum;
}

constexpr const char* kScanByRow = "SELECT _rowid_, * FROM Assets ORDER BY _rowid_";
constexpr const char* kScanByNumber = "SELECT _rowid_, * FROM Assets INDEXED BY Assets_AssetNum ORDER BY rtrim(AssetNum) COLLATE NOCASE";
constexpr const char* kFind = "SELECT _rowid_, * FROM Assets WHERE rtrim(AssetNum) COLLATE NOCASE = ?";

double BareScan(const Bare& bare, const char* sql) {
    sqlite3_stmt* scan = bare.Prepare(sql);
    double sum = 0;
    while (sqlite3_step(scan) == SQLITE_ROW) sum += ReadColumns(scan, 1);
    sqlite3_finalize(scan);
    return sum;
}

double BareUpdate(const Bare& bare, int round) {
    bare.Run("BEGIN IMMEDIATE");
    sqlite3_stmt* scan = bare.Prepare(kScanByNumber);
    sqlite3_stmt* update = bare.Prepare(std::string("UPDATE Assets SET \"") + kChanged + "\" = ? WHERE _rowid_ = ?");
    double sum = 0;
    int row = 0;
    while (sqlite3_step(scan) == SQLITE_ROW) {
        sum += ReadColumns(scan, 1);
        sqlite3_bind_int64(update, 1, ++row * 100 + round);
        sqlite3_bind_int64(update, 2, sqlite3_column_int64(scan, 0));
        if (sqlite3_step(update) != SQLITE_DONE) bare.Require(SQLITE_ERROR);
        sqlite3_reset(update);
    }
    sqlite3_finalize(scan);
    sqlite3_finalize(update);
    bare.Run("COMMIT");
    return sum;
}

double BareFind(const Bare& bare, int rows, int finds) {
    sqlite3_stmt* find = bare.Prepare(kFind);
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

// --- Ours

double SumOf(const jet::Value& value) {
    switch (value.Type()) {
        case jet::Value::Kind::Null: return 0;
        case jet::Value::Kind::Text: return value.Text()[0] + static_cast<double>(value.Text().size());
        case jet::Value::Kind::Date: return value.AsDate().Serial();
        case jet::Value::Kind::Currency: return static_cast<double>(value.Currency().TenThousandths());
        case jet::Value::Kind::Integer: return value.Integer();
        case jet::Value::Kind::Boolean: return value.Boolean() ? -1 : 0;
    }
    return 0;
}

double ReadRow(const jet::Recordset& assets, int fields) {
    double sum = 0;
    for (int i = 0; i < fields; ++i) sum += SumOf(assets.Get(i));
    return sum;
}

double OurScan(jet::Database& database, const char* index) {
    jet::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex(index);
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    double sum = 0;
    for (; !assets.Eof(); assets.MoveNext()) sum += ReadRow(assets, fields);
    return sum;
}

// Every field is handed back as it was read, as the program's record does, and one of them changed.
double OurUpdate(jet::Database& database, int round) {
    jet::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    const int changed = assets.Ordinal(kChanged);
    std::vector<jet::Value> row(static_cast<std::size_t>(fields));
    double sum = 0;
    int number = 0;
    jet::WriteBatch batch(database);
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        for (int i = 0; i < fields; ++i) {
            row[static_cast<std::size_t>(i)] = assets.Get(i);
            sum += SumOf(row[static_cast<std::size_t>(i)]);
        }
        row[static_cast<std::size_t>(changed)] = CurrencyAmount::FromTenThousandths(++number * 100 + round);
        assets.Edit();
        for (int i = 0; i < fields; ++i) assets.Set(i, row[static_cast<std::size_t>(i)]);
        assets.Update();
    }
    batch.Commit();
    return sum;
}

double OurFind(jet::Database& database, int rows, int finds) {
    jet::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    double sum = 0;
    for (int i = 0; i < finds; ++i) {
        assets.Seek(AssetNumber(static_cast<int>(std::int64_t{i} * 104729 % rows)));
        if (!assets.NoMatch()) sum += ReadRow(assets, fields);
    }
    return sum;
}

double NanosecondsPer(int count, const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / count;
}

double discarded = 0;

void Pair(const char* name, int count, const std::function<double(int)>& floor, const std::function<double(int)>& ours) {
    double best[2] = {1e30, 1e30};
    for (int round = 0; round < kRounds; ++round) {
        best[0] = std::min(best[0], NanosecondsPer(count, [&] { discarded += floor(2 * round); }));
        best[1] = std::min(best[1], NanosecondsPer(count, [&] { discarded += ours(2 * round + 1); }));
    }
    std::printf("%-44s %10.0f %10.0f %8.2f\n", name, best[0], best[1], best[1] / best[0]);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path();
    const std::filesystem::path path = folder / "recordset_bench.mdb";
    std::printf("%-44s %10.0f ns a row\n", "build", NanosecondsPer(rows, [&] { Build(path, rows); }));
    std::printf("%d rows, ns a row %*s %10s %8s\n", rows, 37, "floor", "ours", "ratio");
    {
        const Bare bare(path);
        jet::Database database = jet::Database::Open(path);
        Pair("read all columns, row order", rows, [&](int) { return BareScan(bare, kScanByRow); },
             [&](int) { return OurScan(database, ""); });
        Pair("read all columns, order of AssetNum", rows, [&](int) { return BareScan(bare, kScanByNumber); },
             [&](int) { return OurScan(database, "AssetNum"); });
        Pair("find by number, read all columns", 20'000, [&](int) { return BareFind(bare, rows, 20'000); },
             [&](int) { return OurFind(database, rows, 20'000); });
        Pair("read, set all, one changed, one transaction", rows, [&](int round) { return BareUpdate(bare, round); },
             [&](int round) { return OurUpdate(database, round); });
    }
    std::filesystem::remove(path);
    return discarded == 0.5 ? 1 : 0;
}
