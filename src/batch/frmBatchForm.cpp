#include "batch/frmBatchForm.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"

namespace tallymar {

frmBatchForm::frmBatchForm(const char* name, const QString& title, QWidget* parent) : CSForm(name, title, parent) {}

QLayout* frmBatchForm::MakeFoot(CSCmdBtn* cmdRun, std::function<void(Prompts&)> command, const QString& closeCaption) {
    progressBar_ = Named(new QProgressBar(this), "ProgressBar1");
    progressBar_->setAccessibleName(tr("Progress"));
    progressBar_->setRange(0, 1);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);
    cmdCancel_ = Named(new CSCmdBtn(closeCaption, this), "cmdCancel");

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(MakeHintLine(), 1);
    buttons->addWidget(cmdRun);
    buttons->addWidget(cmdCancel_);
    auto* foot = new QVBoxLayout;
    foot->setSpacing(12);
    foot->addWidget(progressBar_);
    foot->addStretch(1);
    foot->addLayout(buttons);

    connect(cmdRun, &QPushButton::clicked, this, Guarded([this, command = std::move(command)] { Run(command); }));
    connect(cmdCancel_, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel_);
    return foot;
}

void frmBatchForm::Run(const std::function<void(Prompts&)>& command) {
    if (MakeRoom && !MakeRoom()) return;
    const class_Hourglass wait;
    QtPrompts prompts(this, progressBar_);
    command(prompts);
    if (!doneCaption_.isEmpty()) cmdCancel_->setText(doneCaption_);
}

}  // namespace tallymar
