#include "irsforms/frmCreateForm.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kDivisionLength = 16;  // as the columns of the assets
constexpr int kTypeLength = 5;       // "1120S"
constexpr int kNoteLines = 4;

}  // namespace

frmCreateForm::frmCreateForm(std::string_view form, CompanySession& session, Viewer viewer, QWidget* parent)
    : CSForm(MakeForm(form)->Info().Window.data(), ToQString(MakeForm(form)->Info().WindowTitle), parent),
      session_(session),
      form_(MakeForm(form)) {
    const FormInfo& info = form_->Info();
    silgBook_ = Named(new silgEdit(kFirstBook, kLastBook, this), "silgBook");
    silgBook_->SetValue(kFirstBook);
    SetHint(silgBook_, tr("1 = Federal,  2 = State,  3 = Bookkeeping,  4 = A.M.T."));
    sitxDivision_ = Named(new sitxEdit(kDivisionLength, this), "sitxDivision");
    SetHint(sitxDivision_, tr("Enter a Division or leave blank to select ALL Divisions"));
    sitxDepartment_ = Named(new sitxEdit(kDivisionLength, this), "sitxDepartment");
    SetHint(sitxDepartment_, tr("Enter a Department or leave blank to select ALL Departments"));

    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    rows.Add(tr("Which Book (1 thru 4)"), silgBook_);
    rows.Add(tr("Division (Blank for ALL)"), sitxDivision_);
    rows.Add(tr("Department (Blank for ALL)"), sitxDepartment_);
    if (!info.TypeCaption.empty()) {
        sitxType_ = Named(new sitxEdit(kTypeLength, this), "sitxType");
        sitxType_->SetUpperCase(true);
        SetHint(sitxType_, tr("Enter: 1040, 1041, 1120, 1120S, 1065"));
        rows.Add(ToQString(info.TypeCaption), sitxType_);
    }

    txtLeftOut_ = Named(new QPlainTextEdit(this), "txtLeftOut");
    txtLeftOut_->setReadOnly(true);
    txtLeftOut_->setTabChangesFocus(true);
    txtLeftOut_->setPlaceholderText(tr("What the form leaves out, and why, will stand here"));
    txtLeftOut_->setAccessibleName(tr("What the form leaves out"));
    txtLeftOut_->setMinimumHeight(txtLeftOut_->fontMetrics().lineSpacing() * kNoteLines);
    txtLeftOut_->setMinimumWidth(txtLeftOut_->fontMetrics().averageCharWidth() * 80);

    progressBar_ = Named(new QProgressBar(this), "ProgressBar1");
    progressBar_->setAccessibleName(tr("Progress"));
    progressBar_->setRange(0, 1);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);

    cmdCreate_ = Named(new CSCmdBtn(ToQString(info.CreateCaption), this), info.CreateButton.data());
    auto* cmdEdit = Named(new CSCmdBtn(ToQString(info.EditCaption), this), info.EditButton.data());
    cmdEdit->setEnabled(viewer != nullptr);
    cmdCancel_ = Named(new CSCmdBtn(tr("Cancel"), this), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (CSCmdBtn* button : {cmdCreate_, cmdEdit, cmdCancel_}) buttons->addWidget(button);

    QWidget* last = sitxType_ ? sitxType_ : sitxDepartment_;
    for (QWidget* next : std::initializer_list<QWidget*>{cmdCreate_, cmdEdit, cmdCancel_, txtLeftOut_}) {
        setTabOrder(last, next);
        last = next;
    }

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    all->addWidget(progressBar_);
    all->addWidget(txtLeftOut_, 1);
    all->addLayout(buttons);
    all->addWidget(MakeHintLine());

    SetHint(cmdCreate_, tr("Goes over the assets and writes the pages of the form"));
    SetHint(cmdEdit, tr("Shows the pages over their blank forms"));
    connect(cmdCreate_, &QPushButton::clicked, this, Guarded([this] { Create(); }));
    connect(cmdEdit, &QPushButton::clicked, this,
            Guarded([this, viewer = std::move(viewer)] { viewer(form_->Info().Pages.front()); }));
    connect(cmdCancel_, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel_);
}

FormOptions frmCreateForm::OptionsOfControls() const {
    return {.Book = silgBook_->Value(),
            .Type = sitxType_ ? sitxType_->Text() : std::string(),
            .Division = sitxDivision_->Text(),
            .Department = sitxDepartment_->Text()};
}

void frmCreateForm::Create() {
    const FormOptions options = OptionsOfControls();
    if (options.Book < kFirstBook || options.Book > kLastBook) {
        Refuse(silgBook_, tr("Which Book (1 thru 4)"));
        return;
    }
    try {
        EntityType(options.Type);
    } catch (const PlatformError& failure) {
        Refuse(sitxType_, FailureToQString(failure.what()));
        return;
    }
    FormResult result;
    {
        const class_Hourglass wait;
        QtPrompts prompts(this, progressBar_);
        result = CreateForm(form_, session_, options, session_.Paths().Folder(), prompts);
    }
    Tell(result);
    QtPrompts(this).Message(result.Message, form_->Info().Title, MessageKind::Information);
}

// Said in the status line, and the user goes on in the field.
void frmCreateForm::Refuse(QWidget* field, const QString& reason) {
    QApplication::beep();
    field->setFocus();
    ShowMessage(reason);
}

void frmCreateForm::Tell(const FormResult& result) {
    QStringList notes;
    for (const std::string& note : FormNotes(*form_, result)) notes << ToQString(note);
    txtLeftOut_->setPlainText(notes.isEmpty() ? tr("Nothing was left out.") : notes.join(u'\n'));
    cmdCancel_->setText(tr("Done"));
    const QString warning = tr("Another run adds to this one: close the window first to begin anew");
    SetHint(cmdCreate_, warning);
    CSForm::ShowResult(warning);
}

}  // namespace tallymar
