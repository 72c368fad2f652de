#include "interchange/frmUserImport.h"

#include <QCheckBox>

#include "interchange/ExchangeDialogs.h"
#include "interchange/UserImport.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

frmUserImport::frmUserImport(CompanySession& session, std::string book, bool addNew, QWidget* parent)
    : frmFieldDefinition(
          {.Name = "frmUserImport",
           .Title = tr("Define User Import File"),
           .FileName = FieldDefinition::ImportFileName,
           .BoxHint = tr("Enter Import File definition field number"),
           .SaveHint = tr("Save this Import Definition File"),
           .Failure = tr("An error has occurred during import of Definition File")},
          session, tr("Book: %1\nDuplicate records: %2").arg(ToQString(book), addNew ? tr("Add New") : tr("Update Existing")),
          parent),
      book_(std::move(book)),
      addNew_(addNew) {
    auto* chkAllOrNothing = MakeAllOrNothing();
    auto* cmdImport = Named(new CSCmdBtn(tr("Import Now"), this), "cmdImport");
    SetHint(cmdImport, tr("Import a file in the layout of the boxes"));
    AddFoot({chkAllOrNothing}, {cmdImport, MakeCheckFile()});

    SetImportWays(
        {.AskFile = [this](Prompts& prompts) { return prompts.AskOpenFile(UserImportDialog(Session())); },
         .Import = [this](const std::filesystem::path& file, ImportEnding ending, Prompts&,
                          const ImportProgress& progress) -> std::optional<ImportCounts> {
             const UserImportOptions options{.Definition = Definition(), .Book = book_, .AddNew = addNew_, .Ending = ending};
             return UserImport(Session(), options, file, progress);
         },
         .ShowCounts = [this](const ImportCounts& counts) { ShowResult(ToQString(UserImportCountText(counts))); },
         .ShowFile = [this](const std::filesystem::path& file) { ShowResult(tr("Import file is %1").arg(PathToQString(file))); },
         .ShowDone = [this](const ImportCounts& counts) { ShowResult(ToQString(UserImportDoneText(counts))); },
         .ShowCancelled = [this] { ShowResult(tr("Import canceled")); }});
    connect(cmdImport, &QPushButton::clicked, this, Guarded([this] { Import(); }));
}

void frmUserImport::Import() {
    ShowResult(tr("Processing ... Please Wait"));
    if (Definition().HighestPosition() == 0) {
        ShowWarning(tr("Import canceled: no box says where a field stands"));
        return;
    }
    ImportNow();
}

}  // namespace tallymar
