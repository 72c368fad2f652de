#include "interchange/frmExchangeForm.h"

#include <cmath>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QScopeGuard>
#include <QVBoxLayout>

#include "interchange/frmImportCheck.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr int kProgressSteps = 1000;
constexpr qint64 kCountInterval = 50;  // milliseconds between two pictures of the counts

// Moves the bar and shows the counts of an import, but not for each of a hundred thousand records.
class ImportMeter {
 public:
    ImportMeter(Prompts& prompts, const std::function<void(const ImportCounts&)>& show)
        : prompts_(prompts), show_(show), progress_(prompts, kProgressSteps) {
        sinceShown_.start();
    }

    void Count(const ImportCounts& counts, double share) {
        counts_.Updated = counts.Updated;
        counts_.Added = counts.Added;
        counts_.Duplicates = counts.Duplicates;
        if (sinceShown_.elapsed() < kCountInterval) return;
        sinceShown_.restart();
        show_(counts_);
        prompts_.ProgressStep(std::lround(share * kProgressSteps));
    }
    const ImportCounts& Last() const { return counts_; }

 private:
    Prompts& prompts_;
    const std::function<void(const ImportCounts&)>& show_;
    ProgressScope progress_;
    QElapsedTimer sinceShown_;
    ImportCounts counts_;
};

}  // namespace

frmExchangeForm::frmExchangeForm(const char* name, const QString& title, CompanySession& session, QWidget* parent)
    : CSForm(name, title, parent), session_(session) {}

QLayout* frmExchangeForm::MakeFoot(const QList<CSCmdBtn*>& commands, const QString& closeCaption) {
    progressBar_ = Named(new QProgressBar(this), "ProgressBar1");
    progressBar_->setAccessibleName(tr("Progress"));
    progressBar_->setRange(0, 1);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);
    cmdCancel_ = Named(new CSCmdBtn(closeCaption, this), "cmdCancel");
    connect(cmdCancel_, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel_);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    QWidget* previous = nullptr;
    for (CSCmdBtn* command : commands + QList{cmdCancel_}) {
        buttons->addWidget(command);
        if (previous) setTabOrder(previous, command);
        previous = command;
    }
    auto* foot = new QVBoxLayout;
    foot->setSpacing(10);
    foot->addWidget(progressBar_);
    foot->addLayout(buttons);
    foot->addWidget(MakeHintLine());
    return foot;
}

void frmExchangeForm::Run(const std::function<void(Prompts&)>& command) {
    const auto ended = qScopeGuard([this] { cmdCancel_->setText(tr("&Close")); });
    const class_Hourglass wait;
    QtPrompts prompts(this, progressBar_);
    try {
        command(prompts);
    } catch (const std::exception& failure) {
        ShowWarning(FailureToQString(failure.what()).section(u'\n', 0, 0));
        throw;
    }
}

QCheckBox* frmExchangeForm::MakeAllOrNothing() {
    chkAllOrNothing_ = Named(new QCheckBox(tr("All or nothing"), this), "chkAllOrNothing");
    SetHint(chkAllOrNothing_, tr("If one record of the file fails, none of the file is taken"));
    return chkAllOrNothing_;
}

CSCmdBtn* frmExchangeForm::MakeCheckFile() {
    auto* cmdCheck = Named(new CSCmdBtn(tr("Check file"), this), "cmdCheck");
    SetHint(cmdCheck, tr("Read a file and list what would fail or be changed; nothing is written"));
    connect(cmdCheck, &QPushButton::clicked, this, Guarded([this] { CheckFile(); }));
    return cmdCheck;
}

ImportEnding frmExchangeForm::ChosenEnding() const {
    const bool keep = chkAllOrNothing_ != nullptr && !chkAllOrNothing_->isChecked();
    return keep ? ImportEnding::KeepDone : ImportEnding::AllOrNothing;
}

void frmExchangeForm::ImportNow() {
    QtPrompts prompts(this);
    if (const auto file = ways_.AskFile(prompts)) {
        Take(*file);
    } else {
        ways_.ShowCancelled();
    }
}

void frmExchangeForm::Take(const std::filesystem::path& file) {
    ways_.ShowFile(file);
    Run([&](Prompts& prompts) {
        ImportMeter meter(prompts, ways_.ShowCounts);
        const ImportEnding ending = ChosenEnding();
        try {
            const auto counts =
                ways_.Import(file, ending, prompts, [&meter](const ImportCounts& now, double share) { meter.Count(now, share); });
            if (counts) ways_.ShowDone(*counts);
        } catch (...) {
            ways_.ShowCounts(ending == ImportEnding::AllOrNothing ? ImportCounts() : meter.Last());
            throw;
        }
    });
}

void frmExchangeForm::CheckFile() {
    QtPrompts asking(this, progressBar_);
    const auto file = ways_.AskFile(asking);
    if (!file) return;
    std::optional<ImportCounts> counts;
    {
        const class_Hourglass wait;
        ImportMeter meter(asking, [](const ImportCounts&) {});
        counts = ways_.Import(*file, ImportEnding::CheckOnly, asking,
                              [&meter](const ImportCounts& now, double share) { meter.Count(now, share); });
    }
    if (!counts) return;
    frmImportCheck list(*counts, *file, this);
    list.ShowModal();
    if (list.WantsImport()) Take(*file);
}

}  // namespace tallymar
