// The import of a comma-delimited file by a definition, against the floor: the same rows sought and then inserted, or read and
// their changed columns updated, by bare SQLite calls, in one durable transaction as the import is. Usage: import_bench [rows]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "BenchCompany.h"
#include "Floor.h"
#include "interchange/UserImport.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;
namespace fs = std::filesystem;

// What differs from record to record.
struct Varying {
    Varying(int row, int rows, int round)
        : Number(AssetNumber(ShuffledNumber(row, rows))),
          InService(Date::FromYmd(1990 + row * 7 % 14, 1 + row % 12, 1 + row % 28)),
          Account("1500-" + std::to_string(row % 41)),
          Basis(100 + row % 5000 + round),
          CurrDepr(row % 900 + round) {}

    std::string Number;
    Date InService;
    std::string Account;
    int Basis;
    int CurrDepr;
};

// All forty fields in their order.
FieldDefinition EveryField() {
    FieldDefinition definition;
    definition.FieldCountText = std::to_string(FieldDefinition::kFields);
    for (int field = 1; field <= FieldDefinition::kFields; ++field) definition.SetBox(field, std::to_string(field));
    return definition;
}

void WriteFile(const fs::path& path, int rows, int round) {
    std::ofstream file(path, std::ios::binary);
    for (int row = 0; row < rows; ++row) {
        const Varying varying(row, rows, round);
        const std::string date = std::to_string(varying.InService.Month()) + "/" + std::to_string(varying.InService.Day()) + "/" +
                                 std::to_string(varying.InService.Year());
        file << varying.Number << ",Plant,Assembly,\"Bench, welding, with hood\",S-1," << varying.Account << "," << date << ","
             << date << ",,12/31/2002,1245,NEW,PP,MCRS,DB,100,7,7,1000," << varying.Basis << ",0,250.5," << varying.CurrDepr
             << ",0,0,0,0,0,0,200,N,N,Y,N,N,N,N,0,0,0\r\n";
    }
}

class Companies {
 public:
    explicit Companies(const fs::path& folder) : folder_(folder), session_(AppPath::At(folder, folder / "none"), profile_) {
        session_.NewCompany(Empty());
        session_.FileClose();
    }

    fs::path Empty() const { return folder_ / "empty.mdb"; }
    fs::path Ours() const { return folder_ / "ours.mdb"; }
    fs::path Floor() const { return folder_ / "floor.mdb"; }

    void BeginEmpty() {
        session_.FileClose();
        for (const fs::path& one : {Ours(), Floor()}) fs::copy_file(Empty(), one, fs::copy_options::overwrite_existing);
        session_.OpenCompany(Ours(), prompts_);
    }

    double Import(const fs::path& file, int rows, bool update) {
        const ImportCounts counts = UserImport(session_, {.Definition = EveryField()}, file);
        if ((update ? counts.Updated : counts.Added) == rows) return rows;
        std::fprintf(stderr, "not every record was taken\n");
        std::exit(1);
    }

 private:
    fs::path folder_;
    UserProfile profile_;
    SilentPrompts prompts_;
    CompanySession session_;
};

constexpr const char* kSeek = "SELECT _rowid_, * FROM Assets INDEXED BY Assets_AssetNum WHERE rtrim(AssetNum) COLLATE NOCASE = ?";

// Steps to the row of the number.
bool Seek(sqlite3_stmt* seek, const std::string& number) {
    sqlite3_bind_text(seek, 1, number.c_str(), -1, SQLITE_STATIC);
    return sqlite3_step(seek) == SQLITE_ROW;
}

std::int64_t Stored(int amount) {
    return CurrencyAmount::FromInteger(amount).TenThousandths();
}

double AddBare(const fs::path& company, const ModelRow& model, int rows) {
    const Bare bare(company);
    bare.Run("BEGIN IMMEDIATE");
    sqlite3_stmt* seek = bare.Prepare(kSeek);
    sqlite3_stmt* insert = bare.Prepare(model.InsertSql());
    for (int row = 0; row < rows; ++row) {
        const Varying varying(row, rows, 0);
        if (Seek(seek, varying.Number)) std::exit(1);
        sqlite3_reset(seek);
        model.Bind(insert);
        sqlite3_bind_text(insert, model.Parameter("AssetNum"), varying.Number.c_str(), -1, SQLITE_STATIC);
        sqlite3_bind_text(insert, model.Parameter("AccountNum"), varying.Account.c_str(), -1, SQLITE_STATIC);
        for (const char* date : {"InService", "Purchased"}) {
            sqlite3_bind_double(insert, model.Parameter(date), varying.InService.Serial());
        }
        sqlite3_bind_int64(insert, model.Parameter("Basis(1)"), Stored(varying.Basis));
        sqlite3_bind_int64(insert, model.Parameter("CurrDepr(1)"), Stored(varying.CurrDepr));
        bare.Write(insert);
    }
    sqlite3_finalize(seek);
    sqlite3_finalize(insert);
    bare.Run("COMMIT");
    return rows;
}

double UpdateBare(const fs::path& company, int rows, int round) {
    const Bare bare(company);
    bare.Run("BEGIN IMMEDIATE");
    sqlite3_stmt* seek = bare.Prepare(kSeek);
    sqlite3_stmt* update = bare.Prepare("UPDATE Assets SET \"Basis(1)\" = ?, \"CurrDepr(1)\" = ? WHERE _rowid_ = ?");
    double sum = 0;
    for (int row = 0; row < rows; ++row) {
        const Varying varying(row, rows, round);
        if (!Seek(seek, varying.Number)) std::exit(1);
        sum += ReadColumns(seek, 1);
        sqlite3_bind_int64(update, 1, Stored(varying.Basis));
        sqlite3_bind_int64(update, 2, Stored(varying.CurrDepr));
        sqlite3_bind_int64(update, 3, sqlite3_column_int64(seek, 0));
        sqlite3_reset(seek);
        bare.Write(update);
    }
    sqlite3_finalize(seek);
    sqlite3_finalize(update);
    bare.Run("COMMIT");
    return sum;
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const fs::path folder = fs::temp_directory_path() / "tallymar-import-bench";
    fs::remove_all(folder);
    fs::create_directories(folder);
    const fs::path files[] = {folder / "even.txt", folder / "odd.txt"};
    for (int round = 0; round < 2; ++round) WriteFile(files[round], rows, round);

    {
        Companies companies(folder);
        companies.BeginEmpty();
        companies.Import(files[0], rows, false);
        const ModelRow model(companies.Ours());
        PrintHead(rows);
        Pair(
            "import by definition, adding; floor: seeks and inserts", rows,
            [&](int) { return AddBare(companies.Floor(), model, rows); },
            [&](int) { return companies.Import(files[0], rows, false); }, [&] { companies.BeginEmpty(); });
        companies.BeginEmpty();
        AddBare(companies.Floor(), model, rows);
        companies.Import(files[0], rows, false);
        // Each file in turn, so that every record changes.
        Pair(
            "the same, updating; floor: seeks and updates", rows,
            [&](int round) { return UpdateBare(companies.Floor(), rows, 1 - round / 2 % 2); },
            [&](int round) { return companies.Import(files[1 - round / 2 % 2], rows, true); });
    }
    fs::remove_all(folder);
    return 0;
}
