#include "shell/frmEditUser.h"

#include <array>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

namespace {

struct BoxRow {
    const char* Control;
    const char* Caption;
    const char* Hint;
    UserProfileEdit::Box Box;
};

constexpr auto kBoxRows = std::to_array<BoxRow>({
    {"chkDateFind", "Find Assets by Date", "Check box to Find Assets by Date", UserProfileEdit::Box::DateFind},
    {"chkGLFind", "Find Assets by G/L Number", "Check box to Find Assets by G/L Number", UserProfileEdit::Box::GLFind},
    {"chkNewAsset", "Assign numeric Asset Numbers", "Check box to Assign numeric Asset Numbers", UserProfileEdit::Box::NewAsset},
});

struct ListRow {
    const char* Control;
    const char* Label;
    UserProfileEdit::List List;
};

constexpr auto kListRows = std::to_array<ListRow>({
    {"cboNewUsed", "New/Used Default", UserProfileEdit::List::NewUsed},
    {"cboDeprType", "Depreciation Type Default", UserProfileEdit::List::DeprType},
    {"cboDeprMethod", "Depreciation Method Default", UserProfileEdit::List::DeprMethod},
});

}  // namespace

frmEditUser::frmEditUser(UserProfile& profile, std::filesystem::path file, QWidget* parent)
    : CSForm("frmEditUser", tr("User Profile"), parent), body_(profile), file_(std::move(file)) {
    tabs_ = Named(new QTabWidget(this), "SSTab1");
    tabs_->addTab(MakeTexts(UserProfileEdit::FirmFields()), tr("Firm"));
    tabs_->addTab(MakeTexts(UserProfileEdit::DriveFields()), tr("Drives"));
    tabs_->addTab(MakeOther(), tr("Other"));

    auto* cmdSave = Named(new CSCmdBtn(tr("&Save"), this), "cmdSave");
    auto* cmdCancel = Named(new CSCmdBtn(tr("&Cancel"), this), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(MakeHintLine(), 1);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(12, 12, 12, 12);
    all->setSpacing(12);
    all->addWidget(tabs_, 1);
    all->addLayout(buttons);

    connect(cmdSave, &QPushButton::clicked, this, Guarded([this] { Save(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
}

QWidget* frmEditUser::MakeTexts(std::span<const UserProfileEdit::Field> fields) {
    auto* page = new QWidget(this);
    auto* all = new QVBoxLayout(page);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    for (const UserProfileEdit::Field& field : fields) {
        auto* edit = Named(new sitxEdit(field.MaxLength, page), std::string(field.Control).c_str());
        edit->SetRefused("\"");  // the file's quoting has no way to hold it
        if (field.Position == UserProfile::kStateCode) edit->SetUpperCaseOnLeaving(true);
        SetHint(edit, ToQString(field.Hint));
        edit->SetText(body_.Text(field.Position));
        rows.Add(ToQString(field.Label), edit);
        texts_.push_back({field.Position, edit});
    }
    all->addLayout(grid);
    all->addStretch(1);
    return page;
}

QWidget* frmEditUser::MakeOther() {
    auto* page = new QWidget(this);
    auto* all = new QVBoxLayout(page);
    all->setSpacing(8);
    for (const BoxRow& row : kBoxRows) {
        auto* box = Named(new QCheckBox(tr(row.Caption), page), row.Control);
        SetHint(box, tr(row.Hint));
        box->setChecked(body_.Checked(row.Box));
        connect(box, &QCheckBox::toggled, this, [this, which = row.Box](bool checked) { body_.Click(which, checked); });
        all->addWidget(box);
    }
    all->addSpacing(8);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    for (const ListRow& row : kListRows) {
        auto* list = Named(new CSCombo(page), row.Control);
        list->Fill(UserProfileEdit::Choices(row.List));
        list->Explain(UserProfileEdit::Meanings(row.List));
        list->Choose(body_.Chosen(row.List));
        rows.Add(tr(row.Label), list);
        connect(list, &QComboBox::activated, this, [this, list, which = row.List] { body_.Click(which, list->Text()); });
    }
    all->addLayout(grid);
    all->addStretch(1);
    return page;
}

void frmEditUser::Save() {
    for (const TextField& field : texts_) body_.SetText(field.Position, field.Edit->Text());
    // A file that cannot be written leaves the form as it is, with everything still on screen.
    if (body_.Save(file_)) Unload();
}

}  // namespace tallymar
