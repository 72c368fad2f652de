#include "store/AppPath.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& path, const char* text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

std::string Contents(const fs::path& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

// An installed program, whose user's data folder is home/tallymar.
AppPath Installed(const test::TempFolder& folder) {
    Write(folder / "usr/bin/tallymar", "");
    Write(folder / "usr/share/tallymar/MACSDB05.DPP", "delivered");
    Write(folder / "usr/share/tallymar/MACSDB07.DPP", "delivered");
    setenv("XDG_DATA_HOME", (folder / "home").c_str(), 1);
    AppPath path = AppPath::Of(folder / "usr/bin");
    unsetenv("XDG_DATA_HOME");
    return path;
}

TEST(AppPath, APortableCopyKeepsEverythingBesideTheProgram) {
    test::TempFolder folder;
    Write(folder / "MACSDB05.DPP", "table");
    const AppPath path = AppPath::Of(folder.Path());
    EXPECT_EQ(path.Folder(), folder.Path());
    path.Prepare();
    EXPECT_TRUE(fs::is_directory(folder / "Images"));
    EXPECT_EQ(fs::status(folder / "Backup").permissions(), fs::perms::owner_all);
    EXPECT_EQ(AppPath::At(folder / "elsewhere", folder.Path()).Find("MACSDB05.DPP"), folder / "MACSDB05.DPP");
}

TEST(AppPath, TheUsersOwnFileStandsInForTheDeliveredOneAndNothingIsCopied) {
    test::TempFolder folder;
    const AppPath path = Installed(folder);
    EXPECT_EQ(path.Folder(), folder / "home/tallymar");
    path.Prepare();
    Write(path.Folder() / "macsdb05.dpp", "own");
    Write(path.Folder() / "laser/5662.hp", "own");
    EXPECT_EQ(Contents(path.Find("MACSDB05.DPP")), "own");
    EXPECT_EQ(Contents(path.Find("macsdb07.dpp")), "delivered");
    EXPECT_EQ(Contents(path.Find("Laser/5662.HP")), "own");
    EXPECT_EQ(path.Find("MACSDB09.DPP"), "");
    EXPECT_EQ(path.Find("../../usr/bin/tallymar"), "") << "nothing outside the two folders";
    EXPECT_FALSE(fs::exists(path.Folder() / "MACSDB07.DPP"));
}

TEST(AppPath, AFolderThatCannotBeMadeStillLeavesTheDeliveredFiles) {
    test::TempFolder folder;
    Write(folder / "home", "a file where the folder should be");
    const AppPath path = Installed(folder);
    EXPECT_THROW(path.Prepare(), PlatformError);
    EXPECT_EQ(Contents(path.Find("MACSDB05.DPP")), "delivered");
}

}  // namespace
}  // namespace tallymar
