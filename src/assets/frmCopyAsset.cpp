#include "assets/frmCopyAsset.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "assets/AssetFields.h"
#include "assets/CopyAsset.h"
#include "assets/frmAssetControls.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

namespace {

constexpr int kCountDigits = 4;

}  // namespace

frmCopyAsset::frmCopyAsset(CompanySession& company, const AssetEditState& state, Prompts* prompts, QWidget* parent)
    : CSForm("frmCopyAsset", tr("Copy Current Asset"), parent),
      company_(company),
      ownPrompts_(this),
      prompts_(prompts ? *prompts : ownPrompts_) {
    const int width = static_cast<int>(MaxLengthOf(FieldDef(AssetField::AssetNum)));
    auto* heading = new QLabel(tr("Make Multiple copies of the current Asset"), this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    sitxAssetNum_ = Named(new sitxEdit(width, this), "sitxAssetNum");
    LookReadOnly(sitxAssetNum_);
    sitxAssetNum_->SetText(CopySource(company, state.CopySourceAssetNum));
    sitxNoCopies_ = Named(new sitxEdit(kCountDigits, this), "sitxNoCopies");
    sitxNoCopies_->SetAllowed("0123456789");
    SetHint(sitxNoCopies_, tr("How many copies of this Asset do you need?"));
    sitxANumber_ = Named(new sitxEdit(width, this), "sitxANumber");
    sitxANumber_->SetAllowed(sitxEdit::kLettersAndDigits);
    sitxANumber_->SetUpperCase(true);
    SetHint(sitxANumber_, tr("Enter the Partial Asset Number Prefix (Ex: CPT for a Computer)"));
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    rows.Add(tr("Asset being copied"), sitxAssetNum_);
    rows.Add(tr("Number of copies"), sitxNoCopies_);
    rows.Add(tr("Asset number prefix to use"), sitxANumber_);

    auto* cmdStartCopy = Named(new CSCmdBtn(tr("Start Copy"), this), "cmdStartCopy");
    auto* cmdCancel = Named(new CSCmdBtn(tr("Cancel"), this), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdStartCopy);
    buttons->addWidget(cmdCancel);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(heading);
    all->addLayout(grid);
    all->addLayout(buttons);
    all->addWidget(MakeHintLine());
    setMinimumWidth(fontMetrics().averageCharWidth() * 70);

    connect(cmdStartCopy, &QPushButton::clicked, this, Guarded([this] { StartCopy(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
}

void frmCopyAsset::StartCopy() {
    const auto added = tallymar::StartCopy(
        company_, {.Copies = sitxNoCopies_->Text(), .Prefix = sitxANumber_->Text(), .AssetNumber = sitxAssetNum_->Text()},
        prompts_);
    ShowResult(added.empty() ? tr("No copies were added.") : tr("Copies added: %1").arg(added.size()));
}

}  // namespace tallymar
