#include "reports/frmDocumentForm.h"

#include <array>

#include <QHBoxLayout>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/QtPrompts.h"
#include "platform/page/frmPreview.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

// In the order of the choice's items.
constexpr std::array<OutputTarget, 3> kTargets = {OutputTarget::Preview, OutputTarget::Printer, OutputTarget::File};

}  // namespace

CSOptList* frmDocumentForm::MakeOutput(const QString& hint) {
    optlOutput_ = new CSOptList("optlOutput", tr("Output To"), {tr("Preview"), tr("Printer"), tr("File")}, this);
    optlOutput_->SetHints(hint);
    return optlOutput_;
}

void frmDocumentForm::AddFoot(QVBoxLayout& all) {
    progressBar_ = Named(new QProgressBar(this), "ProgressBar1");
    progressBar_->setAccessibleName(tr("Progress"));
    progressBar_->setRange(0, 1);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);

    auto* cmdOK = Named(new CSCmdBtn(tr("&Ok"), this), "cmdOK");
    auto* cmdCancel = Named(new CSCmdBtn(tr("&Cancel"), this), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(MakeHintLine(), 1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    all.addWidget(progressBar_);
    all.addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, Guarded([this] { Ok(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
}

OutputTarget frmDocumentForm::Target() const {
    return kTargets.at(static_cast<std::size_t>(optlOutput_->Index()));
}

void frmDocumentForm::DeliverAndUnload(const std::shared_ptr<const PrintedDocument>& document, const std::string& done) {
    QWidget* over = parentWidget() ? parentWidget()->window() : nullptr;
    Deliver([&](Prompts& prompts) { return DeliverDocument(Target(), document, prompts, over); }, document, done);
}

void frmDocumentForm::PutInPlaceAndUnload(FileDelivery& file, const std::shared_ptr<const PrintedDocument>& document,
                                          const std::string& done) {
    const auto output = [&](Prompts&) {
        file.PutInPlace();
        return true;
    };
    Deliver(output, document, done);
}

void frmDocumentForm::Deliver(const std::function<bool(Prompts&)>& output, const std::shared_ptr<const PrintedDocument>& document,
                              const std::string& done) {
    hide();
    QWidget* over = parentWidget() ? parentWidget()->window() : nullptr;
    QtPrompts prompts(over);
    try {
        bool delivered = false;
        try {
            delivered = output(prompts);
        } catch (const PlatformError& failure) {
            if (done.empty()) throw;
            ReportFailure(failure.WithPrefix(done));
        }
        if (!delivered && !done.empty()) DeliverDocument(OutputTarget::Preview, document, prompts, over);
    } catch (...) {
        Unload();
        throw;
    }
    Unload();
}

}  // namespace tallymar
