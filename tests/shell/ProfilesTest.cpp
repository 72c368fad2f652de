#include <fstream>

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "shell/CompanyProfile.h"
#include "shell/UserProfileEdit.h"
#include "support/Files.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

// ---- company

TEST(CompanyProfile, EveryColumnComesBackAsItWasSaved) {
    test::TestCompany company;
    constexpr std::pair<std::string CompanyProfile::*, const char*> kTexts[] = {{&CompanyProfile::Company, "Caf\xe9 & Sons"},
                                                                                {&CompanyProfile::LastName, "Orrery"},
                                                                                {&CompanyProfile::FirstName, "Wil"},
                                                                                {&CompanyProfile::Address1, "1 Main St"},
                                                                                {&CompanyProfile::Address2, "Suite 2"},
                                                                                {&CompanyProfile::City, "Reno"},
                                                                                {&CompanyProfile::State, "NV"},
                                                                                {&CompanyProfile::ZipCode, "89501"},
                                                                                {&CompanyProfile::Id, "123-45-6789"},
                                                                                {&CompanyProfile::Telephone, "(775) 555-0100"}};
    CompanyProfile saved;
    for (const auto& [member, text] : kTexts) saved.*member = text;
    saved.BeginDate = Date::FromYmd(1983, 1, 1);
    for (int book = kFirstBook; book <= kLastBook; ++book) saved.FiscalYearEnd[book] = Date::FromYmd(2003, book, 28);
    saved.FiscalYearEnd[3] = Date();
    saved.Round = true;
    saved.Save(company.Session.CompanyRecordset());

    const CompanyProfile read = CompanyProfile::LoadEdit(company.Session.CompanyRecordset());
    for (const auto& [member, text] : kTexts) EXPECT_EQ(read.*member, text);
    EXPECT_EQ(read.BeginDate, saved.BeginDate);
    EXPECT_EQ(read.FiscalYearEnd, saved.FiscalYearEnd);
    EXPECT_TRUE(read.Round);
    // No date is stored as date 0.
    EXPECT_EQ(company.Session.CompanyRecordset().Get("FYEBook").AsDate(), Date());
}

TEST(CompanyProfile, TheStateComesOffTheCity) {
    const std::vector<std::array<const char*, 4>> cases = {{"DENVER CO", "", "DENVER", "CO"},
                                                           {"Reno nv  ", "OH", "Reno", "NV"},
                                                           {"SAN JUAN PR", "", "SAN JUAN", "PR"},
                                                           {"CHICAGO", "IL", "CHICAGO", "IL"},
                                                           {"ST LOUIS MO.", "", "ST LOUIS MO.", ""}};
    test::TestCompany company;
    recordset::Recordset& row = company.Session.CompanyRecordset();
    for (const auto& [city, state, shownCity, shownState] : cases) {
        row.Edit();
        row.Set("City", city);
        row.Set("State", state);
        row.Update();
        const CompanyProfile profile = CompanyProfile::LoadEdit(row);
        EXPECT_EQ(profile.City, shownCity);
        EXPECT_EQ(profile.State, shownState);
    }
}

TEST(CompanyProfile, AMissingRowIsAddedAndAFailedSaveLeavesTheRowAlone) {
    test::TestCompany company;
    recordset::Recordset& row = company.Session.CompanyRecordset();
    row.Delete();
    CompanyProfile profile = CompanyProfile::LoadEdit(row);
    EXPECT_EQ(row.RecordCount(), 1);
    EXPECT_EQ(profile.Company, "");
    profile.Company = "Good";
    profile.Save(row);
    profile.Company = "Better";
    profile.State = "Ohio";
    EXPECT_THROW(profile.Save(row), PlatformError);
    EXPECT_FALSE(row.EditPending());
    EXPECT_EQ(CompanyProfile::LoadEdit(row).Company, "Good");
}

// ---- user

class UserProfileForm : public testing::Test {
 protected:
    UserProfile Start(const std::vector<std::pair<int, std::string>>& positions) {
        std::string lines;
        for (int position = 1; position <= 32; ++position) {
            std::string value;
            for (const auto& [at, text] : positions) value = at == position ? text : value;
            lines += '"' + value + "\"\r\n";
        }
        test::WriteAll(File(), lines);
        UserProfile profile;
        profile.Load(File());
        return profile;
    }
    std::filesystem::path File() const { return folder_ / "Assets1.dat"; }

