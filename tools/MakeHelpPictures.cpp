// Takes the pictures of the tutorial from the program's own windows.
// Usage: make_help_pictures COMPANY PROGRAM_FOLDER OUTPUT_FOLDER. Run by the build, without a screen, on a copy of the sample
// company.

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include "assets/frmEditAsset.h"
#include "platform/controls/EventGuard.h"
#include "reports/ReportTable.h"
#include "shell/frmLooks.h"
#include "shell/frmTallymar.h"
#include "store/AppPath.h"

namespace {

namespace fs = std::filesystem;
using namespace tallymar;

constexpr int kSettle = 300;         // milliseconds: what a window still does once it is shown
constexpr int kWait = 20'000;        // milliseconds, for a window that is to come
constexpr int kWidestPicture = 620;  // pixels; a page of the help is about as wide
constexpr QSize kMainWindow(900, 660);

void Settle(int milliseconds = kSettle) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

class Photographer {
 public:
    Photographer(Tallymar& window, fs::path folder) : window_(window), folder_(std::move(folder)) {}

    void Take(QWidget* of, const char* name) {
        if (!of) throw std::runtime_error(std::string("there is no window for ") + name);
        Settle();
        QImage picture = of->grab().toImage();
        if (picture.width() > kWidestPicture) picture = picture.scaledToWidth(kWidestPicture, Qt::SmoothTransformation);
        // A window has no edge of its own; on a page it needs one.
        QPainter(&picture).drawRect(picture.rect().adjusted(0, 0, -1, -1));
        const fs::path file = folder_ / (std::string(name) + ".png");
        if (!picture.save(QString::fromStdString(file.string()))) throw std::runtime_error(file.string() + " cannot be written");
    }

    // Runs a command whose window is modal, does with it what is to be done, and closes it.
    void InModal(Command command, int index, const std::function<void(QWidget&)>& work) {
        std::string fault;
        QElapsedTimer clock;
        clock.start();
        QTimer timer;
        bool isAtWork = false;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (isAtWork || !modal) {
                if (clock.elapsed() > kWait) std::abort();
                return;
            }
            isAtWork = true;
            timer.stop();
            try {
                work(*modal);
            } catch (const std::exception& failure) {
                fault = failure.what();
            }
            if (QApplication::activeModalWidget() == modal) modal->close();
        });
        timer.start(20);
        window_.Run(command, index);
        if (!fault.empty()) throw std::runtime_error(fault);
    }

    QWidget* Form(const char* name) {
        for (QWidget* each : QApplication::allWidgets()) {
            if (each->objectName() == QLatin1String(name) && each->isVisible()) return each;
        }
        return nullptr;
    }

 private:
    Tallymar& window_;
    fs::path folder_;
};

template <typename Control>
Control& In(QWidget* form, const char* name) {
    auto* control = form ? form->findChild<Control*>(QString::fromLatin1(name)) : nullptr;
    if (!control) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
}

void TakeAll(Tallymar& window, Photographer& camera) {
    camera.Take(&window, "asset");
    auto* asset = qobject_cast<frmEditAsset*>(camera.Form("frmEditAsset"));
    window.Session().AssetsRecordset().Seek("000219");
    asset->LoadEdit();
    auto& tabs = In<QTabWidget>(asset, "SSTab1");
    tabs.setCurrentIndex(1);
    camera.Take(asset, "federal");
    tabs.setCurrentIndex(0);
    window.Run(Command::EditCompanyInformation);
    camera.Take(camera.Form("frmEditCompany"), "profile");
    In<QPushButton>(camera.Form("frmEditCompany"), "cmdCancel").click();
    window.Run(Command::EditFind);
    camera.Take(camera.Form("frmFindAsset"), "find");
    In<QPushButton>(camera.Form("frmFindAsset"), "cmdClose").click();

    window.Run(Command::ActivitiesComputeCurrent);
    In<QPushButton>(camera.Form("frmComputeOptions"), "cmdOK").click();
    camera.Take(camera.Form("frmComputeOptions"), "compute");
    In<QCheckBox>(camera.Form("frmComputeOptions"), "chkUseMQ(1)").setChecked(true);
    In<QPushButton>(camera.Form("frmComputeOptions"), "cmdOK").click();
    camera.Take(camera.Form("frmComputeOptions"), "compute-mq");
    In<QPushButton>(camera.Form("frmComputeOptions"), "cmdCancel").click();
    Settle();

    camera.InModal(Command::ReportsRun, kCurrentDepreciationReport, [&](QWidget& options) {
        camera.Take(&options, "report-options");
        In<QPushButton>(&options, "cmdOK").click();
    });
    camera.Take(camera.Form("frmPreview"), "report");
    camera.Form("frmPreview")->close();

    window.Run(Command::Create4562);
    QWidget* form = camera.Form("frmCreate4562");
    In<QLineEdit>(form, "silgBook").setText("1");
    In<QLineEdit>(form, "sitxType").setText("1120");
    QTimer answer;  // the count of assets is told
    QObject::connect(&answer, &QTimer::timeout, [] {
        if (auto* message = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) message->close();
    });
    answer.start(20);
    In<QPushButton>(form, "cmdCreate4562").click();
    answer.stop();
    camera.Take(form, "form-4562");
    In<QPushButton>(form, "cmdEdit4562").click();
    camera.Take(camera.Form("frmHPViewer"), "viewer");

    camera.InModal(Command::ActivitiesCloseYear, 0, [&](QWidget& options) { camera.Take(&options, "close-year"); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: make_help_pictures COMPANY PROGRAM_FOLDER OUTPUT_FOLDER\n";
        return EXIT_FAILURE;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    GuardedApplication application(argc, argv);
    SetLooks(application);
    application.SetReporter([](const QString& failure) {
        std::cerr << "make_help_pictures: " << failure.toStdString() << '\n';
        std::_Exit(EXIT_FAILURE);
    });
    try {
        const fs::path folder = fs::absolute(argv[3]);
        const fs::path data = folder / "data";
        fs::remove_all(data);
        fs::create_directories(data);
        fs::copy_file(argv[1], data / "sample.mdb");
        AppPath paths = AppPath::At(data, fs::absolute(argv[2]));
        paths.Prepare();
        fs::current_path(data);
        {
            Tallymar window(std::move(paths));
            window.resize(kMainWindow);
            if (!window.OpenFirstCompany(data / "sample.mdb")) return EXIT_FAILURE;
            window.show();
            Photographer camera(window, folder);
            TakeAll(window, camera);
        }
        fs::current_path(folder);
        fs::remove_all(data);
    } catch (const std::exception& failure) {
        std::cerr << "make_help_pictures: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
