// The find list on a large company: opening, filling, sorting, searching and jumping, beside the floor of a bare recordset pass
// that reads the same columns. Usage: assets_find_bench [rows] [folder]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "Floor.h"
#include "assets/FindAssets.h"
#include "store/CompanySession.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

constexpr const char* kWords[] = {"Lathe",  "Press", "Desk",     "Forklift", "Compressor",
                                  "Server", "Truck", "Conveyor", "Mill",     "Welder"};
constexpr std::int64_t kFirstRows = 200;  // that the window reads before it shows

void Build(CompanySession& session, const std::filesystem::path& path, int rows) {
    session.NewCompany(path);
    recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        AssetRecord record;
        for (int row = 0; row < rows; ++row) {
            record.AssetNum = AssetNumber(ShuffledNumber(row, rows));
            record.Division = kWords[row % 7];
            record.Department = std::to_string(row % 40);
            record.Description = std::string(kWords[row * 7919 % 10]) + " " + std::to_string(row * 31 % 100000);
            record.SerialNum = "SN-" + std::to_string(row * 7) + "-" + std::to_string(row % 97);
            record.AccountNum = "1500-" + std::to_string(row % 25);
            record.InService = Date::FromSerial(30000.0 + row * 17 % 8000);
            record.Sold = row % 50 == 0;
            session.AddAssetRecord(record);
        }
    });
}

std::size_t BarePass(CompanySession& session) {
    recordset::Recordset assets = session.Database().OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    const int texts[] = {assets.Ordinal("AssetNum"), assets.Ordinal("Division"), assets.Ordinal("Department"),
                         assets.Ordinal("Description")};
    const int amounts[] = {assets.Ordinal("SoldAmount"), assets.Ordinal("SoldExpense")};
    const int flags[] = {assets.Ordinal("Abandoned"), assets.Ordinal("Casualty"), assets.Ordinal("Sold"),
                         assets.Ordinal("LikeKind")};
    std::size_t sum = 0;
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        for (const int ordinal : texts) sum += assets.Get(ordinal).Text().size();
        for (const int ordinal : amounts) sum += assets.Get(ordinal).Currency() > CurrencyAmount();
        for (const int ordinal : flags) sum += assets.Get(ordinal).Boolean();
    }
    return sum;
}

void Print(const char* name, double nanoseconds) {
    std::printf("%-58s %10.1f ms\n", name, nanoseconds / 1e6);
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = (argc > 2 ? argv[2] : std::filesystem::temp_directory_path()) / "assets_find_bench";
    std::filesystem::create_directories(folder);
    UserProfile profile;
    CompanySession session(AppPath::At(folder, folder / "none"), profile);
    Build(session, folder / "company.mdb", rows);
    std::printf("%d assets\n", rows);

    std::size_t sum = 0;
    for (int i = 0; i < 2; ++i)
        Print("floor: recordset pass over the same columns", NanosecondsPer(1, [&] { sum += BarePass(session); }));
    for (const bool byDate : {false, true}) {
        std::optional<FindAssets> found;
        Print(byDate ? "by date: open with the first rows, ready for the user" : "open with the first rows, ready for the user",
              NanosecondsPer(1, [&] {
                  found.emplace(session, byDate, byDate);
                  found->FillMore(kFirstRows);
              }));
        Print("the rest of the rows, between the user's keys", NanosecondsPer(1, [&] { found->FillAll(); }));
        for (int column = 0; column < FindColumns::kCount; ++column) {
            const std::string name = "sort by " + std::string(found->Columns().Heading(column));
            Print(name.c_str(), NanosecondsPer(1, [&] { found->Sort(column); }));
        }
        for (const char* text : {"l", "lathe", "lathe 31", "no asset has it", ""}) {
            const std::string name = "search for \"" + std::string(text) + "\"";
            Print(name.c_str(), NanosecondsPer(1, [&] { found->Search(text); }));
        }
        Print("jump over the whole list (nothing begins so)",
              NanosecondsPer(1, [&] { sum += found->Jump("ZZ", 0).has_value(); }));
    }
    session.FileClose();
    std::filesystem::remove_all(folder);
    return sum == 0 ? 1 : 0;
}