    test::TempFolder folder_;
};

using Box = UserProfileEdit::Box;
using List = UserProfileEdit::List;

TEST_F(UserProfileForm, OpeningDecodesEmptyBoxesByItsOwnRules) {
    UserProfile profile = Start({});
    EXPECT_FALSE(profile.FindByGLNumber);  // the start reads an empty 31 as false, the form as true
    UserProfileEdit edit(profile);
    EXPECT_TRUE(edit.Checked(Box::DateFind));
    EXPECT_TRUE(edit.Checked(Box::GLFind));
    EXPECT_FALSE(edit.Checked(Box::NewAsset));
    EXPECT_TRUE(profile.FindByGLNumber);
    EXPECT_EQ(profile.At(30), "True");
    EXPECT_EQ(profile.At(31), "False");  // put there by the empty 32
    EXPECT_EQ(profile.At(32), "");
    // So the next opening finds another box.
    EXPECT_FALSE(UserProfileEdit(profile).Checked(Box::GLFind));
}

TEST_F(UserProfileForm, StoredBoxesAndForeignTexts) {
    UserProfile profile = Start({{30, "False"}, {31, "True"}, {32, "True"}});
    UserProfileEdit edit(profile);
    EXPECT_FALSE(edit.Checked(Box::DateFind));
    EXPECT_TRUE(edit.Checked(Box::GLFind));
    EXPECT_TRUE(edit.Checked(Box::NewAsset));
    UserProfile foreign = Start({{30, "yes"}, {31, "yes"}, {32, "yes"}});
    UserProfileEdit opened(foreign);
    for (const Box box : {Box::DateFind, Box::GLFind, Box::NewAsset}) EXPECT_FALSE(opened.Checked(box));
    EXPECT_EQ(foreign.At(31), "yes");
}

TEST_F(UserProfileForm, ClicksCountAtOnceAndCancelLeavesTheFileAlone) {
    UserProfile profile = Start({{31, "True"}});
    {
        UserProfileEdit edit(profile);
        EXPECT_EQ(edit.Chosen(List::NewUsed), "New");  // "NEW" is no entry of the list
        EXPECT_EQ(edit.Chosen(List::DeprType), "MCRS");
        EXPECT_EQ(edit.Chosen(List::DeprMethod), "DB");
        edit.Click(Box::NewAsset, true);
        edit.Click(List::NewUsed, "Used");
        edit.Click(List::DeprType, "ACRS");
    }
    EXPECT_TRUE(profile.NumericAssetNumbers);
    EXPECT_EQ(profile.DefaultNewUsed, "Used");
    EXPECT_EQ(profile.DefaultDeprType, "ACRS");
    UserProfile again;
    again.Load(File());
    EXPECT_FALSE(again.NumericAssetNumbers);
    EXPECT_EQ(again.DefaultNewUsed, "NEW");
}

TEST_F(UserProfileForm, SaveWritesEveryPosition) {
    UserProfile profile = Start({{3, "/old/place/a.mdb"}, {26, "kept"}, {31, "True"}});
    profile.LastDataPath = "/new/place/b.mdb";
    UserProfileEdit edit(profile);
    edit.SetText(UserProfile::kStateCode, "oh");
    edit.SetText(UserProfile::kData1041, "C:\\FORMS");
    edit.Click(Box::DateFind, false);
    edit.Click(List::DeprMethod, "SL");
    ASSERT_TRUE(edit.Save(File()));

    std::ifstream file(File());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line.substr(0, line.find('\r')));
    ASSERT_EQ(lines.size(), 100u);
    const std::vector<std::pair<std::size_t, const char*>> expected = {
        {3, "/new/place/b.mdb"}, {23, "OH"},  {26, "kept"}, {30, "False"}, {31, "True"}, {32, "False"},
        {85, "C:\\FORMS"},       {90, "NEW"}, {91, "MCRS"}, {92, "SL"},    {100, ""}};
    for (const auto& [position, text] : expected) EXPECT_EQ(lines[position - 1], '"' + std::string(text) + '"') << position;
    EXPECT_FALSE(edit.Save(folder_ / "missing" / "Assets1.dat"));
}

}  // namespace
}  // namespace tallymar
