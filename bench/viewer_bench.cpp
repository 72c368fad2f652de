// The pages of a company's five forms: one of them on screen, from the click to its painting, and all of them as one PDF.
// Usage: viewer_bench [assets] [folder]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <QApplication>
#include <QPushButton>

#include "BenchCompany.h"
#include "formoutput/FormPagesPdf.h"
#include "formoutput/frmHPViewer.h"
#include "irsforms/IrsForm.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;
using Clock = std::chrono::steady_clock;

constexpr int kRuns = 5;

// The best of the runs, in milliseconds, beside what a user does not notice.
void Best(const char* what, double limit, const std::function<void()>& run) {
    double best = 1e9;
    for (int i = 0; i < kRuns; ++i) {
        const auto start = Clock::now();
        run();
        best = std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::printf("%-32s %8.1f ms   (at most %.0f ms)\n", what, best, limit);
}

void Paint(QWidget& window) {
    QCoreApplication::processEvents();
    window.repaint();
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const int assets = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "tallymar-viewer-bench";
    const AppPath paths = AppPath::At(folder, AppPath::ProgramFolder());
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(paths, profile);
    BuildCompany(session, folder / "company.mdb", assets, RegisterAsset);
    for (const char* name : {"4562", "4797", "D", "4255", "8824"}) {
        std::unique_ptr<IrsForm> form = MakeForm(name);
        CreateForm(form, session, {}, folder, prompts);
    }

    frmHPViewer viewer(paths, "245621");
    viewer.resize(1100, 700);
    viewer.show();
    Paint(viewer);
    auto* next = viewer.findChild<QPushButton*>("cmdNext");
    auto* previous = viewer.findChild<QPushButton*>("cmdPrevious");
    Best("a page shown", 50, [&] {
        (previous->isEnabled() ? previous : next)->click();
        Paint(viewer);
    });
    const std::vector<std::string> files = FormPageFiles(folder, {});
    std::printf("%zu pages of %d assets\n", files.size(), assets);
    Best("their PDF", 500, [&] { FormPagesPdf(paths, folder, files); });
}
