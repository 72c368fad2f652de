#include "batch/CompanyFiles.h"

#include "platform/recordset/DatabaseFiles.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

bool IsOpenCompany(const CompanySession& session, const fs::path& file) {
    std::error_code noFile;
    return session.IsOpen() && fs::equivalent(file, session.DatabaseFileName(), noFile);
}

std::string NameOf(const fs::path& file) {
    return FromUtf8(file.filename().string());
}

FileCommandResult CopyChosen(const fs::path& source, const fs::path& folder, std::string title, Prompts& prompts) {
    FileDialog dialog = CompanyFileDialog(std::move(title), folder);
    dialog.FileName = source.filename();
    const auto target = prompts.AskSaveFile(dialog);
    if (!target) return FileCommandResult::Cancelled;
    std::error_code noFile;
    if (fs::equivalent(source, *target, noFile)) {
        throw PlatformError(Failure::InvalidCall, NameOf(source) + " cannot be copied onto itself");
    }
    CopyDatabase(recordset::Database::Open(source), *target);
    return FileCommandResult::Done;
}

}  // namespace

FileCommandResult BackupCompany(CompanySession& session, Prompts& prompts) {
    const AppPath& paths = session.Paths();
    const auto source = prompts.AskOpenFile(CompanyFileDialog("Backup or Copy a Database to Backup area", paths.Folder()));
    if (!source) return FileCommandResult::Cancelled;
    if (IsOpenCompany(session, *source) && !session.FileClose()) return FileCommandResult::Kept;
    if (!prompts.AskYesNo("Make Backup Copy Client Database " + NameOf(*source) + " ?", "Confirm - Backup Client Database")) {
        return FileCommandResult::Cancelled;
    }
    paths.Prepare();
    return CopyChosen(*source, paths.Backup(), "Copy File", prompts);
}

FileCommandResult RestoreCompany(CompanySession& session, Prompts& prompts) {
    const AppPath& paths = session.Paths();
    const auto source = prompts.AskOpenFile(CompanyFileDialog("Restore Database from Backup area", paths.Backup()));
    if (!source) return FileCommandResult::Cancelled;
    if (!session.FileClose()) return FileCommandResult::Kept;
    if (!prompts.AskYesNo("Restore Client Database " + NameOf(*source) + " ?", "Confirm - Restore Client Database")) {
        return FileCommandResult::Cancelled;
    }
    return CopyChosen(*source, paths.Folder(), "Copy File", prompts);
}

FileCommandResult DeleteCompany(CompanySession& session, Prompts& prompts) {
    const auto file = prompts.AskOpenFile(CompanyFileDialog("Delete a Database", session.Paths().Folder()));
    if (!file) return FileCommandResult::Cancelled;
    if (IsOpenCompany(session, *file) && !session.FileClose()) return FileCommandResult::Kept;
    const std::string question = "Delete Client Database \n" + NameOf(*file) + "?";
    if (!prompts.AskYesNo(question, "Confirm - Delete Client Database") ||
        !prompts.AskYesNo(question, "Delete Client Database - Are you Sure")) {
        return FileCommandResult::Cancelled;
    }
    try {
        recordset::DeleteDatabase(*file);
    } catch (const PlatformError& failure) {
        prompts.Message(std::string("Client Database NOT Deleted\n") + failure.what(), "Delete Client Database ERROR",
                        MessageKind::Error);
        return FileCommandResult::Cancelled;
    }
    return FileCommandResult::Done;
}

}  // namespace tallymar
