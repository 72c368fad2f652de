// The Fixed Asset report with subtotals over a large company: its body (selection, cells, pages) against the floor of reading the
// same rows in the same order. What the pages take, and the writing of each kind of file, apart. Usage: reports_bench [assets]
// [folder]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "Floor.h"
#include "platform/page/Delivery.h"
#include "platform/prompts/Prompts.h"
#include "reports/Reports.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

class SilentPrompts : public Prompts {
 public:
    void Message(std::string_view, std::string_view, MessageKind) override {}
    bool AskYesNo(std::string_view, std::string_view) override { return false; }
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog&) override { return std::nullopt; }
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog&) override { return std::nullopt; }
    void ProgressStart(std::int64_t) override {}
    void ProgressStep(std::int64_t) override {}
};

AssetRecord Asset(int row) {
    char number[16];
    std::snprintf(number, sizeof number, "%06d", row);
    AssetRecord asset;
    asset.AssetNum = number;
    asset.Division = "Plant";
    asset.Description = "Drill press, floor " + std::to_string(row % 97);
    asset.AccountNum = "1500-" + std::to_string(row % 41);
    asset.AssetType = "PP";
    asset.NewUsed = "N";
    asset.ClassLife = Units(12);
    asset.BusinessUse = Units(100);
    asset.InService = Date::FromYmd(1990 + row * 7 % 14, 1 + row % 12, 1 + row % 28);
    asset.Sold = row % 50 == 0;
    if (asset.Sold) asset.DateSold = Date::FromYmd(2003, 6, 30);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        asset.Basis[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 7919 % 900'000'000);
        asset.PrevDepr[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 104729 % 500'000'000);
        asset.CurrDepr[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 1299709 % 90'000'000);
        asset.Period[book] = Units(7);
        asset.DBPercent[book] = 200;
        asset.IRSConvUsed[book] = "Y";
    }
    return asset;
}

void Build(CompanySession& session, const std::filesystem::path& path, int assets) {
    session.NewCompany(path);
    jet::WriteBatch batch(session.Database());
    for (int row = 0; row < assets; ++row) session.AddAssetRecord(Asset(row));
    jet::Recordset& company = session.CompanyRecordset();
    company.Edit();
    company.Set("FYEFederal", Date::FromYmd(2003, 12, 31));
    company.Update();
    batch.Commit();
}

// What a document holds, apart from spare room.
double MegabytesOf(const PrintPreviewControl& canvas) {
    std::size_t bytes = 0;
    for (int page = 1; page <= canvas.PageCount(); ++page) {
        for (const PageItem* item = canvas.PageBegin(page); item != canvas.PageEnd(page); ++item)
            bytes += sizeof *item + item->TextLength;
    }
    return static_cast<double>(bytes) / (1024 * 1024);
}

}  // namespace

int main(int argc, char** argv) {
    const int assets = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "tallymar-reports-bench";
    const std::filesystem::path file = folder / "company.mdb";
    const GuiForFiles gui;
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder), profile);
    Build(session, file, assets);
    ADepre engine(folder);

    ReportOptions options = ReportOptions::Defaults(kFixedAssetReport, Date::FromYmd(2004, 1, 15));
    options.Sequence = ReportSequence::InServiceDate;
    const std::optional<ReportFilter> filter = CheckReportOptions(session, options, prompts);
    PrintPreviewControl last;
    DetailTable details;
    const auto print = [&](DetailTable* table) {
        PrintPreviewControl canvas;
        ReportRun run{
            .Session = session, .Engine = engine, .Asking = prompts, .V = canvas, .Filter = *filter, .Now = {}, .Details = table};
        PrintReport(run);
        last = std::move(canvas);
        return static_cast<double>(last.PageCount());
    };

    PrintHead(assets);
    const Bare bare(file);
    const auto floor = [&](int) { return bare.Scan("SELECT _rowid_, * FROM Assets ORDER BY InService, _rowid_"); };
    Pair("Fixed Asset report, subtotals, its body", assets, floor, [&](int) { return print(nullptr); });
    Pair("the same with its detail rows as data", assets, floor, [&](int) {
        details = DetailTable();
        return print(&details);
    });
    std::printf("  pages %d, %.0f MB\n", last.PageCount(), MegabytesOf(last));
    for (const char* name : {"report.pdf", "report.txt", "report.csv", "report.xlsx"}) {
        const double nanoseconds = NanosecondsPer(1, [&] { DeliverToFile(last, details, folder / name); });
        std::printf("  %-12s %6.2f s\n", name, nanoseconds / 1e9);
    }
}
