#include "interchange/frmUserExport.h"

#include "interchange/ExchangeDialogs.h"
#include "interchange/UserExport.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

QString WhatIsExported(const ExportOptions& options) {
    const auto orAll = [](const std::string& text) { return text.empty() ? QObject::tr("all") : ToQString(text); };
    return QObject::tr("Book: %1    Fiscal Year: %2\nDivision: %3    Department: %4")
        .arg(ToQString(options.Book), orAll(options.Year), orAll(options.Division), orAll(options.Department));
}

}  // namespace

frmUserExport::frmUserExport(CompanySession& session, ExportOptions options, QWidget* parent)
    : frmFieldDefinition({.Name = "frmUserExport",
                          .Title = tr("Define User Export File"),
                          .FileName = FieldDefinition::ExportFileName,
                          .BoxHint = tr("Enter Export File definition field number"),
                          .SaveHint = tr("Save this Export Definition File"),
                          .Failure = tr("An error has occurred during Export of Definition File")},
                         session, WhatIsExported(options), parent),
      options_(std::move(options)) {
    auto* cmdExport = Named(new CSCmdBtn(tr("Export Now"), this), "cmdExport");
    SetHint(cmdExport, tr("Write the assets in the layout of the boxes"));
    AddFoot({}, {cmdExport});
    connect(cmdExport, &QPushButton::clicked, this, Guarded([this] { Export(); }));
}

void frmUserExport::Export() {
    QtPrompts asking(this);
    if (!HasExportYearEnd(Session(), options_.Book, asking)) return;
    if (Definition().HighestPosition() == 0) {
        ShowWarning(tr("Nothing to export: no box says where a field stands"));
        return;
    }
    // Without a count every field would end its line.
    if (Definition().FieldCount() == 0 && !CheckPositions()) return;
    const auto file = asking.AskSaveFile(ExportDialog(Session(), options_.Book));
    if (!file) return;
    Run([&](Prompts& prompts) {
        const ExportCounts counts = UserExport(Session(), Definition(), options_, *file, prompts);
        ShowResult(ToQString(UserExportDoneText(counts)));
    });
}

}  // namespace tallymar
