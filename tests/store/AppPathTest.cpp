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

TEST(AppPath, APortableCopyKeepsEverythingBesideTheProgram) {
    test::TempFolder folder;
    Write(folder / "MACSDB05.DPP", "table");
    const AppPath path = AppPath::Find(folder.Path());
    EXPECT_EQ(path.Folder(), folder.Path());
    path.Prepare();
    EXPECT_TRUE(fs::is_directory(folder / "Backup"));
    EXPECT_TRUE(fs::is_directory(folder / "Images"));
}

TEST(AppPath, AnInstalledProgramFillsTheUsersFolderAndKeepsWhatTheUserChanged) {
    test::TempFolder folder;
    Write(folder / "usr/bin/tallymar", "");
    Write(folder / "usr/share/tallymar/MACSDB05.DPP", "delivered");
    Write(folder / "usr/share/tallymar/MACSDB07.DPP", "delivered");
    Write(folder / "home/tallymar/MACSDB05.DPP", "changed");
    setenv("XDG_DATA_HOME", (folder / "home").c_str(), 1);
    const AppPath path = AppPath::Find(folder / "usr/bin");
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(path.Folder(), folder / "home/tallymar");
    path.Prepare();
    EXPECT_EQ(Contents(path.Tables() / "MACSDB05.DPP"), "changed");
    EXPECT_EQ(Contents(path.Tables() / "MACSDB07.DPP"), "delivered");
    EXPECT_TRUE(fs::is_directory(path.Backup()));
}

TEST(AppPath, AFolderThatCannotBeFilledLeavesTheDeliveredTables) {
    test::TempFolder folder;
    Write(folder / "usr/bin/tallymar", "");
    Write(folder / "usr/share/tallymar/MACSDB05.DPP", "delivered");
    Write(folder / "home", "a file where the folder should be");
    const AppPath path = AppPath::At(folder / "home/tallymar", folder / "usr/bin");
    EXPECT_THROW(path.Prepare(), PlatformError);
    EXPECT_EQ(Contents(path.Tables() / "MACSDB05.DPP"), "delivered");
}

}  // namespace
}  // namespace tallymar
