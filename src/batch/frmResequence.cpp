#include "batch/frmResequence.h"

#include <QVBoxLayout>

#include "batch/Resequence.h"
#include "batch/frmAssetSelection.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

frmResequence::frmResequence(CompanySession& session, QWidget* parent)
    : frmBatchForm("frmResequence", ToQString(kResequenceName), parent), session_(session) {
    sitxDivision_ = MakeDivision("sitxDivision", this);
    SetHint(sitxDivision_, tr("Enter the Division or leave blank"));
    sitxDepartment_ = MakeDepartment("sitxDepartment", this);
    SetHint(sitxDepartment_, tr("Enter the Department or leave blank"));
    SetNote(sitxDepartment_, tr("Copies the assets whose division is not this text; their department is not looked at"));
    sitxType_ = Named(new sitxEdit(PrefixLimit(session.AssetCount()), this), "sitxType");
    sitxType_->SetAllowed(sitxEdit::kLettersAndDigits);
    sitxType_->SetUpperCase(true);
    SetNote(sitxType_, tr("A new number longer than six characters ends the run, and nothing is copied"));
    sitxYN_ = YesOrNo("sitxYN", "N");
    SetNote(sitxYN_, tr("N copies every asset, whatever division or department is entered"));
    sitxIgnoreCase_ = YesOrNo("sitxIgnoreCase", "Y");
    SetHint(sitxIgnoreCase_, tr("Ignore the case of the Division and/or Department"));
    sitxResequence_ = YesOrNo("sitxResequence", "N");
    SetHint(sitxResequence_, tr("Answer 'Y' to Resequence Asset Numbers"));
    SetNote(sitxResequence_, tr("Numbers of associated assets stay the old ones"));

    auto* heading = new QLabel(
        tr("This procedure is used to Resequence Asset Numbers and Create \na new Database by Division or Department"), this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    rows.Add(tr("Division (Blank for ALL)"), sitxDivision_);
    rows.Add(tr("Department (Blank for ALL)"), sitxDepartment_);
    rows.Add(tr("Asset Number  (Up to 4 characters)"), sitxType_);
    rows.NextColumn();
    rows.Add(tr("Copy ONLY this Division or Dept (Y or N)"), sitxYN_);
    rows.Add(tr("Ignore Division/Dept Case (Y or N)"), sitxIgnoreCase_);
    rows.Add(tr("Resequence Asset Numbers (Y or N)"), sitxResequence_);

    cmdResequence_ = Named(new CSCmdBtn({}, this), "cmdResequence");
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(heading);
    all->addLayout(grid);
    all->addLayout(MakeFoot(cmdResequence_, [this](Prompts& prompts) { Resequence(prompts); }));
    ShowCommand();

    connect(sitxType_, &EntryEdit::Changed, this, Guarded([this] { ShowLimit(); }));
    connect(sitxYN_, &EntryEdit::Changed, this, Guarded([this] { CheckAnswer(sitxYN_, "N"); }));
    connect(sitxIgnoreCase_, &EntryEdit::Changed, this, Guarded([this] { CheckAnswer(sitxIgnoreCase_, "Y"); }));
    connect(sitxResequence_, &EntryEdit::Changed, this, Guarded([this] { CheckAnswer(sitxResequence_, "N"); }));
}

sitxEdit* frmResequence::YesOrNo(const char* name, const char* start) {
    auto* answer = Named(new sitxEdit(1, this), name);
    answer->SetUpperCase(true);
    answer->SetText(start);
    return answer;
}

void frmResequence::CheckAnswer(sitxEdit* field, const char* reset) {
    const std::string answer = field->Text();
    if (!answer.empty() && answer != "Y" && answer != "N") {
        field->SetText(reset);
        field->selectAll();
        ShowMessage(tr("Invalid Answer - Must be Y or N"));
    }
    ShowCommand();
}

void frmResequence::ShowCommand() {
    const std::string answer = sitxResequence_->Text();
    if (answer == "Y") cmdResequence_->setText(tr("Resequence Assets"));
    if (answer == "N") cmdResequence_->setText(tr("  Copy Assets"));
}

void frmResequence::ShowLimit() {
    const std::int64_t count = session_.AssetCount();
    sitxType_->setMaxLength(PrefixLimit(count));
    ShowMessage(ToQString(PrefixLimitText(count)));
}

void frmResequence::OnFieldFocus(QWidget* field) {
    frmBatchForm::OnFieldFocus(field);
    if (field == sitxType_) ShowLimit();
}

void frmResequence::Resequence(Prompts& prompts) {
    const auto target = prompts.AskSaveFile(ResequenceDialog(session_.Paths().Folder()));
    SetDoneCaption(target ? tr("Done") : QString());
    if (!target) return;
    prompts.Message("New File Name = " + ToWindows1252(PathToQString(*target)), kResequenceName);
    const std::string renumber = sitxResequence_->Text();
    const auto counts = tallymar::Resequence(session_,
                                             {.Division = sitxDivision_->Text(),
                                              .Department = sitxDepartment_->Text(),
                                              .CopyOnly = sitxYN_->Text(),
                                              .IgnoreCase = sitxIgnoreCase_->Text() != "N",
                                              .Renumber = renumber == "Y",
                                              .Prefix = sitxType_->Text()},
                                             *target, prompts);
    if (!counts) return SetDoneCaption({});
    if (!renumber.empty()) ShowResult({counts->Text()});
}

}  // namespace tallymar
