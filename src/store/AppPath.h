#pragma once

#include <filesystem>

namespace tallymar {

// The folder that everything of an installation lies in: Assets1.dat, the depreciation tables, Backup and Images. A portable copy
// keeps it beside the program; an installed program, whose own folder belongs to the system, keeps one for each user.
//
// To name it touches nothing; Prepare fills it.
class AppPath {
 public:
    // `folder` itself (the --app-path option).
    static AppPath At(const std::filesystem::path& folder, const std::filesystem::path& programFolder);
    // The program's folder when it can be written and holds the delivered data (a portable copy); else the user's data folder.
    static AppPath Find(const std::filesystem::path& programFolder);
    // Makes Backup and Images and brings in delivered data that the folder lacks; what the user has changed there stays. Fails
    // with PathAccess or PermissionDenied when the folder cannot be made.
    void Prepare() const;

    // The folder of the running program.
    static std::filesystem::path ProgramFolder();

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Profile() const { return folder_ / "Assets1.dat"; }
    // The DepreciationTableFiles: the folder itself, or the delivered ones where it was never filled.
    std::filesystem::path Tables() const;
    std::filesystem::path Backup() const { return folder_ / "Backup"; }
    std::filesystem::path Images() const { return folder_ / "Images"; }

 private:
    AppPath(std::filesystem::path folder, std::filesystem::path delivered);

    std::filesystem::path folder_;
    std::filesystem::path delivered_;  // data to fill it with; may be missing
};

}  // namespace tallymar
