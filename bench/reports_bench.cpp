// The Fixed Asset report with subtotals over a large company: its body (selection, cells, pages) against the floor of reading the
// same rows in the same order. What the pages take, and the writing of each kind of file, each by itself. Usage: reports_bench
// [assets] [folder]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "BenchCompany.h"
#include "Floor.h"
#include "platform/page/Delivery.h"
#include "reports/Reports.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

// What a document holds, without spare room.
double MegabytesOf(const PageDocument& canvas) {
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
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder), profile);
    BuildCompany(session, file, assets, RegisterAsset);
    ADepre engine(folder);

    ReportOptions options = ReportOptions::Defaults(kFixedAssetReport, Date::FromYmd(2004, 1, 15));
    options.Sequence = ReportSequence::InServiceDate;
    const std::optional<ReportFilter> filter = CheckReportOptions(session, options, prompts);
    PageDocument last;
    DetailTable details;
    const auto print = [&](DetailTable* table) {
        PageDocument canvas;
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
