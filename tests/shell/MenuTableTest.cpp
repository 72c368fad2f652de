#include "shell/MenuTable.h"

#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace tallymar {
namespace {

using Names = std::set<std::string>;

bool IsOn(std::string_view name, const SessionState& state) {
    for (const ToolbarButton& button : ToolbarButtons()) {
        if (button.Key == name) return WhyOff(button.When, state).empty();
    }
    for (const MenuItem& item : MenuItems()) {
        if (item.Name == name) return WhyOff(item.When, state).empty();
    }
    throw std::out_of_range(std::string(name));
}

// Where one would guess wrong.
TEST(Commands, TheOddOnes) {
    const SessionState none;
    const SessionState empty{.CompanyOpen = true, .AssetCount = 0};
    for (const char* name : {"mnuCreate8824", "mnuBackup", "mnuDeleteDB", "mnuSoftFonts", "mnuAmortization"}) {
        EXPECT_TRUE(IsOn(name, none)) << name;
    }
    EXPECT_TRUE(IsOn("mnuEditFind", empty) && !IsOn("Find", empty))
        << "the menu's Find goes with the company, the button's with assets";
    EXPECT_TRUE(IsOn("mnuEditAsset", empty) && !IsOn("mnuFindAssets", empty) && !IsOn("mnuCopyAsset", empty));
    EXPECT_FALSE(IsOn("mnuFileClose", none));
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
