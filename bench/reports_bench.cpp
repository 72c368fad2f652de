// The Fixed Asset report with subtotals over a large company: the time of its body (selection, cells, pages) against the floor,
// the same rows read in the same order by bare SQLite calls in the same run. What the pages take, and the writing of the PDF,
// apart. Usage: reports_bench [assets] [folder]

#include <sqlite3.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/prompts/Prompts.h"
#include "reports/Reports.h"

namespace {

using namespace tallymar;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 3;
constexpr int kFederal = 1;

class NoPrompts : public Prompts {
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

double ReadRowsBare(const std::filesystem::path& path) {
    sqlite3* handle = nullptr;
    sqlite3_stmt* scan = nullptr;
    if (sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK ||
        sqlite3_exec(handle, "PRAGMA cache_size = -65536", nullptr, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(handle, "SELECT * FROM Assets ORDER BY InService", -1, &scan, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(handle));
        std::exit(1);
    }
    const auto start = Clock::now();
    double sum = 0;
    const int columns = sqlite3_column_count(scan);
    while (sqlite3_step(scan) == SQLITE_ROW) {
        for (int i = 0; i < columns; ++i) {
            switch (sqlite3_column_type(scan, i)) {
                case SQLITE_INTEGER:
                    sum += static_cast<double>(sqlite3_column_int64(scan, i));
                    break;
                case SQLITE_FLOAT:
                    sum += sqlite3_column_double(scan, i);
                    break;
                case SQLITE_TEXT:
                    sum += sqlite3_column_text(scan, i)[0] + sqlite3_column_bytes(scan, i);
                    break;
                default:
                    break;
            }
        }
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    sqlite3_finalize(scan);
    sqlite3_close(handle);
    if (sum == 0) std::exit(1);
    return seconds;
}

double Best(const std::function<double()>& run) {
    double best = run();
    for (int round = 1; round < kRounds; ++round) best = std::min(best, run());
    return best;
}

long PeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

}  // namespace

int main(int argc, char** argv) {
    const int assets = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "tallymar-reports-bench";
    const std::filesystem::path file = folder / "company.mdb";
    UserProfile profile;
    NoPrompts prompts;
    CompanySession session(AppPath::At(folder, folder), profile);
    Build(session, file, assets);
    ADepre engine(folder);

    ReportOptions options = ReportOptions::Defaults(kFixedAssetReport, Date::FromYmd(2004, 1, 15));
    options.Sequence = ReportSequence::InServiceDate;
    const std::optional<ReportFilter> filter = CheckReportOptions(session, options, prompts);
    int pages = 0;
    const auto print = [&](PrintPreviewControl& canvas) {
        ReportRun run{.Session = session, .Engine = engine, .Asking = prompts, .V = canvas, .Filter = *filter, .Now = {}};
        const auto start = Clock::now();
        PrintReport(run);
        pages = canvas.PageCount();
        return std::chrono::duration<double>(Clock::now() - start).count();
    };

    const double floor = Best([&] { return ReadRowsBare(file); });
    const long before = PeakMegabytes();
    const double body = Best([&] {
        PrintPreviewControl canvas(kLetterLandscape);
        return print(canvas);
    });
    std::printf("%d assets, Fixed Asset report in In Service Date order, %d pages, best of %d\n", assets, pages, kRounds);
    std::printf("  floor (rows read, bare SQLite)  %8.3f s  %6.2f us an asset\n", floor, floor / assets * 1e6);
    std::printf("  body (selection, cells, pages)  %8.3f s  %6.2f us an asset  %.2f x the floor\n", body, body / assets * 1e6,
                body / floor);
    std::printf("  memory of the pages             %5ld MB\n", PeakMegabytes() - before);
}
