#include "formoutput/frmPrinterSetup.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

#include "formoutput/FormFiles.h"
#include "formoutput/FormPagesPdf.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/runtime/PlatformError.h"
#include "platform/spooler/PrintQueues.h"

namespace tallymar {

namespace {

constexpr int kLongestPort = 120;
constexpr int kLongestFile = 400;
constexpr const char* kPrinterVariable = "PRINTER";  // what the print service takes for the user's default

}  // namespace

void UsePrinter(const PrinterSettings& settings) {
    if (!settings.Printer.empty()) qputenv(kPrinterVariable, QByteArray::fromStdString(settings.Printer));
}

frmPrinterSetup::frmPrinterSetup(const AppPath& paths, QWidget* parent)
    : CSForm("frmPrinterSetup", tr("Printer Setup"), parent), paths_(paths) {
    List1_ = Named(new QListWidget(this), "List1");
    SetHint(List1_, tr("The printers of this computer; the selected one is the program's printer"));
    List1_->installEventFilter(this);  // for its hint
    connect(List1_, &QListWidget::itemActivated, this, Guarded([this](QListWidgetItem* item) {
                item->setSelected(true);
                Ok();
            }));
    auto* label = new QLabel(tr("P&rinters"), this);
    Join(label, List1_);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& caption, const QString& hint, auto action) {
        auto* button = Named(new CSCmdBtn(caption, this), name);
        SetHint(button, hint);
        connect(button, &QPushButton::clicked, this, Guarded([this, action] { (this->*action)(); }));
        buttons->addWidget(button);
        return button;
    };
    QWidget* ways = MakeWays();
    CSCmdBtn* test =
        add("cmdTest", tr("&Test Print"), tr("Send a page of two lines to where form pages go"), &frmPrinterSetup::Test);
    buttons->addStretch(1);
    CSCmdBtn* ok = add("OKButton", tr("OK"), tr("Use this printer from now on"), &frmPrinterSetup::Ok);
    auto* cancel = Named(new CSCmdBtn(tr("Cancel"), this), "CancelButton");
    SetHint(cancel, tr("Leave the printer as it was"));
    connect(cancel, &QPushButton::clicked, this, &CSForm::Unload);
    buttons->addWidget(cancel);
    SetCancelButton(cancel);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(8);
    all->addWidget(label);
    all->addWidget(List1_, 1);
    all->addWidget(ways);
    all->addWidget(MakeHintLine());
    all->addLayout(buttons);

    QWidget* last = List1_;
    for (QWidget* next :
         std::initializer_list<QWidget*>{ways_[0], ways_[1], ways_[2], sitxPort_, sitxFile_, cmdBrowse_, test, ok, cancel}) {
        setTabOrder(last, next);
        last = next;
    }
    const PrinterSettings settings = LoadPrinterSettings(paths_.Folder());
    saved_ = settings.Printer;
    ShowPrinters();
    ShowSettings(settings);
}

QWidget* frmPrinterSetup::MakeWays() {
    auto* box = new QGroupBox(tr("Form pages and soft fonts go to"), this);
    auto* grid = new QGridLayout(box);
    sitxPort_ = Named(new sitxEdit(kLongestPort, box), "sitxPort");
    SetHint(sitxPort_, tr("Name or address of a printer, with its port after a colon when it is not 9100: 192.168.1.20"));
    sitxPort_->setAccessibleName(tr("Name or address of the printer"));
    sitxFile_ = Named(new sitxEdit(kLongestFile, box), "sitxFile");
    SetHint(sitxFile_, tr("A file, which each print replaces, for a program or a person who sends it to the printer"));
    sitxFile_->setAccessibleName(tr("File"));
    cmdBrowse_ = Named(new CSCmdBtn(tr("&Browse..."), box), "cmdBrowse");
    SetHint(cmdBrowse_, tr("Choose the file"));
    connect(cmdBrowse_, &QPushButton::clicked, this, Guarded([this] { Browse(); }));
    const QStringList captions = {tr("T&he printer selected above"), tr("A printer's own p&ort"), tr("A &file")};
    const QStringList hints = {tr("Send them by the print service, raw to a PCL printer and as PDF to others"),
                               tr("Send them over the network straight to the printer, without the print service"),
                               tr("Write them into a file")};
    for (int i = 0; i < kWays; ++i) {
        auto* way = Named(new QRadioButton(captions[i], box), "optlRaw", i);
        SetHint(way, hints[i]);
        connect(way, &QRadioButton::toggled, this, [this] { ShowWay(); });
        ways_.at(static_cast<std::size_t>(i)) = way;
        grid->addWidget(way, i, 0);
    }
    grid->addWidget(sitxPort_, kToPort, 1, 1, 2);
    grid->addWidget(sitxFile_, kToFile, 1);
    grid->addWidget(cmdBrowse_, kToFile, 2);
    grid->setColumnStretch(1, 1);
    return box;
}

