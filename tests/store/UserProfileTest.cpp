#include "store/UserProfile.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

std::string FileOf(const std::vector<std::pair<int, std::string>>& values, int lines) {
    std::string text;
    for (int position = 1; position <= lines; ++position) {
        std::string value;
        for (const auto& [at, what] : values) {
            if (at == position) value = what;
        }
        text += '"' + value + "\"\r\n";
    }
    return text;
}

UserProfile Loaded(const test::TempFolder& folder, const std::string& contents) {
    std::ofstream(folder / "Assets1.dat", std::ios::binary) << contents;
    UserProfile profile;
    profile.Load(folder / "Assets1.dat");
    return profile;
}

TEST(UserProfile, MissingAndEmptyFilesGiveTheSameDefaults) {
    test::TempFolder folder;
    UserProfile missing;
    missing.Load(folder / "nowhere" / "Assets1.dat");
    for (const UserProfile& profile : {missing, Loaded(folder, "")}) {
        EXPECT_TRUE(profile.FindByDate);
        EXPECT_FALSE(profile.FindByGLNumber);
        EXPECT_FALSE(profile.NumericAssetNumbers);
        EXPECT_EQ(profile.DefaultNewUsed, "NEW");
        EXPECT_EQ(profile.DefaultDeprType, "MCRS");
        EXPECT_EQ(profile.DefaultDeprMethod, "DB");
        EXPECT_EQ(profile.At(UserProfile::kNewUsed), "NEW");
    }
}

TEST(UserProfile, DecodesFlagsAndKeepsWhatItDoesNotKnow) {
    test::TempFolder folder;
    UserProfile profile = Loaded(
        folder,
        FileOf({{3, "/data/a, b/client.mdb"}, {26, "kept"}, {30, "False"}, {31, "True"}, {32, "perhaps"}, {90, "Used"}}, 92));
    EXPECT_FALSE(profile.FindByDate);
    EXPECT_TRUE(profile.FindByGLNumber);
    EXPECT_FALSE(profile.NumericAssetNumbers);
    EXPECT_EQ(profile.DefaultNewUsed, "Used");
    EXPECT_EQ(profile.LastFolder(), "/data/a, b");
    profile.Set(UserProfile::kCompany, "Two \"quotes\"");
    profile.LastDataPath = "/data/other.mdb";
    ASSERT_TRUE(profile.Save(folder / "Assets1.dat"));

    std::ifstream in(folder / "Assets1.dat", std::ios::binary);
    std::stringstream written;
    written << in.rdbuf();
    EXPECT_EQ(written.str(), FileOf({{3, "/data/other.mdb"},
                                     {20, "Two quotes"},
                                     {26, "kept"},
                                     {30, "False"},
                                     {31, "True"},
                                     {32, "perhaps"},
                                     {90, "Used"},
                                     {91, "MCRS"},
                                     {92, "DB"}},
                                    100));
}

TEST(UserProfile, WhatIsNoFileIsRefusedAndAFailedSaveSaysSo) {
    test::TempFolder folder;
    UserProfile profile;
    EXPECT_FALSE(profile.Save(folder / "nowhere" / "Assets1.dat"));
    std::filesystem::create_directory(folder / "Assets1.dat");
    EXPECT_THROW(profile.Load(folder / "Assets1.dat"), PlatformError);
}

}  // namespace
}  // namespace tallymar
