#include "interchange/ExchangeDialogs.h"

#include "interchange/AssetExport.h"
#include "interchange/ExchangeBook.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

// The DOS edition's own files have no extension.
const FileFilter kCompanyFiles = {"Tallymar Company Files (assetctl.*)", "assetctl;assetctl.*"};
constexpr std::string_view kAssetPattern = "aascii;aascii.*";

FileFilter AssetFiles(std::string_view what) {
    return {"Tallymar " + std::string(what) + " Files (aascii.*)", std::string(kAssetPattern)};
}

FileDialog Dialog(std::string_view title, const FileFilter& filter, const std::filesystem::path& folder) {
    return {.Title = std::string(title),
            .Filters = {{"All Files (*.*)", "*"}, filter},
            .InitialFolder = folder,
            .FileName = {},
            .DefaultExtension = {}};
}

// The folder of the last company, or one that is there in any case.
std::filesystem::path FolderOr(CompanySession& session, const std::filesystem::path& other) {
    const std::filesystem::path last = session.Profile().LastFolder();
    return last.empty() ? other : last;
}

}  // namespace

FileDialog DosImportDialog(CompanySession& session, std::string_view type) {
    return Dialog("Import File", ExchangeBook(type) == 0 ? kCompanyFiles : AssetFiles("Import"),
                  FolderOr(session, session.Paths().Folder()));
}

FileDialog UserImportDialog(CompanySession& session) {
    return Dialog("Select Aascii Import File", AssetFiles("Import"), FolderOr(session, session.DatabaseFileName().parent_path()));
}

FileDialog SpreadsheetDialog(CompanySession& session) {
    const FileFilter tables = {"Spreadsheets and CSV files (*.xlsx, *.ods, *.csv)", "*.xlsx;*.ods;*.csv"};
    FileDialog dialog = Dialog("Select Spreadsheet or CSV", tables, FolderOr(session, session.DatabaseFileName().parent_path()));
    dialog.FilterIndex = 1;
    return dialog;
}

FileDialog ExportDialog(CompanySession& session, std::string_view type) {
    return Dialog("Export File", ExchangeBook(type) == 0 ? kCompanyFiles : AssetFiles("Export"),
                  FolderOr(session, session.Paths().Folder()));
}

bool HasExportYearEnd(CompanySession& session, std::string_view book, Prompts& prompts) {
    try {
        ExportYearEnd(session, book);
    } catch (const PlatformError& failure) {
        if (failure.Code() != Failure::InvalidCall) throw;
        prompts.Message(failure.what(), "Tallymar", MessageKind::Warning);
        return false;
    }
    return true;
}

}  // namespace tallymar
