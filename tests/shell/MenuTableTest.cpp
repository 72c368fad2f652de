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

TEST(Commands, OpenWithTheCompanyAndWithItsFirstAsset) {
    EXPECT_EQ(EnabledIn({}), kWithoutCompany);
    EXPECT_EQ(Without(EnabledIn({true, 0}), kWithoutCompany), kWithEmptyCompany);
    EXPECT_EQ(Without(Without(EnabledIn({true, 1}), kWithoutCompany), kWithEmptyCompany), kWithAssets);
}

// Three commands have hints under other captions than their own, one has none.
TEST(Hints, AreFoundByTheCaption) {
    for (const MenuItem& item : MenuItems()) {
        const bool none = Names{"mnuBackup", "mnuRestore", "mnuDeleteDB", "mnuCreate8824"}.contains(std::string(item.Name));
        EXPECT_EQ(HintForCaption(item.Caption).empty(), none) << item.Name;
    }
    const std::pair<const char*, const char*> odd[] = {{"&Open", "Select an Tallymar company"},
                                                       {"Create Form 4&562", "Create an IRS Form 4563"},
                                                       {"File", ""},
                                                       {"&Restore a Database", "Restore a copy of an Company Tallymar database"}};
    for (const auto& [caption, hint] : odd) EXPECT_EQ(HintForCaption(caption), hint);
}

TEST(Menus, EachHasAnAccessKeyOfItsOwn) {
    std::set<char> ofMenus;
    for (const MenuItem& item : MenuItems()) {
        const std::size_t mark = item.Caption.find('&');
        ASSERT_NE(mark, std::string_view::npos);
        if (item.Command != Command::None) continue;
        EXPECT_TRUE(ofMenus.insert(static_cast<char>(std::tolower(item.Caption[mark + 1]))).second) << item.Name;
    }
    EXPECT_EQ(ofMenus.size(), 8u);
}

}  // namespace
}  // namespace tallymar
