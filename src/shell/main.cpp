#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "loans/LoanFile.h"
#include "loans/frmLoans.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/Looks.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/Trace.h"
#include "platform/runtime/Version.h"
#include "shell/frmLooks.h"
#include "shell/frmTallymar.h"
#include "store/AppPath.h"

namespace {

using namespace tallymar;

// A file for what is done with the company, or - for standard error: to look for faults.
constexpr const char* kTraceVariable = "TALLYMAR_TRACE";

struct Options {
    std::string File;  // a company or a loan
    std::string AppPathFolder;
};

int Start(const Options& options) {
    // The folder is changed below, so a relative name must be made whole before.
    std::optional<std::filesystem::path> file;
    if (!options.File.empty()) file = std::filesystem::absolute(options.File);
    const char* tracePath = std::getenv(kTraceVariable);
    const std::unique_ptr<Trace> trace = OpenTrace(tracePath != nullptr ? tracePath : "");
    const std::filesystem::path program = AppPath::ProgramFolder();
    AppPath paths = options.AppPathFolder.empty() ? AppPath::Of(program)
                                                  : AppPath::At(std::filesystem::absolute(options.AppPathFolder), program);
    paths.Prepare();
    std::filesystem::current_path(paths.Folder());

    Looks looks(QCoreApplication::instance());
    if (file && IsLoanFileName(*file)) {  // loans know no company
        frmLoans loans(file->parent_path());
        loans.OpenFile(*file);
        loans.ShowModal();
        return 0;
    }
    Tallymar window(std::move(paths));
    window.SetTrace(trace.get());
    window.SetLooks(looks);
    const bool opened = file && window.OpenFirstCompany(*file);
    if (!opened && !window.AskFirstCompany()) return 0;
    window.show();
    // Only from here on is the last window the main one.
    QApplication::setQuitOnLastWindowClosed(true);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App parser("Tallymar: fixed assets and their depreciation for tax preparers", "tallymar");
    parser.add_option("file", options.File, "Company or loan file to open at once");
    parser.add_option("--app-path", options.AppPathFolder, "Folder of the program's settings and data");
    parser.set_version_flag("--version", "Tallymar " + std::string(ProgramVersion()));
    CLI11_PARSE(parser, argc, argv);

    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    GuardedApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    SetLooks(application);
    try {
        return Start(options);
    } catch (const std::exception& failure) {
        application.Report(MessageOf(failure));
        return 1;
    }
}
