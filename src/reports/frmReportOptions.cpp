#include "reports/frmReportOptions.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "platform/controls/CSChkList.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"
#include "platform/page/frmPreview.h"
#include "platform/runtime/Windows1252.h"
#include "reports/ReportTable.h"
#include "store/Books.h"

namespace tallymar {

namespace {

constexpr int kDivisionLength = 16;  // as the columns of the assets
constexpr int kCodeSectionLength = 8;

constexpr int kPrinterItem = 1;

QStringList SequenceItems() {
    QStringList items;
    for (const SequenceInfo& info : kSequences) items << ToQString(info.Item);
    return items;
}

QStringList BookItems() {
    QStringList items;
    for (int book = kFirstBook; book <= kLastBook; ++book) items << ToQString(BookOf(book).ShortName);
    return items;
}

}  // namespace

frmReportOptions::frmReportOptions(CompanySession& session, ADepre& engine, QWidget* parent)
    : frmDocumentForm("frmReportOptions", tr("Report Options"), parent), session_(session), engine_(engine) {
    lblReportName_ = Named(new QLabel(this), "lblReportName");
    QFont large = lblReportName_->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    lblReportName_->setFont(large);
    lblReportName_->setAlignment(Qt::AlignCenter);

    optlBook_ = new CSOptList("optlBook", tr("Book"), BookItems(), this);
    optlSequence_ = new CSOptList("optlSequence", tr("Sequence"), SequenceItems(), this);
    chklPrintPY_ = new CSChkList("chklPrintPY", tr("Print Prior Year"),
                                 {tr("Sold"), tr("Casualty"), tr("Abandoned"), tr("Like-Kind")}, this);
    chklMiscellaneous_ = new CSChkList("chklMiscellaneous", tr("Miscellaneous Options"),
                                       {tr("Double Space Report"), tr("Print 2nd Description Line"), tr("Update Database"),
                                        tr("Print Investments"), tr("Include 179 Expense")},
                                       this);
    optlBook_->SetHints(tr("The book to report"));
    optlSequence_->SetHints(tr("The order of the assets and the groups that are subtotalled"));
    chklPrintPY_->SetHints(tr("Disposals of earlier years to be printed too"));

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    grid->addWidget(optlBook_, 0, 0);
    grid->addWidget(optlSequence_, 0, 1);
    grid->addWidget(chklPrintPY_, 1, 0);
    grid->addWidget(chklMiscellaneous_, 1, 1);
    grid->addWidget(MakeOutput(tr("Where the report goes")), 2, 0);
    grid->addWidget(MakeReportDate(), 2, 1);
    grid->addWidget(MakeFilter(), 0, 2, 3, 1);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(lblReportName_);
    all->addLayout(grid);
    AddFoot(*all);

    options_.Include179 = true;
    connect(optlBook_, &CSOptList::Clicked, this, Guarded([this] { ShowReportName(); }));
    connect(chklMiscellaneous_, &CSChkList::Clicked, this, Guarded([this] { TakeMiscellaneous(); }));
}

QWidget* frmReportOptions::MakeReportDate() {
    auto* box = new QGroupBox(tr("Report Date"), this);
    auto* grid = new QGridLayout(box);
    sidtReportDate_ = Named(new sidtEdit(box), "sidtReportDate");
    sidtReportDate_->SetValue(Today());
    SetHint(sidtReportDate_, tr("The date printed at the head of each page"));
    FieldRows rows(grid);
    rows.Add(tr("&Date"), sidtReportDate_);
    grid->setRowStretch(1, 1);
    return box;
}

QWidget* frmReportOptions::MakeFilter() {
    auto* box = new QGroupBox(tr("Filter Report By"), this);
    auto* grid = new QGridLayout;
    sitxDivision_ = Named(new sitxEdit(kDivisionLength, box), "sitxDivision");
    sitxDepartment_ = Named(new sitxEdit(kDivisionLength, box), "sitxDepartment");
    sitxCodeSection_ = Named(new sitxEdit(kCodeSectionLength, box), "sitxCodeSection");
    SetHint(sitxDivision_, tr("Only assets of this division; empty for all"));
    SetHint(sitxDepartment_, tr("Compared with the division of the assets; empty for all"));
    SetHint(sitxCodeSection_, tr("Only assets of this section, such as 1245; empty for all"));
    FieldRows rows(grid);
    rows.Add(tr("D&ivision"), sitxDivision_);
    rows.Add(tr("D&epartment"), sitxDepartment_);
    rows.Add(tr("IRS Code &Section"), sitxCodeSection_);

    lblFilter_ = Named(new QLabel(tr("Filter Date Criteria"), box), "lblFilter");
    auto* dates = new QGridLayout;
    sidtYStart_ = Named(new sidtEdit(box), "sidtYStart");
    sidtYEnd_ = Named(new sidtEdit(box), "sidtYEnd");
    SetHint(sidtYStart_, tr("First date to be printed; both dates empty for all"));
    SetHint(sidtYEnd_, tr("Last date to be printed; both dates empty for all"));
    FieldRows dateRows(dates);
    dateRows.Add(tr("&From"), sidtYStart_);
    dateRows.Add(tr("&To"), sidtYEnd_);

    auto* all = new QVBoxLayout(box);
    all->setSpacing(10);
    all->addLayout(grid);
    all->addSpacing(6);
    all->addWidget(lblFilter_);
    all->addLayout(dates);
    all->addStretch(1);
    return box;
}

void frmReportOptions::SetWhichReport(int reportNumber) {
    const ReportInfo& info = InfoOfReport(reportNumber);
    options_.ReportNumber = reportNumber;
    optlBook_->SetIndex(info.Book - kFirstBook);
    chklMiscellaneous_->SetValue(info.Miscellaneous);
    lblFilter_->setText(ToQString(info.FilterLabel));
    ShowReportName();
}

void frmReportOptions::ReadyToCloseYear() {
    SetWhichReport(kPostReport);
    chklMiscellaneous_->SetValue(kUpdateDatabase);
    chklPrintPY_->SetValue(0);
    optlOutput_->SetIndex(kPrinterItem);
    ShowCaution(tr("CAUTION: Database will be posted. BACKUP Database 1st"));
}

void frmReportOptions::ShowReportName() {
    lblReportName_->setText(ToQString(ReportCaption(options_.ReportNumber, optlBook_->Index() + kFirstBook)));
}

void frmReportOptions::TakeMiscellaneous() {
    options_.SetMiscellaneous(chklMiscellaneous_->Value());
    ShowCaution(options_.UpdateDatabase ? tr("CAUTION: Database will be posted. BACKUP Database first.") : QString());
}

void frmReportOptions::ShowCaution(const QString& caution) {
    caution_ = caution;
    ShowMessage(caution_);
}

// A caution is not lost to the next field, unless that one has something to say itself.
void frmReportOptions::OnFieldFocus(QWidget* field) {
    if (!caution_.isEmpty() && (HintOf(field).isEmpty() || !qobject_cast<EntryEdit*>(field))) ShowMessage(caution_);
}

ReportOptions frmReportOptions::OptionsOfControls() const {
    ReportOptions options = options_;
    options.Book = optlBook_->Index() + kFirstBook;
    options.Sequence = kSequences.at(static_cast<std::size_t>(optlSequence_->Index())).Sequence;
    options.ReportDate = sidtReportDate_->Value();
    options.Division = sitxDivision_->Text();
    options.Department = sitxDepartment_->Text();
    options.CodeSection = sitxCodeSection_->Text();
    options.YStart = sidtYStart_->IsDate() ? std::optional<Date>(sidtYStart_->Value()) : std::nullopt;
    options.YEnd = sidtYEnd_->IsDate() ? std::optional<Date>(sidtYEnd_->Value()) : std::nullopt;
    options.PrintPYItems = chklPrintPY_->Value();
    options.SetMiscellaneous(chklMiscellaneous_->Value());
    return options;
}

void frmReportOptions::Ok() {
    QtPrompts prompts(this);
    options_ = OptionsOfControls();
    const std::optional<ReportFilter> filter = CheckReportOptions(session_, options_, prompts);
    if (!filter) return;
    if (options_.ReportNumber == kPostReport) {
        ShowCaution(tr("CAUTION: Database will be posted. BACKUP Database first"));
        if (!ConfirmPosting(prompts)) return;
    }
    Run(*filter);
}

void frmReportOptions::Run(const ReportFilter& filter) {
    const bool posts = options_.ReportNumber == kPostReport && options_.UpdateDatabase;
    auto document = std::make_shared<PrintedDocument>();
    // The report of a posting is on the disk before the posting is committed, so its place is asked for first.
    std::optional<FileDelivery> file;
    if (posts && Target() == OutputTarget::File) {
        QtPrompts asking(this);
        const auto path = AskDocumentFile(ReportTitle(session_, options_), true, FileFormat::Pdf, asking);
        if (!path) return;
        file.emplace(*path);
    }
    ReportResult result;
    try {
        const class_Hourglass wait;
        QtPrompts prompts(this, progressBar_);
        ReportRun run{.Session = session_,
                      .Engine = engine_,
                      .Asking = prompts,
                      .V = document->Pages,
                      .Filter = filter,
                      .Now = Now(),
                      .Details = &document->Details};
        if (file) run.OnDrawn = [&] { file->Write(document->Pages, document->Details); };
        result = PrintReport(run);
        if (!result.Printed) return;
    } catch (...) {
        // Another press of the button would post again what has been posted already.
        if (posts)
            QMetaObject::invokeMethod(
                this, [this] { Unload(); }, Qt::QueuedConnection);
        throw;
    }
    // A posting cannot be printed again: what was posted is shown, whatever became of its paper.
    const std::string done = posts ? PostedText(result.Copy) : std::string();
    if (posts) posted_ = "The year is closed";
    if (!result.Copy.empty()) posted_ += "; the company as it was before is " + FromUtf8(result.Copy.string());
    if (file) {
        PutInPlaceAndUnload(*file, document, done);
    } else {
        DeliverAndUnload(document, done);
    }
}

}  // namespace tallymar
