#include "batch/frmSetBooks.h"

#include <QVBoxLayout>

#include "batch/ChangeAssets.h"
#include "batch/SetBooks.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

frmSetBooks::frmSetBooks(CompanySession& session, QWidget* parent)
    : frmBatchForm("frmSetBooks", ToQString(kSetBooksName), parent), session_(session) {
    silgBook_ = Named(new silgEdit(kFirstBook, kLastBook, this), "silgBook");
    silgBook_->SetValue(kFirstBook);
    SetHint(silgBook_, tr("Enter the From Book"));
    silgToBook_ = Named(new silgEdit(-1, kLastBook, this), "silgToBook");
    SetHint(silgToBook_, tr("Enter the To Book or leave Zero(0) to set ALL the other Books"));
    SetNote(silgToBook_, tr("The automobile limit that last applied stays as it is in each book"));

    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    rows.Add(tr("From Which Book (1 thru 4)"), silgBook_);
    rows.Add(tr("To Which Book (1 thru 4)"), silgToBook_);
    selection_ = AddAssetSelection(rows, this);
    SetNote(selection_.sitxYear, YearNote());

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    all->addLayout(
        MakeFoot(Named(new CSCmdBtn(tr("Change Assets"), this), "cmdChange"), [this](Prompts& prompts) { Change(prompts); }));
}

void frmSetBooks::Change(Prompts& prompts) {
    const std::int64_t changed = SetBooks(session_,
                                          {.FromBook = silgBook_->Value(),
                                           .ToBook = silgToBook_->Value(),
                                           .Division = selection_.sitxDivision->Text(),
                                           .Department = selection_.sitxDepartment->Text(),
                                           .Year = selection_.sitxYear->Text()},
                                          prompts);
    ShowResult({NumberChangedText(changed)});
}

}  // namespace tallymar
