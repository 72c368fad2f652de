#include "store/CompanySession.h"

#include <fstream>

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "store/Schema.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

TEST(CompanySession, NewCompanyHasItsNameAndNothingElse) {
    test::TestCompany company;
    EXPECT_EQ(company.Session.CompanyName(), "New Company");
    EXPECT_EQ(company.Session.CompanyRecordset().RecordCount(), 1);
    EXPECT_TRUE(company.Session.CompanyRecordset().Get("State").IsNull());
    EXPECT_EQ(company.Session.RoundText(), "False");
    EXPECT_EQ(company.Session.AssetsRecordset().Index(), "AssetNum");
    EXPECT_TRUE(company.Session.NewCompanyPending);
    EXPECT_EQ(company.Profile.LastDataPath, "");
}

class CountingObserver : public SessionObserver {
 public:
    bool CompanyClosing() override { return true; }
    void CompanyClosed() override {}
    void OpenEnable() override { ++Told; }
    void LastAssetGone() override { ++Told; }
    int Told = 0;
};

TEST(CompanySession, TheObserverHearsOfTheFirstAssetAndOfTheLast) {
    test::TestCompany company;
    CountingObserver observer;
    company.Session.SetObserver(&observer);
    company.Session.OpenCompany(company.File(), company.Prompts);
    const auto toldAfter = [&](const char* number) {
        if (number != nullptr) {
            company.Session.AddAssetRecord(test::Machine(number, Date::FromYmd(2003, 1, 1), 1));
        } else {
            company.Session.AssetsRecordset().MoveFirst();
            company.Session.AssetsRecordset().Delete();
        }
        company.Session.AssetsChanged();
        return observer.Told;
    };
    EXPECT_EQ(observer.Told, 1);
    EXPECT_EQ(toldAfter("A1"), 2);
    EXPECT_EQ(toldAfter("A2"), 2);
    EXPECT_EQ(toldAfter(nullptr), 2);
    EXPECT_EQ(toldAfter(nullptr), 3);
    company.Session.SetObserver(nullptr);
}

TEST(CompanySession, CancelledDialogsKeepTheOpenCompany) {
    test::TestCompany company;
    company.Prompts.OpenFiles = {std::nullopt};
    company.Prompts.SaveFiles = {std::nullopt};
    EXPECT_FALSE(company.Session.FileOpen(company.Prompts));
    EXPECT_FALSE(company.Session.FileNew(company.Prompts));
    EXPECT_EQ(company.Session.DatabaseFileName(), company.File());
}

TEST(CompanySession, OpeningRemembersThePathAndNewReplacesTheFile) {
    test::TestCompany company;
    company.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 1, 1), 1));
    company.Prompts.OpenFiles = {company.File()};
    ASSERT_TRUE(company.Session.FileOpen(company.Prompts));
    EXPECT_EQ(company.Session.AssetCount(), 1);
    UserProfile again;
    again.Load(company.Session.Paths().Profile());
    EXPECT_EQ(again.LastDataPath, company.File().string());

    company.Prompts.SaveFiles = {company.File()};
    ASSERT_TRUE(company.Session.FileNew(company.Prompts));
    EXPECT_EQ(company.Session.AssetCount(), 0);
    company.Session.FileClose();
    EXPECT_FALSE(company.Session.IsOpen());
    EXPECT_THROW(company.Session.AssetsRecordset(), PlatformError);
}

TEST(CompanySession, ACompanyThatHasLostItsRowOpens) {
    test::TestCompany company;
    company.Session.CompanyRecordset().Delete();
    company.Session.OpenCompany(company.File(), company.Prompts);
    EXPECT_TRUE(company.Session.IsOpen());
    EXPECT_EQ(company.Session.CompanyName(), "");
    EXPECT_EQ(company.Session.FiscalYearEnd(kFirstBook), Date());
}

// A company file as the first release wrote it, with one asset in it.
void WriteOldFile(const std::filesystem::path& path) {
    recordset::Database database = recordset::Database::Create(path);
    recordset::TableDef company = CompanyTable();
    std::erase_if(company.Fields, [](const recordset::Field& field) { return field.Name == "State"; });
    recordset::TableDef assets = AssetsTable();
    std::erase_if(assets.Fields,
                  [](const recordset::Field& field) { return field.Name == "TaxGroup" || field.Name == "Notice4"; });
    std::erase_if(assets.Indexes,
                  [](const recordset::Index& index) { return index.Name == "ClassLife" || index.Name == "TaxGroup"; });
    database.CreateTable(company);
    database.CreateTable(assets);
    recordset::Recordset rows = database.OpenRecordset("Assets");
    rows.AddNew();
    rows.Set("AssetNum", "OLD1");
    rows.Update();
}

TEST(CompanySession, OldFilesAreBroughtUpToDateOnce) {
    test::TestCompany company;
    const auto path = company.Folder / "old.mdb";
    WriteOldFile(path);
    company.Session.OpenCompany(path, company.Prompts);
    ASSERT_EQ(company.Prompts.Messages.size(), 1U);
    EXPECT_EQ(company.Prompts.Messages[0].Text, "Field State NOT Found");
    AssetRecord record;
    company.Session.ReadAssetRecord(record);
    EXPECT_FALSE(record.Notice4);
    EXPECT_EQ(record.TaxGroup, "");
    company.Session.WriteAssetRecord(record);
    company.Session.AssetsRecordset().SetIndex("TaxGroup");
    company.Session.AssetsRecordset().SetIndex("ClassLife");
    EXPECT_EQ(company.Session.AssetsRecordset().Definition().FindField("TaxGroup")->Size, recordset::kDefaultTextSize);

    company.Session.OpenCompany(path, company.Prompts);
    EXPECT_EQ(company.Prompts.Messages.size(), 1U);
}

TEST(CompanySession, WhatIsNoCompanyLeavesNoneOpen) {
    test::TestCompany company;
    const auto garbage = company.Folder / "garbage.mdb";
    std::ofstream(garbage) << std::string(5000, 'x');
    const auto foreign = company.Folder / "foreign.mdb";
    recordset::Database::Create(foreign).CreateTable({.Name = "Other", .Fields = {{.Name = "A"}}, .Indexes = {}});
    for (const auto& [path, failure] : {std::pair{garbage, Failure::UnrecognizedFormat},
                                        {foreign, Failure::NoSuchTable},
                                        {company.Folder / "missing.mdb", Failure::CannotOpenFile},
                                        {company.Folder.Path(), Failure::CannotOpenFile}}) {
        try {
            company.Session.OpenCompany(path, company.Prompts);
            ADD_FAILURE() << path << " opened";
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.Code(), failure) << path;
        }
        EXPECT_FALSE(company.Session.IsOpen());
    }
    company.Session.OpenCompany(company.File(), company.Prompts);
    EXPECT_TRUE(company.Session.IsOpen());
}

}  // namespace
}  // namespace tallymar
