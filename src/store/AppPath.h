#pragma once

#include <array>
#include <filesystem>

namespace tallymar {

// The folder that everything of an installation lies in: Assets1.dat, Backup, Images, and what the user has put there to stand in
// for a delivered file. A portable copy keeps it beside the program; an installed program, whose own folder belongs to the
// system, keeps one for each user. The delivered files (depreciation tables) stay where the installation has put them.
//
// To name it touches nothing; Prepare makes it.
class AppPath {
 public:
    // `folder` itself (the --app-path option).
    static AppPath At(const std::filesystem::path& folder, const std::filesystem::path& programFolder);
    // The program's folder when it can be written and holds the delivered files (a portable copy); else the user's data folder.
    static AppPath Of(const std::filesystem::path& programFolder);
    // Makes the folder, with Backup and Images in it as far as it can be written. Fails with PathAccess or PermissionDenied when
    // there is no folder and none can be made.
    void Prepare() const;

    // The folder of the running program.
    static std::filesystem::path ProgramFolder();

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Profile() const { return folder_ / "Assets1.dat"; }
    std::filesystem::path Backup() const { return folder_ / "Backup"; }
    std::filesystem::path Images() const { return folder_ / "Images"; }

    // Where a file is looked for: the user's own folder, then the delivered one.
    std::array<std::filesystem::path, 2> Folders() const { return {folder_, delivered_}; }
    // A file that is delivered with the program, by its name below the folder ("MACSDB05.DPP", "Laser/5662.HP") in any case of
    // its letters: the user's own where there is one, else the delivered one; empty when there is neither.
    std::filesystem::path Find(const std::filesystem::path& name) const;

 private:
    AppPath(std::filesystem::path folder, std::filesystem::path delivered);

    std::filesystem::path folder_;
    std::filesystem::path delivered_;  // may be missing
};

}  // namespace tallymar
