#include "shell/frmEditCompany.h"

#include <array>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"
#include "store/CompanyLimits.h"

namespace tallymar {

namespace {

struct TextRow {
    const char* Control;
    const char* Label;  // empty: a further line of the field above
    std::string CompanyProfile::*Member;
    int MaxLength;  // of the column
};

constexpr auto kTextRows = std::to_array<TextRow>({
    {"sitxCompany", "Company", &CompanyProfile::Company, 40},
    {"sitxLastName", "Last Name", &CompanyProfile::LastName, 32},
    {"sitxFirstName", "First Name", &CompanyProfile::FirstName, 32},
    {"sitxAddress1", "Address", &CompanyProfile::Address1, 40},
    {"sitxAddress2", "", &CompanyProfile::Address2, 40},
    {"sitxCity", "City", &CompanyProfile::City, 40},
    {"sitxState", "State", &CompanyProfile::State, 2},
    {"sitxZipCode", "Zipcode", &CompanyProfile::ZipCode, 12},
    {"sitxID", "EIN/SSN", &CompanyProfile::Id, 16},
    {"sitxTelephone", "Telephone", &CompanyProfile::Telephone, 32},
});

struct YearEndRow {
    const char* Control;
    const char* Label;
};

constexpr std::array<YearEndRow, kLastBook + 1> kYearEndRows = {{{"", ""},
                                                                 {"sidtFYEFederal", "Federal Year End"},
                                                                 {"sidtFYEState", "State Year End"},
                                                                 {"sidtFYEBook", "Book Year End"},
                                                                 {"sidtFYEAMT", "AMT Year End"}}};

}  // namespace

frmEditCompany::frmEditCompany(CompanySession& session, std::function<void(QWidget*)> importOptions, QWidget* parent)
    : CSForm("frmEditCompany", tr("Edit Company Information"), parent), session_(session) {
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    for (const TextRow& row : kTextRows) {
        auto* edit = Named(new sitxEdit(row.MaxLength, this), row.Control);
        if (*row.Label == '\0') edit->setAccessibleName(tr("Address, second line"));
        rows.Add(tr(row.Label), edit);
        texts_.push_back({row.Member, edit});
        if (row.Member == &CompanyProfile::State) edit->SetUpperCase(true);
        if (row.Member == &CompanyProfile::Id) edit->SetPattern("999-99-9999");
    }
    rows.NextColumn();
    sidtBeginDate_ = Named(new sidtEdit(this), "sidtBeginDate");
    rows.Add(tr("Business Start"), sidtBeginDate_);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const YearEndRow& row = kYearEndRows[static_cast<std::size_t>(book)];
        sidtYearEnd_[book] = Named(new sidtEdit(this), row.Control);
        rows.Add(tr(row.Label), sidtYearEnd_[book]);
    }
    cboLimits_ = Named(new CSCombo(this), "cboLimits");
    for (const LimitsName& name : kLimitsNames) cboLimits_->Add(name.Shown);
    SetHint(cboLimits_, tr("Limits of automobiles and Section 179: those of 2003, or by the law of each year"));
    rows.Add(tr("Limits"), cboLimits_);
    chkRound_ = Named(new QCheckBox(tr("Round to Dollar"), this), "chkRound");
    SetHint(chkRound_, tr("Check this box if you want amounts rounded to the dollar"));
    rows.AddWide(chkRound_);

    auto* cmdSave = Named(new CSCmdBtn(tr("&Save"), this), "cmdSave");
    auto* cmdCancel = Named(new CSCmdBtn(tr("&Cancel"), this), "cmdCancel");
    auto* cmdImport = Named(new CSCmdBtn(tr("Import"), this), "cmdImport");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(MakeHintLine(), 1);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);
    buttons->addSpacing(12);
    buttons->addWidget(cmdImport);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(14);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(buttons);

    connect(cmdSave, &QPushButton::clicked, this, Guarded([this] { Save(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
    cmdImport->setEnabled(static_cast<bool>(importOptions));
    connect(cmdImport, &QPushButton::clicked, this, Guarded([this, importOptions = std::move(importOptions)] {
                importOptions(this);
                LoadEdit();
            }));
    LoadEdit();
}

void frmEditCompany::LoadEdit() {
    const CompanyProfile profile = CompanyProfile::LoadEdit(session_.CompanyRecordset());
    for (const TextField& field : texts_) field.Edit->SetText(profile.*field.Member);
    sidtBeginDate_->SetValue(profile.BeginDate);
    for (int book = kFirstBook; book <= kLastBook; ++book) sidtYearEnd_[book]->SetValue(profile.FiscalYearEnd[book]);
    chkRound_->setChecked(profile.Round);
    try {
        cboLimits_->Choose(NameOf(LimitsOf(session_.Database())).Shown);
    } catch (const PlatformError&) {
        cboLimits_->setCurrentIndex(-1);  // what stands there is no choice: here it can be made again
    }
}

void frmEditCompany::Save() {
    CompanyProfile profile;
    for (const TextField& field : texts_) profile.*field.Member = field.Edit->Text();
    profile.BeginDate = sidtBeginDate_->Value();
    for (int book = kFirstBook; book <= kLastBook; ++book) profile.FiscalYearEnd[book] = sidtYearEnd_[book]->Value();
    profile.Round = chkRound_->isChecked();
    const int limits = cboLimits_->currentIndex();
    recordset::RunBatch(session_.Database(), recordset::OnFailure::AllOrNothing, [&] {
        profile.Save(session_.CompanyRecordset());
        if (limits >= 0) SetLimits(session_.Database(), kLimitsNames[static_cast<std::size_t>(limits)].Choice);
    });
    emit Saved();
    Unload();
}

void frmEditCompany::OnFieldFocus(QWidget* field) {
    for (int book = kFirstBook + 1; book <= kLastBook; ++book) {
        sidtEdit* edit = sidtYearEnd_[book];
        if (field == edit && TakesFederalYearEnd(session_.NewCompanyPending, edit->Text())) {
            edit->SetText(sidtYearEnd_[kFirstBook]->Text());
            edit->selectAll();
        }
    }
}

void frmEditCompany::OnUnload() {
    session_.NewCompanyPending = false;
}

}  // namespace tallymar
