#include "interchange/frmExportOptions.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "interchange/DosExchange.h"
#include "interchange/ExchangeDialogs.h"
#include "interchange/frmExchangeParts.h"
#include "interchange/frmUserExport.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

constexpr int kYearWidth = 4;

}  // namespace

frmExportOptions::frmExportOptions(CompanySession& session, QWidget* parent)
    : frmExchangeForm("frmExportOptions", tr("Export Asset Records"), session, parent) {
    optlBook_ = MakeBookList(tr("Select Export Type"), this);
    optlBook_->SetHints(tr("Company: the profile, and all books over an asset file that is there"));
    auto* selection = new QGroupBox(tr("Select Export By:"), this);
    sitxEditYear_ = Named(new sitxEdit(kYearWidth, selection), "sitxEditYear");
    sitxEditDivision_ = Named(new sitxEdit(ColumnOf(&AssetRecord::Division).Width(), selection), "sitxEditDivision");
    sitxEditDepartment_ = Named(new sitxEdit(ColumnOf(&AssetRecord::Department).Width(), selection), "sitxEditDepartment");
    SetHint(sitxEditYear_, tr("Enter Fiscal Year or leave Blank for all Years"));
    sitxEditYear_->setToolTip(tr("A year of the asset's life as of the book's fiscal year end: 1 is its first"));
    SetHint(sitxEditDivision_, tr("Enter Division or leave Blank for all Divisions"));
    SetHint(sitxEditDepartment_, tr("Enter Department or leave Blank for all Departments"));
    auto* selectionGrid = new QGridLayout(selection);
    FieldRows rows(selectionGrid);
    rows.Add(tr("Fiscal Year"), sitxEditYear_);
    rows.Add(tr("Division"), sitxEditDivision_);
    rows.Add(tr("Department"), sitxEditDepartment_);
    counts_ = new frmCounts(tr("Export Statistics"), CountLines(ExportCounts()), this);
    auto* cmdUserExport = Named(new CSCmdBtn(tr("Define User Export  File"), this), "cmdUserExport");
    SetHint(cmdUserExport, tr("Write a comma-delimited file in a layout of your own"));
    auto* cmdOK = Named(new CSCmdBtn(tr("Export Now"), this), "cmdOK");
    SetHint(cmdOK, tr("Write the files of the DOS edition"));

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    grid->addWidget(optlBook_, 0, 0, 2, 1);
    grid->addWidget(selection, 0, 1);
    grid->addWidget(counts_, 1, 1);
    grid->addWidget(cmdUserExport, 2, 0, 1, 2);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(MakeFoot({cmdOK}, tr("Cancel")));

    connect(cmdOK, &QPushButton::clicked, this, Guarded([this] { Export(); }));
    connect(cmdUserExport, &QPushButton::clicked, this,
            Guarded([this] { frmUserExport(Session(), Options(), this).ShowModal(); }));
}

ExportOptions frmExportOptions::Options() const {
    return {.Book = BookName(*optlBook_),
            .Year = sitxEditYear_->Text(),
            .Division = sitxEditDivision_->Text(),
            .Department = sitxEditDepartment_->Text()};
}

void frmExportOptions::Export() {
    const ExportOptions options = Options();
    QtPrompts asking(this);
    if (!HasExportYearEnd(Session(), options.Book, asking)) return;
    const auto file = asking.AskSaveFile(ExportDialog(Session(), options.Book));
    if (!file) return;
    counts_->Show(CountLines(ExportCounts()));
    Run([&](Prompts& prompts) {
        const auto counts = DosExport(Session(), options, *file, prompts);
        if (!counts) return;
        counts_->Show(CountLines(*counts));
        ShowResult(tr("Export file is %1").arg(PathToQString(*file)));
    });
}

}  // namespace tallymar
