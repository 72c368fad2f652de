// Asset records, Compute Current and the opening of a company against the floor of bare SQLite calls.
// Usage: store_bench [rows] [folder with the depreciation tables]

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "BenchCompany.h"
#include "Floor.h"
#include "batch/ComputeCurrent.h"
#include "store/Vocabularies.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

// A company's usual mix: mostly modified ACRS personal property of the last ten years, some real property and older types.
AssetRecord MixedAsset(int row, int rows) {
    AssetRecord record;
    record.AssetNum = AssetNumber(ShuffledNumber(row, rows));
    record.Division = "Plant";
    record.Department = "Assembly";
    record.Description = "Bench, welding, with hood";
    record.AccountNum = row % 2 == 0 ? "1500-01" : "1500-02";
    record.TaxGroup = "MACH";
    record.CodeSection = "1245";
    record.NewUsed = "N";
    record.InService = Date::FromYmd(1994 + row % 10, 1 + row % 12, 15);
    record.Purchased = record.InService;
    record.BusinessUse = Units(100);
    const bool real = row % 8 == 0;
    record.AssetType = real ? "RL" : "PP";
    record.ClassLife = Units(real ? 39 : 5 + row % 6);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        record.DeprType[book] = book == 3 ? kGenl : kMcrs;
        record.DeprMethod[book] = real || row % 5 == 0 ? kSl : kDb;
        record.DBPercent[book] = record.DeprMethod[book] == kDb ? 200 : 0;
        record.IRSConvUsed[book] = real ? "M" : "Y";
        record.Basis[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row % 5000 + 100} * 1'234'500);
        record.PrevDepr[book] = CurrencyAmount::FromTenThousandths(record.Basis[book].TenThousandths() / 4);
        record.Period[book] = real ? Units(39) : Units(5 + row % 6);
    }
    return record;
}

double ReadPass(CompanySession& session) {
    recordset::Recordset& assets = session.AssetsRecordset();
    AssetRecord record;
    double sum = 0;
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        session.ReadAssetRecord(record);
        sum += record.Basis[4].ToDouble();
    }
    return sum;
}

double UpdatePass(CompanySession& session, int round) {
    recordset::Recordset& assets = session.AssetsRecordset();
    AssetRecord record;
    int row = 0;
    recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
            session.ReadAssetRecord(record);
            record.CurrDepr[1] = CurrencyAmount::FromTenThousandths(++row * 100 + round);
            session.WriteAssetRecord(record);
        }
    });
    return row;
}

double ComputeFourBooks(CompanySession& session, ADepre& engine, Prompts& prompts, int round) {
    ComputeCurrentOptions options;
    for (int book = kFirstBook; book <= kLastBook; ++book) options.Compute[book] = true;
    // Every other run with another convention, so that each writes new amounts.
    for (int book = kFirstBook; book <= kLastBook; ++book) options.UseMidQuarter[book] = round % 4 == 1;
    ComputeCurrentResult result;
    ComputeCurrent(session, engine, options, prompts, result);
    return result[1].Totals.InService.ToDouble();
}

long PeakMemoryKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path tables = argc > 2 ? argv[2] : ".";
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tallymar-store-bench";
    const std::filesystem::path path = folder / "company.mdb";

    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder / "none"), profile);
    ADepre engine(tables);

    const auto build = [&](int count) { BuildCompany(session, path, count, [&](int row) { return MixedAsset(row, count); }); };
    build(rows / 2);
    ComputeFourBooks(session, engine, prompts, 1);
    const long memoryOfHalf = PeakMemoryKiB();
    build(rows);
    ComputeFourBooks(session, engine, prompts, 1);
    std::printf("peak memory of computing: %ld MiB with %d assets, %ld MiB with %d\n", memoryOfHalf / 1024, rows / 2,
                PeakMemoryKiB() / 1024, rows);
    PrintHead(rows);
    {
        const Bare bare(path);
        Pair(
            "read into a record", rows, [&](int) { return bare.Scan(kScanByNumber); }, [&](int) { return ReadPass(session); });
        Pair(
            "read, change, write a record", rows, [&](int round) { return bare.Update(round); },
            [&](int round) { return UpdatePass(session, round); });
        Pair(
            "compute four books; floor: four such passes", rows,
            [&](int round) {
                double sum = 0;
                for (int pass = 0; pass < 4; ++pass) sum += bare.Update(round * 4 + pass);
                return sum;
            },
            [&](int round) { return ComputeFourBooks(session, engine, prompts, round); });
    }
    session.FileClose();
    std::printf("opening: %.1f ms\n", NanosecondsPer(1, [&] { session.OpenCompany(path, prompts); }) / 1e6);
    session.FileClose();
    std::filesystem::remove_all(folder);
    return 0;
}
