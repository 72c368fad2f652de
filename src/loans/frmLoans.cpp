#include "loans/frmLoans.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "loans/LoanFile.h"
#include "loans/LoanPages.h"
#include "loans/frmLoanPicture.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/page/frmPreview.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr std::string_view kNumberCharacters = "0123456789,.-";
constexpr std::string_view kDateCharacters = "0123456789/-. ";

bool IsResult(LoanBox box) {
    return InfoOf(box).Option.empty();
}

}  // namespace

frmLoans::frmLoans(std::filesystem::path folder, QWidget* parent)
    : CSForm("frmLoans", tr("Tallymar Loan Amortization"), parent), folder_(std::move(folder)) {
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(MakeBoxes(), 1);
    top->addWidget(MakeHelp(), 0, Qt::AlignTop);
    picture_ = new frmLoanPicture(this);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& caption, auto action, const QString& hint) {
        auto* button = Named(new CSCmdBtn(caption, this), name);
        SetHint(button, hint);
        connect(button, &QPushButton::clicked, this, Guarded([this, action] { (this->*action)(); }));
        buttons->addWidget(button);
    };
    add("cmdSolve", tr("&Solve"), &frmLoans::Solve, tr("Compute what is blank or, when nothing is, what was computed last"));
    add("cmdPrint", tr("&Print"), &frmLoans::Print, tr("Preview the schedule; from there print it or save it as a file"));
    buttons->addStretch(1);
    add("cmdNew", tr("&New"), &frmLoans::New, tr("Empty all boxes for another loan"));
    add("cmdOpen", tr("&Open"), &frmLoans::Open, tr("Open a loan file"));
    add("cmdSave", tr("Sa&ve"), &frmLoans::Save, tr("Save the boxes as they stand in a loan file"));
    add("cmdClose", tr("E&xit"), &frmLoans::Unload, tr("Close the loan calculator"));
    SetCancelButton(findChild<CSCmdBtn*>(QStringLiteral("cmdClose")));

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(10);
    all->addLayout(top);
    all->addWidget(picture_, 1);
    all->addWidget(MakeHintLine());
    all->addLayout(buttons);
    ShowLoan();
}

QWidget* frmLoans::MakeBoxes() {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(5, 1);
    const auto place = [&](LoanBox box, int row, int column, int span) {
        auto* label = new QLabel(ToQString(InfoOf(box).Label), panel);
        sitxEdit* edit = MakeBox(box);
        Join(label, edit);
        grid->addWidget(label, row, column);
        grid->addWidget(edit, row, column + 1, 1, span);
    };
    place(LoanBox::Name, 0, 0, 5);
    for (int i = 1; i < static_cast<int>(kLoanBoxCount); ++i) {
        const auto box = static_cast<LoanBox>(i);
        // Two columns of the terms, gone through one after the other, and the results below.
        const bool isResult = IsResult(box);
        const int row = isResult ? 5 : (i - 1) % 4 + 1;
        const int column = (isResult ? i - static_cast<int>(LoanBox::TotalInterest) : (i - 1) / 4) * 3;
        place(box, row, column, 1);
        auto* mark = Named(new QLabel(panel), "lblSolved", i);
        QFont bold = mark->font();
        bold.setBold(true);
        mark->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(tr("◄ solved")) + 4);
        mark->setFont(bold);
        marks_[static_cast<std::size_t>(i)] = mark;
        grid->addWidget(mark, row, column + 2);
    }
    return panel;
}

sitxEdit* frmLoans::MakeBox(LoanBox box) {
    const LoanBoxInfo& info = InfoOf(box);
    auto* edit = Named(new sitxEdit(static_cast<int>(kLongestLoanText), this), std::string(info.Control).c_str());
    SetHint(edit, ToQString(info.Hint));
    boxes_[static_cast<std::size_t>(box)] = edit;
    connect(edit, &EntryEdit::Changed, this, Guarded([this, box] { Edited(box); }));
    if (box == LoanBox::Name) return edit;
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("-000,000,000.00")) + 20);
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (IsResult(box)) {
        edit->setReadOnly(true);
        edit->setFocusPolicy(Qt::ClickFocus);
    } else {
        edit->SetAllowed(box == LoanBox::FirstDue ? kDateCharacters : kNumberCharacters);
    }
    return edit;
}

QWidget* frmLoans::MakeHelp() {
    auto* help = Named(new QLabel(this), "lblHelp");
    help->setText(
        tr(" To solve for:\nLoan Amount,\nPayment,\n# of Periods,\nor Interest Rate\nleave the data\nfield blank\n"
           "Click Solve to compute"));
    help->setTextFormat(Qt::PlainText);
    help->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    help->setMargin(6);
    return help;
}

