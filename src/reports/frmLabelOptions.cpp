#include "reports/frmLabelOptions.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/page/frmPreview.h"

namespace tallymar {

namespace {

constexpr int kAssetNumLength = 6;  // as the columns of the assets
constexpr int kDivisionLength = 16;

constexpr std::array<OutputTarget, 3> kTargets = {OutputTarget::Preview, OutputTarget::Printer, OutputTarget::File};

QStringList SheetItems() {
    QStringList items;
    for (const LabelSheet& sheet : kLabelSheets) items << ToQString(sheet.Item);
    return items;
}

}  // namespace

frmLabelOptions::frmLabelOptions(CompanySession& session, QWidget* parent)
    : CSForm("frmLabelOptions", tr("Asset Labels"), parent), session_(session) {
    optlType_ = new CSOptList("optlType", tr("Laser Label Type"), SheetItems(), this);
    optlOutput_ = new CSOptList("optlOutput", tr("Output To"), {tr("Preview"), tr("Printer"), tr("File")}, this);
    optlType_->SetHints(tr("The sheet of labels in the printer"));
    optlOutput_->SetHints(tr("Where the labels go"));

    auto* numbers = new QGroupBox(tr("Select Asset Numbers"), this);
    auto* numberGrid = new QGridLayout(numbers);
    sitxSTT_ = Named(new sitxEdit(kAssetNumLength, numbers), "sitxSTT");
    sitxENT_ = Named(new sitxEdit(kAssetNumLength, numbers), "sitxENT");
    for (sitxEdit* field : {sitxSTT_, sitxENT_}) field->SetUpperCase(true);
    SetHint(sitxSTT_, tr("First asset number; empty for the first asset"));
    SetHint(sitxENT_, tr("Last asset number; empty for the last asset"));
    FieldRows numberRows(numberGrid);
    numberRows.Add(tr("&Starting at"), sitxSTT_);
    numberRows.Add(tr("&Ending at"), sitxENT_);

    auto* filter = new QGroupBox(tr("Filter Report By"), this);
    auto* filterGrid = new QGridLayout(filter);
    sitxSelectedDivision_ = Named(new sitxEdit(kDivisionLength, filter), "sitxSelectedDivision");
    sitxSelectedDepartment_ = Named(new sitxEdit(kDivisionLength, filter), "sitxSelectedDepartment");
    SetHint(sitxSelectedDivision_, tr("Only assets of this division; empty for all"));
    SetHint(sitxSelectedDepartment_, tr("Only assets of this department; empty for all"));
    FieldRows filterRows(filterGrid);
    filterRows.Add(tr("&Division"), sitxSelectedDivision_);
    filterRows.Add(tr("De&partment"), sitxSelectedDepartment_);

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    grid->addWidget(optlType_, 0, 0);
    grid->addWidget(numbers, 0, 1);
    grid->addWidget(optlOutput_, 1, 0);
    grid->addWidget(filter, 1, 1);

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

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    all->addWidget(progressBar_);
    all->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, Guarded([this] { Ok(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
}

LabelOptions frmLabelOptions::OptionsOfControls() const {
    return {.Sheet = &kLabelSheets.at(static_cast<std::size_t>(optlType_->Index())),
            .Start = sitxSTT_->Text(),
            .End = sitxENT_->Text(),
            .Division = sitxSelectedDivision_->Text(),
            .Department = sitxSelectedDepartment_->Text()};
}

void frmLabelOptions::Ok() {
    auto document = std::make_shared<PrintedDocument>(PrintedDocument{PrintPreviewControl(kLetterPortrait), DetailTable()});
    {
        const class_Hourglass wait;
        QtPrompts prompts(this, progressBar_);
        PrintAssetLabels(session_, OptionsOfControls(), prompts, document->Pages, &document->Details);
    }
    QWidget* over = parentWidget() ? parentWidget()->window() : nullptr;
    QtPrompts prompts(over);
    const OutputTarget target = kTargets.at(static_cast<std::size_t>(optlOutput_->Index()));
    hide();
    try {
        DeliverDocument(target, document, prompts, over);
    } catch (...) {
        Unload();
        throw;
    }
    Unload();
}

}  // namespace tallymar
