// Recordsets against the floor: the same rows read and written by bare SQLite calls, on the same file, in the same run.
// Usage: recordset_bench [rows] [folder]

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "Floor.h"
#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "store/Schema.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

recordset::Value Filling(const recordset::Field& field, int row) {
    switch (field.Type) {
        case recordset::FieldType::Text:
            if (field.Name == "AccountNum") return row % 2 == 0 ? "1500-01" : "1500-02";
            return field.Size >= 16 ? "Desk, walnut    " : field.Size >= 6 ? "ABC   " : "M";
        case recordset::FieldType::Date:
            return Date::FromSerial(37000.0 + row % 900);
        case recordset::FieldType::Currency:
            return CurrencyAmount::FromTenThousandths(std::int64_t{row} * 12345 % 100'000'000);
        case recordset::FieldType::Integer:
            return static_cast<std::int16_t>(row % 7);
        case recordset::FieldType::Boolean:
            return row % 5 == 0;
    }
    return {};
}

void Build(const std::filesystem::path& path, int rows) {
    recordset::Database database = recordset::Database::Create(path);
    CreateSchema(database);
    recordset::Recordset assets = database.OpenRecordset("Assets");
    const std::vector<recordset::Field> fields = assets.Definition().Fields;
    recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] {
        for (int row = 0; row < rows; ++row) {
            assets.AddNew();
            for (std::size_t i = 0; i < fields.size(); ++i) assets.Set(static_cast<int>(i), Filling(fields[i], row));
            assets.Set("AssetNum", AssetNumber(ShuffledNumber(row, rows)));
            assets.Update();
        }
    });
}

// --- Ours

double SumOf(const recordset::Value& value) {
    switch (value.Type()) {
        case recordset::Value::Kind::Null:
            return 0;
        case recordset::Value::Kind::Text:
            return value.Text()[0] + static_cast<double>(value.Text().size());
        case recordset::Value::Kind::Date:
            return value.AsDate().Serial();
        case recordset::Value::Kind::Currency:
            return static_cast<double>(value.Currency().TenThousandths());
        case recordset::Value::Kind::Integer:
            return value.Integer();
        case recordset::Value::Kind::Boolean:
            return value.Boolean() ? -1 : 0;
    }
    return 0;
}

double ReadRow(const recordset::Recordset& assets, int fields) {
    double sum = 0;
    for (int i = 0; i < fields; ++i) sum += SumOf(assets.Get(i));
    return sum;
}

double OurScan(recordset::Database& database, const char* index) {
    recordset::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex(index);
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    double sum = 0;
    for (; !assets.Eof(); assets.MoveNext()) sum += ReadRow(assets, fields);
    return sum;
}

// Every field is handed back as it was read, as the program's record does, and one of them changed.
double OurUpdate(recordset::Database& database, int round) {
    recordset::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    const int changed = assets.Ordinal(kChanged);
    std::vector<recordset::Value> row(static_cast<std::size_t>(fields));
    double sum = 0;
    int number = 0;
    recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] {
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
    });
    return sum;
}

double OurFind(recordset::Database& database, int rows, int finds) {
    recordset::Recordset assets = database.OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    const int fields = static_cast<int>(assets.Definition().Fields.size());
    double sum = 0;
    for (int i = 0; i < finds; ++i) {
        assets.Seek(AssetNumber(static_cast<int>(std::int64_t{i} * 104729 % rows)));
        if (!assets.NoMatch()) sum += ReadRow(assets, fields);
    }
    return sum;
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path();
    const std::filesystem::path path = folder / "recordset_bench.mdb";
    std::printf("%-44s %10.0f ns a row\n", "build", NanosecondsPer(rows, [&] { Build(path, rows); }));
    PrintHead(rows);
    {
        const Bare bare(path);
        recordset::Database database = recordset::Database::Open(path);
        Pair(
            "read all columns, row order", rows, [&](int) { return bare.Scan(kScanByRow); },
            [&](int) { return OurScan(database, ""); });
        Pair(
            "read all columns, order of AssetNum", rows, [&](int) { return bare.Scan(kScanByNumber); },
            [&](int) { return OurScan(database, "AssetNum"); });
        Pair(
            "find by number, read all columns", 20'000, [&](int) { return bare.Find(rows, 20'000); },
            [&](int) { return OurFind(database, rows, 20'000); });
        Pair(
            "read, set all, one changed, one transaction", rows, [&](int round) { return bare.Update(round); },
            [&](int round) { return OurUpdate(database, round); });
    }
    std::filesystem::remove(path);
    return 0;
}