void frmLoans::Edited(LoanBox box) {
    if (showing_) return;
    loan_.SetText(box, Box(box)->Text());
    if (box == LoanBox::Name) return;
    // What was computed from other terms is no result any more.
    MarkComputed(nullptr);
    ShowPicture();
}

void frmLoans::ShowLoan() {
    showing_ = true;
    for (const LoanBoxInfo& info : kLoanBoxes) {
        Box(info.Box)->SetText(loan_.Text(info.Box));
        Box(info.Box)->setCursorPosition(0);
    }
    showing_ = false;
    ShowPicture();
}

void frmLoans::ShowPicture() {
    try {
        const LoanTerms terms = loan_.Terms();
        if (terms.Amount.IsZero()) {
            picture_->Show(std::nullopt, tr("The balance over the years will be shown here."));
        } else if (loan_.Text(LoanBox::Payment).empty()) {
            picture_->Show(std::nullopt, tr("Click Solve to compute the payment."));
        } else {
            picture_->Show(loan_.Schedule(), tr("There are no payments to be shown."));
        }
    } catch (const std::exception& failure) {
        picture_->Show(std::nullopt, FailureToQString(failure.what()));
    }
}

// By a word beside the box and by bold type; nothing is said by colour.
void frmLoans::MarkComputed(const LoanBox* computed) {
    for (const LoanBoxInfo& info : kLoanBoxes) {
        QLabel* mark = marks_[static_cast<std::size_t>(info.Box)];
        if (!mark) continue;
        const bool marked = computed && *computed == info.Box;
        mark->setText(marked ? tr("◄ solved") : QString());
        QFont font = Box(info.Box)->font();
        font.setBold(marked);
        Box(info.Box)->setFont(font);
        const QString hint = ToQString(info.Hint);
        Box(info.Box)->setAccessibleDescription(marked ? tr("Solved. %1").arg(hint) : hint);
    }
}

// What cannot be computed is said in the status line, and the user goes on from there.
void frmLoans::SayRefusal(const std::exception& failure) {
    QApplication::beep();
    ShowMessage(FailureToQString(failure.what()));
}

void frmLoans::Solve() {
    try {
        const LoanBox computed = loan_.Solve();
        ShowLoan();
        MarkComputed(loan_.Note().empty() ? &computed : nullptr);  // what needs a word is no plain result
        ShowMessage(loan_.Note().empty() ? tr("%1 is solved.").arg(ToQString(InfoOf(computed).Label)) : ToQString(loan_.Note()));
    } catch (const PlatformError& failure) {
        SayRefusal(failure);
    }
}

void frmLoans::Print() {
    QtPrompts prompts(this);
    std::shared_ptr<const PrintedDocument> document;
    try {
        const LoanTexts before = loan_.Texts();
        document = PrintLoan(loan_, prompts);
        if (loan_.Texts() != before) {
            const LoanBox computed = LoanBox::Payment;
            ShowLoan();
            MarkComputed(&computed);
        }
    } catch (const PlatformError& failure) {
        SayRefusal(failure);
        return;
    }
    if (document) DeliverDocument(OutputTarget::Preview, document, prompts, this);
}

void frmLoans::New() {
    loan_.NullText();
    file_.clear();
    ShowLoan();
    MarkComputed(nullptr);
    setWindowTitle(QStringLiteral("LOAN: ") + ToQString(kUntitledLoan));
    Box(LoanBox::Name)->setFocus();
}

void frmLoans::Open() {
    QtPrompts prompts(this);
    const auto chosen = prompts.AskOpenFile(LoanFileDialog("Open Loan", folder_));
    if (chosen) OpenFile(*chosen);
}

void frmLoans::OpenFile(const std::filesystem::path& file) {
    loan_.SetTexts(OpenLoanFile(file));
    file_ = file;
    folder_ = file_.parent_path();
    ShowLoan();
    MarkComputed(nullptr);
    setWindowTitle(QStringLiteral("LOAN: ") + PathToQString(file_));
}

void frmLoans::Save() {
    QtPrompts prompts(this);
    const std::filesystem::path file =
        file_.empty() ? prompts.AskSaveFile(LoanFileDialog("Save Loan", folder_)).value_or("") : file_;
    if (file.empty()) return;
    try {
        if (!CloseLoanFile(file, loan_.Texts(), prompts)) return;
    } catch (const PlatformError& failure) {
        prompts.Message(failure.what(), "Save Loan", MessageKind::Error);
        return;
    }
    file_ = file;
    folder_ = file_.parent_path();
    setWindowTitle(QStringLiteral("Loan: ") + PathToQString(file_));
}

}  // namespace tallymar