void frmPrinterSetup::ShowPrinters() {
    const class_Hourglass wait;
    for (const PrintQueue& queue : PrintQueues()) {
        QString text = ToQString(queue.Name);
        if (!queue.Description.empty()) text += QStringLiteral("   (%1)").arg(ToQString(queue.Description));
        auto* item = new QListWidgetItem(text, List1_);
        item->setData(Qt::UserRole, ToQString(queue.Name));
        if (queue.Name == saved_) List1_->setCurrentItem(item);
    }
    if (List1_->count() > 0) return;
    auto* none = new QListWidgetItem(tr("This computer has no printers"), List1_);
    none->setFlags(Qt::NoItemFlags);
}

void frmPrinterSetup::ShowSettings(const PrinterSettings& settings) {
    using Kind = PrintDestination::Kind;
    const Kind kind = settings.Raw.To();
    if (kind == Kind::Port) sitxPort_->SetText(settings.Raw.Text().substr(PrintDestination::kScheme.size()));
    if (kind == Kind::File) sitxFile_->setText(PathToQString(settings.Raw.FilePath()));
    ways_.at(kind == Kind::Port ? kToPort : kind == Kind::File ? kToFile : kToPrinter)->setChecked(true);
    ShowWay();
}

void frmPrinterSetup::ShowWay() {
    sitxPort_->setEnabled(ways_[kToPort]->isChecked());
    sitxFile_->setEnabled(ways_[kToFile]->isChecked());
    cmdBrowse_->setEnabled(ways_[kToFile]->isChecked());
}

std::optional<PrinterSettings> frmPrinterSetup::Read() {
    // The current item is only where the keyboard stands.
    const QList<QListWidgetItem*> selected = List1_->selectedItems();
    PrinterSettings settings{.Printer = selected.isEmpty() ? saved_ : ToWindows1252(selected[0]->data(Qt::UserRole).toString()),
                             .Raw = {}};
    QWidget* field = List1_;
    try {
        if (ways_[kToPrinter]->isChecked() && selected.isEmpty()) {
            throw PlatformError(Failure::InvalidCall, "Select a printer in the list, or another way for the form pages");
        }
        if (ways_[kToPort]->isChecked()) {
            field = sitxPort_;
            settings.Raw = PrintDestination::Parse(std::string(PrintDestination::kScheme) + sitxPort_->Text(),
                                                   [](const std::string&) { return false; });
        } else if (ways_[kToFile]->isChecked()) {
            field = sitxFile_;
            const std::filesystem::path file = QStringToPath(sitxFile_->text());
            if (!file.is_absolute()) throw PlatformError(Failure::InvalidCall, "Enter the file with its whole path, from / on");
            RequireNoFormFile(file, paths_, paths_.Folder());
            settings.Raw = PrintDestination::File(file);
        }
        return settings;
    } catch (const PlatformError& failure) {
        QApplication::beep();
        field->setFocus();
        ShowWarning(FailureToQString(failure.what()));
        return std::nullopt;
    }
}

void frmPrinterSetup::Browse() {
    QtPrompts prompts(this);
    const auto file = prompts.AskSaveFile({.Title = "Print to File",
                                           .Filters = {{"Printer files (*.prn)", "*.prn"}, {"All Files (*.*)", "*"}},
                                           .FilterIndex = 0,
                                           .InitialFolder = paths_.Folder(),
                                           .FileName = "forms.prn",
                                           .DefaultExtension = "prn",
                                           .AsksToOverwrite = false});
    if (file) sitxFile_->setText(PathToQString(*file));
}

void frmPrinterSetup::Test() {
    const auto settings = Read();
    if (!settings) return;
    try {
        const class_Hourglass wait;
        const PrintTarget target = LookAt(settings->RawTo(), paths_, paths_.Folder());
        SendTestPage(target);
        ShowResult(tr("A test page was sent to %1").arg(FailureToQString(target.To.Text())));
    } catch (const PlatformError& failure) {
        ShowWarning(FailureToQString(failure.what()));
    }
}

void frmPrinterSetup::Ok() {
    const auto settings = Read();
    if (!settings) return;
    try {
        SavePrinterSettings(paths_.Folder(), *settings);
    } catch (const PlatformError& failure) {
        ShowWarning(FailureToQString(failure.what()));
        return;
    }
    UsePrinter(*settings);
    Unload();
}

}  // namespace tallymar
