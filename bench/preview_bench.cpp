// From Ok of the Fixed Asset report to the first page of its preview on screen, in a new process as in a run that a user makes.
// Usage: preview_bench [assets] [folder]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <QApplication>
#include <QScreen>

#include "BenchCompany.h"
#include "platform/page/frmPreview.h"
#include "reports/Reports.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;
using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const int assets = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "tallymar-preview-bench";
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder), profile);
    BuildCompany(session, folder / "company.mdb", assets, RegisterAsset);
    ADepre engine(folder);
    ReportOptions options = ReportOptions::Defaults(kFixedAssetReport, Date::FromYmd(2004, 1, 15));
    options.Sequence = ReportSequence::InServiceDate;

    const auto start = Clock::now();
    const std::optional<ReportFilter> filter = CheckReportOptions(session, options, prompts);
    auto document = std::make_shared<PrintedDocument>();
    ReportRun run{.Session = session,
                  .Engine = engine,
                  .Asking = prompts,
                  .V = document->Pages,
                  .Filter = *filter,
                  .Now = {},
                  .Details = &document->Details};
    PrintReport(run);
    const double printed = MillisecondsSince(start);
    frmPreview preview(document);
    preview.resize(preview.screen()->availableGeometry().size() * 0.9);
    preview.show();
    // One round of events brings the window's size and its painting, and there may be none left when it is on screen.
    QCoreApplication::processEvents();
    preview.repaint();
    std::printf("%d assets, %d pages: report %.1f ms, first page on screen %.1f ms\n", assets, document->Pages.PageCount(),
                printed, MillisecondsSince(start));
}
