// The commands that change many assets against the floor: the same rows read, one amount changed and written by bare SQLite
// calls, or only read where a command changes none. Usage: utilities_bench [rows]

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "BenchCompany.h"
#include "Floor.h"
#include "batch/ChangeDept.h"
#include "batch/ChangeRange.h"
#include "batch/Resequence.h"
#include "batch/SetBooks.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

// Each run turns what the one before has done around, so that every row changes. (Pair gives ours every second number.)
bool IsThere(int round) {
    return round / 2 % 2 == 0;
}

// A command that has not changed every row has not been measured.
double Require(std::int64_t changed, CompanySession& session) {
    if (changed == session.AssetCount()) return static_cast<double>(changed);
    std::fprintf(stderr, "only %lld assets were changed\n", static_cast<long long>(changed));
    std::exit(1);
}

double Rename(CompanySession& session, Prompts& prompts, int round) {
    ChangeDeptOptions options;
    options.Division = {IsThere(round) ? "South" : "North", IsThere(round) ? "North" : "South"};
    return Require(ChangeDept(session, options, prompts), session);
}

double RenameNothing(CompanySession& session, Prompts& prompts) {
    ChangeDeptOptions options;
    options.Division = {"nowhere", "North"};
    return static_cast<double>(ChangeDept(session, options, prompts));
}

DepreciationSetUp SetUp(const char* percent) {
    DepreciationSetUp setUp;
    setUp.AssetType = "PP";
    setUp.DeprType = "MCRS";
    setUp.DeprMethod = "DB";
    setUp.DBPercent = percent;
    setUp.ClassLife = Units(5);
    setUp.Period = Units(5);
    return setUp;
}

double Range(CompanySession& session, Prompts& prompts, int round) {
    ChangeRangeOptions options;
    options.Book = 1;
    options.From = SetUp(IsThere(round) ? "150" : "200");
    options.To = SetUp(IsThere(round) ? "200" : "150");
    return Require(ChangeRange(session, options, prompts), session);
}

double Books(CompanySession& session, Prompts& prompts, int round) {
    SetBooksOptions options;
    options.FromBook = IsThere(round) ? 1 : 2;
    options.ToBook = 3;
    return Require(SetBooks(session, options, prompts), session);
}

double Copy(CompanySession& session, Prompts& prompts, const std::filesystem::path& target) {
    std::filesystem::remove(target);
    return Require(Resequence(session, {}, target, prompts)->Added, session);
}

// Books 1 and 2 differ in an amount, so that setting book 3 to the one or the other changes every row.
AssetRecord Asset(int row, int rows) {
    AssetRecord record;
    record.AssetNum = AssetNumber(ShuffledNumber(row, rows));
    record.Division = "South";
    record.Department = "Assembly";
    record.Description = "Bench, welding, with hood";
    record.AccountNum = "1500-01";
    record.CodeSection = "1245";
    record.TaxGroup = "MACH";
    record.NewUsed = "N";
    record.AssetType = "PP";
    record.ClassLife = Units(5);
    record.InService = Date::FromYmd(1994 + row % 10, 1 + row % 12, 15);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        record.Basis[book] = Units(1000);
        record.CurrDepr[book] = Units(book * 10);
        record.Period[book] = Units(5);
        record.DBPercent[book] = book == 1 ? 150 : 200;
        record.IRSConvUsed[book] = "Y";
    }
    record.DBPercent[2] = 150;
    record.DBPercent[3] = 150;
    return record;
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tallymar-utilities-bench";
    const std::filesystem::path path = folder / "company.mdb";
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder / "none"), profile);
    BuildCompany(session, path, rows, [&](int row) { return Asset(row, rows); });
    PrintHead(rows);
    {
        const Bare bare(path);
        const auto update = [&](int round) { return bare.Update(round); };
        Pair("change a division in every asset", rows, update, [&](int round) { return Rename(session, prompts, round); });
        Pair(
            "the same where none matches; floor: reading", rows, [&](int) { return bare.Scan(kScanByNumber); },
            [&](int) { return RenameNothing(session, prompts); });
        Pair("change the percentage of every asset (an indexed column)", rows, update,
             [&](int round) { return Range(session, prompts, round); });
        Pair("set one book equal in every asset", rows, update, [&](int round) { return Books(session, prompts, round); });
        Pair("copy every asset into a new company", rows, update,
             [&](int) { return Copy(session, prompts, folder / "target.mdb"); });
    }
    session.FileClose();
    std::filesystem::remove_all(folder);
    return 0;
}
