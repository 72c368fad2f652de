#include "batch/frmBatchForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/HintLine.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr const char* kNote = "note";

}  // namespace

frmBatchForm::frmBatchForm(const char* name, const QString& title, QWidget* parent) : CSForm(name, title, parent) {
    constexpr int kLongestHint = 80;  // characters
    setMinimumWidth(fontMetrics().averageCharWidth() * kLongestHint);
}

QLayout* frmBatchForm::MakeFoot(CSCmdBtn* cmdRun, std::function<void(Prompts&)> command, const QString& closeCaption,
                                int resultLines) {
    progressBar_ = Named(new QProgressBar(this), "ProgressBar1");
    progressBar_->setAccessibleName(tr("Progress"));
    progressBar_->setRange(0, 1);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);
    QSizePolicy policy = progressBar_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    progressBar_->setSizePolicy(policy);
    progressBar_->hide();

    lblResult_ = Named(new QLabel(this), "lblResult");
    lblResult_->setAccessibleName(tr("Result"));
    lblResult_->setWordWrap(true);
    lblResult_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblResult_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblResult_->setMinimumHeight(resultLines * lblResult_->fontMetrics().lineSpacing());
    lblNote_ = Named(new QLabel(this), "lblNote");
    lblNote_->setAccessibleName(tr("Note"));
    lblNote_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lblNote_->setMinimumHeight(lblNote_->fontMetrics().height());
    QFont slanted = lblNote_->font();
    slanted.setItalic(true);
    lblNote_->setFont(slanted);
    cmdCancel_ = Named(new CSCmdBtn(closeCaption, this), "cmdCancel");

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdRun);
    buttons->addWidget(cmdCancel_);
    auto* foot = new QVBoxLayout;
    foot->setSpacing(12);
    foot->addWidget(progressBar_);
    foot->addWidget(lblResult_, 1);
    auto* said = new QVBoxLayout;
    said->setSpacing(3);
    said->addWidget(MakeHintLine());
    said->addWidget(lblNote_);
    foot->addLayout(said);
    foot->addLayout(buttons);

    connect(cmdRun, &QPushButton::clicked, this, Guarded([this, command = std::move(command)] { Run(command); }));
    connect(cmdCancel_, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel_);
    return foot;
}

void frmBatchForm::SetNote(QWidget* field, const QString& note) {
    field->setProperty(kNote, note);
    field->setAccessibleDescription(HintOf(field) + QStringLiteral("  ") + note);
}

void frmBatchForm::OnFieldFocus(QWidget* field) {
    const QString note = field->property(kNote).toString();
    lblNote_->setText(note);
    lblNote_->setToolTip(note);
}

void frmBatchForm::showEvent(QShowEvent* event) {
    CSForm::showEvent(event);
    // Its frame may have given the first field the keyboard before the form looked out for that.
    if (QWidget* field = focusWidget()) OnFieldFocus(field);
}

void frmBatchForm::Run(const std::function<void(Prompts&)>& command) {
    if (MakeRoom && !MakeRoom()) return;
    lblResult_->clear();
    progressBar_->show();
    const auto hide = qScopeGuard([this] { progressBar_->hide(); });
    const class_Hourglass wait;
    QtPrompts prompts(this, progressBar_);
    command(prompts);
    if (!doneCaption_.isEmpty()) cmdCancel_->setText(doneCaption_);
}

void frmBatchForm::ShowResult(const std::vector<std::string>& sentences) {
    QStringList lines;
    for (const std::string& sentence : sentences) lines.append(ToQString(sentence));
    lblResult_->setText(lines.join(QLatin1Char('\n')));
    lblResult_->setAccessibleDescription(lblResult_->text());
    Announce(lblResult_);
}

}  // namespace tallymar
