#include "shell/MenuTable.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace tallymar {
namespace {

std::set<std::string> EnabledIn(const SessionState& state) {
    std::set<std::string> names;
    for (const MenuItem& item : MenuItems()) {
        if (item.Command != Command::None && IsEnabled(item.When, state)) names.insert(std::string(item.Name));
    }
    for (const ToolbarButton& button : ToolbarButtons()) {
        if (IsEnabled(button.When, state)) names.insert("Toolbar:" + std::string(button.Key));
    }
    return names;
}

using Names = std::set<std::string>;

Names Without(Names all, const Names& some) {
    for (const std::string& name : some) EXPECT_EQ(all.erase(name), 1u) << name;
    return all;
}

const Names kWithoutCompany = {"mnuFileNew",      "mnuFileOpen",  "mnuFilePrinterSetup", "mnuFileExit",  "mnuEditUserInformation",
                               "mnuAmortization", "mnuSoftFonts", "mnuBackup",           "mnuDeleteDB",  "mnuRestore",
                               "mnuCreate8824",   "mnuUpdate",    "mnuHelpContents",     "mnuHelpIndex", "mnuHelpAbout",
                               "Toolbar:New",     "Toolbar:Open", "Toolbar:Help"};
const Names kWithEmptyCompany = {"mnuFileClose", "mnuFileImport", "mnuFileExport",
                                 "mnuEditAsset", "mnuEditFind",   "mnuEditCompanyInformation",
                                 "Toolbar:Edit", "Toolbar:Close"};
const Names kWithAssets = {"mnuActivitiesComputeCurrent",
                           "mnuActivitiesCloseYear",
                           "mnuReportsRun",
                           "mnuReportsLabels",
                           "mnuFindAssets",
                           "mnuCopyAsset",
                           "mnuChangeRange",
                           "mnuChangeDept",
                           "mnuSetBooks",
                           "mnuCreate4255",
                           "mnuCreate4562",
                           "mnuCreate4797",
                           "mnuCreateSchD",
                           "mnuResequence",
                           "Toolbar:Find",
                           "Toolbar:Calculate"};

TEST(Commands, WithoutACompany) {
    EXPECT_EQ(EnabledIn({}), kWithoutCompany);
}

TEST(Commands, WithACompanyWithoutAssetsThoseOfAnEmptyTable) {
    EXPECT_EQ(Without(EnabledIn({true, 0}), kWithoutCompany), kWithEmptyCompany);
}

TEST(Commands, WithAssetsAllOfThem) {
    EXPECT_EQ(Without(Without(EnabledIn({true, 1}), kWithoutCompany), kWithEmptyCompany), kWithAssets);
}

TEST(Hints, AreFoundByTheCaption) {
    EXPECT_EQ(HintForCaption("&File"), "Access Open, Save, Print and Exit options");
    EXPECT_EQ(HintForCaption("&Open"), "Select an Tallymar company");
    EXPECT_EQ(HintForCaption("Create Form 4&562"), "Create an IRS Form 4563");
    EXPECT_EQ(HintForCaption("Co&mparison Reports"), "Select a Comparison Report");
    EXPECT_EQ(HintForCaption("&Find Assets"), "Find assets in the database");
    EXPECT_EQ(HintForCaption("File"), "");
}

TEST(Hints, FourCommandsShowNone) {
    for (const MenuItem& item : MenuItems()) {
        const bool none =
            item.Name == "mnuBackup" || item.Name == "mnuRestore" || item.Name == "mnuDeleteDB" || item.Name == "mnuCreate8824";
        EXPECT_EQ(HintForCaption(item.Caption).empty(), none) << item.Name;
    }
    EXPECT_EQ(HintForCaption("&Restore a Database"), "Restore a copy of an Company Tallymar database");
}

TEST(Menus, AccessKeysAreUniqueWithinAMenu) {
    std::set<char> taken;
    std::set<char> ofMenus;
    for (const MenuItem& item : MenuItems()) {
        const std::size_t mark = item.Caption.find('&');
        ASSERT_NE(mark, std::string_view::npos);
        const char key = static_cast<char>(std::tolower(item.Caption[mark + 1]));
        if (item.Command == Command::None) {
            EXPECT_TRUE(ofMenus.insert(key).second) << item.Name;
            taken.clear();
        } else {
            taken.insert(key);
        }
    }
    EXPECT_EQ(ofMenus.size(), 8u);
}

}  // namespace
}  // namespace tallymar
