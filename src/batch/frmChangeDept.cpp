#include "batch/frmChangeDept.h"

#include <QVBoxLayout>

#include "batch/ChangeAssets.h"
#include "batch/ChangeDept.h"
#include "batch/frmAssetSelection.h"
#include "batch/frmFromTo.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "store/AssetColumns.h"

namespace tallymar {

frmChangeDept::frmChangeDept(CompanySession& session, QWidget* parent)
    : frmBatchForm("frmChangeDept", ToQString(kChangeDeptName), parent), session_(session) {
    const int numberWidth = ColumnOf(&AssetRecord::AccountNum).Width();
    division_ = {MakeDivision("sitxFromDivision", this), MakeDivision("sitxToDivision", this)};
    department_ = {MakeDepartment("sitxFromDepartment", this), MakeDepartment("sitxToDepartment", this)};
    accountNum_ = {Named(new sitxEdit(numberWidth, this), "sitxFromGL"), Named(new sitxEdit(numberWidth, this), "sitxToGL")};
    sitxYear_ = MakeYear(this);

    const QString divisionHint = tr("Enter a Division or leave blank to select ALL Divisions");
    SetHint(division_.From, divisionHint);
    SetHint(division_.To, divisionHint);
    SetHint(department_.From, tr("Enter a Department or leave blank to select ALL Departments"));
    SetHint(department_.To, tr("Enter a Department or leave blank to select ALL Department"));
    for (const Pair& pair : {division_, department_, accountNum_}) {
        SetNote(pair.From, tr("A blank here changes nothing; large and small letters differ"));
        SetNote(pair.To, tr("A blank here clears the field of the assets that match"));
    }
    SetNote(sitxYear_, YearNote());

    auto* pairs = new QGridLayout;
    FromToRows fromTo(pairs);
    fromTo.Add(tr("Division (Blank for ALL)"), division_.From, division_.To);
    fromTo.Add(tr("Department (Blank for ALL)"), department_.From, department_.To);
    fromTo.Add(tr("G/L Number (Blank for ALL)"), accountNum_.From, accountNum_.To);
    auto* selection = new QGridLayout;
    FieldRows rows(selection);
    rows.Add(tr("In-Service Year (Blank for ALL)"), sitxYear_);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(pairs);
    all->addLayout(selection);
    all->addLayout(
        MakeFoot(Named(new CSCmdBtn(tr("Change Assets"), this), "cmdChange"), [this](Prompts& prompts) { Change(prompts); }));
}

void frmChangeDept::Change(Prompts& prompts) {
    const auto pair = [](const Pair& fields) { return FieldChange{fields.From->Text(), fields.To->Text()}; };
    const std::int64_t changed = ChangeDept(session_,
                                            {.Division = pair(division_),
                                             .Department = pair(department_),
                                             .AccountNum = pair(accountNum_),
                                             .Year = sitxYear_->Text()},
                                            prompts);
    ShowResult({NumberChangedText(changed)});
}

}  // namespace tallymar
