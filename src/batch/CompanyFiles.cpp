#include "batch/CompanyFiles.h"

#include "platform/recordset/DatabaseFiles.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

bool IsOpenCompany(const CompanySession& session, const fs::path& file) {
    return session.IsOpen() && IsSameFile(file, session.DatabaseFileName());
}

std::string NameOf(const fs::path& file) {
    return FromUtf8(file.filename().string());
}

// The company to copy; none when the dialog is cancelled or a file of the old program is not to be converted.
std::optional<fs::path> AskSource(const CompanySession& session, std::string title, const fs::path& folder, Prompts& prompts) {
    const auto file = prompts.AskOpenFile(CompanyFileDialog(std::move(title), folder));
    return file ? session.ChosenCompany(*file, prompts) : std::nullopt;
}

std::string CopyChosen(const CompanySession& session, const fs::path& source, const fs::path& folder, std::string title,
                       Prompts& prompts) {
    FileDialog dialog = CompanyFileDialog(std::move(title), folder);
    dialog.FileName = source.filename();
    const auto target = prompts.AskSaveFile(dialog);
    if (!target) return {};
    if (IsSameFile(source, *target)) {
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
    const auto source = AskSource(session, "Backup or Copy a Database to Backup area", paths.Folder(), prompts);
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
    const auto source = AskSource(session, "Restore Database from Backup area", paths.Backup(), prompts);
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
