#include "interchange/frmImportOptions.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QVBoxLayout>

#include "interchange/DosExchange.h"
#include "interchange/ExchangeDialogs.h"
#include "interchange/frmExchangeParts.h"
#include "interchange/frmSpreadsheetImport.h"
#include "interchange/frmUserImport.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr int kAddNew = 1;  // its place in optlDuplicate

}  // namespace

frmImportOptions::frmImportOptions(CompanySession& session, QWidget* parent)
    : frmExchangeForm("frmImportOptions", tr("Import Asset Records"), session, parent) {
    optlBook_ = MakeBookList(tr("Select Import Type"), this);
    optlBook_->SetHints(tr("Company: profile and all books; else one book"));
    optlDuplicate_ = new CSOptList("optlDuplicate", tr("Duplicate Record Import"), {tr("Update Existing"), tr("Add New")}, this);
    optlDuplicate_->SetHints(tr("What becomes of a record whose asset number is there already"));
    counts_ = new frmCounts(tr("Import Statistics"), CountLines(ImportCounts()), this);
    auto* chkAllOrNothing = MakeAllOrNothing();
    auto* cmdUserImport = Named(new CSCmdBtn(tr("Define User Import  File"), this), "cmdUserImport");
    SetHint(cmdUserImport, tr("Import a comma-delimited file in a layout of your own"));
    auto* cmdSpreadsheet = Named(new CSCmdBtn(tr("Spreadsheet or CSV"), this), "cmdSpreadsheet");
    SetHint(cmdSpreadsheet, tr("Import an .xlsx, .ods or .csv file whose first row has headings"));
    auto* cmdOK = Named(new CSCmdBtn(tr("Import Now"), this), "cmdOK");
    SetHint(cmdOK, tr("Import the files of the DOS edition"));

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    grid->addWidget(optlBook_, 0, 0, 2, 1);
    grid->addWidget(optlDuplicate_, 0, 1);
    grid->addWidget(counts_, 1, 1);
    grid->addWidget(chkAllOrNothing, 2, 0, 1, 2);
    grid->addWidget(cmdUserImport, 3, 0);
    grid->addWidget(cmdSpreadsheet, 3, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(MakeFoot({cmdOK, MakeCheckFile()}, tr("Cancel")));

    const auto showCounts = [this](const ImportCounts& counts) { counts_->Show(CountLines(counts)); };
    SetImportWays(
        {.AskFile = [this](Prompts& prompts) { return prompts.AskOpenFile(DosImportDialog(Session(), BookName(*optlBook_))); },
         .Import =
             [this](const std::filesystem::path& file, ImportEnding ending, Prompts& prompts, const ImportProgress& progress) {
                 const DosImportOptions options{
                     .Type = BookName(*optlBook_), .AddNew = optlDuplicate_->Index() == kAddNew, .Ending = ending};
                 return DosImport(Session(), options, file, prompts, progress);
             },
         .ShowCounts = showCounts,
         .ShowFile =
             [this, showCounts](const std::filesystem::path& file) {
                 showCounts({});
                 ShowResult(tr("Import file is %1").arg(PathToQString(file)));
             },
         .ShowDone = showCounts,
         .ShowCancelled = [] {}});
    connect(cmdOK, &QPushButton::clicked, this, Guarded([this] { ImportNow(); }));
    connect(cmdUserImport, &QPushButton::clicked, this, Guarded([this] { UserImport(); }));
    connect(cmdSpreadsheet, &QPushButton::clicked, this, Guarded([this] { SpreadsheetImport(); }));
}

void frmImportOptions::UserImport() {
    frmUserImport(Session(), BookName(*optlBook_), optlDuplicate_->Index() == kAddNew, this).ShowModal();
}

void frmImportOptions::SpreadsheetImport() {
    QtPrompts prompts(this);
    const auto file = prompts.AskOpenFile(SpreadsheetDialog(Session()));
    if (file) frmSpreadsheetImport(Session(), *file, optlDuplicate_->Index() == kAddNew, this).ShowModal();
}

}  // namespace tallymar
