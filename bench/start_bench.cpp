// From the start of the program to its main window ready: on a company of a few assets, and on a large one.
// Usage: start_bench COMPANY-FILE... (offscreen unless QT_QPA_PLATFORM says otherwise)

#include <chrono>
#include <cstdio>
#include <filesystem>

#include <QApplication>

#include "shell/frmTallymar.h"
#include "store/AppPath.h"

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const auto milliseconds = [&start] { return std::chrono::duration<double, std::milli>(Clock::now() - start).count(); };
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const double toolkit = milliseconds();
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tallymar-start-bench";
    std::filesystem::create_directories(folder);
    for (int i = 1; i < argc; ++i) {
        const double before = milliseconds();
        tallymar::Tallymar window(tallymar::AppPath::At(folder, folder / "none"));
        if (!window.OpenFirstCompany(argv[i])) return 1;
        window.show();
        QApplication::processEvents();
        window.grab();
        std::printf("%-60s %6.0f ms to the main window with its asset form, painted; floor: %.0f ms for the toolkit alone\n",
                    argv[i], milliseconds() - before + toolkit, toolkit);
    }
    std::filesystem::remove_all(folder);
    return 0;
}
