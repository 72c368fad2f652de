#include "reports/frmLabelOptions.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "platform/controls/CSOptList.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

namespace {

constexpr int kAssetNumLength = 6;  // as the columns of the assets
constexpr int kDivisionLength = 16;

QStringList SheetItems() {
    QStringList items;
    for (const LabelSheet& sheet : kLabelSheets) items << ToQString(sheet.Item);
    return items;
}

}  // namespace

frmLabelOptions::frmLabelOptions(CompanySession& session, QWidget* parent)
    : frmDocumentForm("frmLabelOptions", tr("Asset Labels"), parent), session_(session) {
    optlType_ = new CSOptList("optlType", tr("Laser Label Type"), SheetItems(), this);
    optlType_->SetHints(tr("The sheet of labels in the printer"));

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
    grid->addWidget(MakeOutput(tr("Where the labels go")), 1, 0);
    grid->addWidget(filter, 1, 1);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    AddFoot(*all);
}

LabelOptions frmLabelOptions::OptionsOfControls() const {
    return {.Sheet = &kLabelSheets.at(static_cast<std::size_t>(optlType_->Index())),
            .Start = sitxSTT_->Text(),
            .End = sitxENT_->Text(),
            .Division = sitxSelectedDivision_->Text(),
            .Department = sitxSelectedDepartment_->Text()};
}

void frmLabelOptions::Ok() {
    auto document = std::make_shared<PrintedDocument>(PrintedDocument{PageDocument(kLetterPortrait), DetailTable()});
    {
        const class_Hourglass wait;
        QtPrompts prompts(this, progressBar_);
        PrintAssetLabels(session_, OptionsOfControls(), prompts, document->Pages, &document->Details);
    }
    DeliverAndUnload(document);
}

}  // namespace tallymar
