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

std::string CopyChosen(const CompanySession& session, const fs::path& source, const fs::path& folder, std::string title,
                       Prompts& prompts) {
    FileDialog dialog = CompanyFileDialog(std::move(title), folder);
    dialog.FileName = source.filename();
    const auto target = prompts.AskSaveFile(dialog);
    if (!target) return {};
    std::error_code noFile;
    if (fs::equivalent(source, *target, noFile)) {
        throw PlatformError(Failure::InvalidCall, NameOf(source) + " cannot be copied onto itself");
    }
    if (IsOpenCompany(session, *target)) {
        throw PlatformError(Failure::FileInUse, NameOf(*target) + " is the open company; close it before it is replaced");
    }
    recordset::CopyDatabase(recordset::Database::Open(source), *target);
    return NameOf(source) + " was copied to " + FromUtf8(target->string());
}

}  // namespace

std::string BackupCompany(CompanySession& session, Prompts& prompts) {
    const AppPath& paths = session.Paths();
    const auto source = prompts.AskOpenFile(CompanyFileDialog("Backup or Copy a Database to Backup area", paths.Folder()));
    if (!source) return {};
    if (IsOpenCompany(session, *source) && !session.FileClose()) return {};
    if (!prompts.AskYesNo("Make Backup Copy Client Database " + NameOf(*source) + " ?", "Confirm - Backup Client Database")) {
        return {};
    }
    paths.Prepare();
    return CopyChosen(session, *source, paths.Backup(), "Copy File", prompts);
}

std::string RestoreCompany(CompanySession& session, Prompts& prompts) {
    const AppPath& paths = session.Paths();
    const auto source = prompts.AskOpenFile(CompanyFileDialog("Restore Database from Backup area", paths.Backup()));
    if (!source) return {};
    if (!session.FileClose()) return {};
    if (!prompts.AskYesNo("Restore Client Database " + NameOf(*source) + " ?", "Confirm - Restore Client Database")) {
        return {};
    }
    return CopyChosen(session, *source, paths.Folder(), "Copy File", prompts);
}

std::string DeleteCompany(CompanySession& session, Prompts& prompts) {
    const auto file = prompts.AskOpenFile(CompanyFileDialog("Delete a Database", session.Paths().Folder()));
    if (!file) return {};
    if (IsOpenCompany(session, *file) && !session.FileClose()) return {};
    const std::string question = "Delete Client Database \n" + NameOf(*file) + "?";
    if (!prompts.AskYesNo(question, "Confirm - Delete Client Database") ||
        !prompts.AskYesNo(question, "Delete Client Database - Are you Sure")) {
        return {};
    }
    try {
        recordset::DeleteDatabase(*file);
    } catch (const PlatformError& failure) {
        prompts.Message(std::string("Client Database NOT Deleted\n") + failure.what(), "Delete Client Database ERROR",
                        MessageKind::Error);
        return {};
    }
    return FromUtf8(file->string()) + " was deleted";
}

}  // namespace tallymar
