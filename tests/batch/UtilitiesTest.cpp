#include <gtest/gtest.h>

#include "batch/ChangeAssets.h"
#include "batch/ChangeDept.h"
#include "batch/ChangeRange.h"
#include "batch/CompanyFiles.h"
#include "batch/Resequence.h"
#include "batch/SetBooks.h"
#include "store/Vocabularies.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

class UtilitiesTest : public testing::Test {
 protected:
    void Add(const char* number, const char* division, Date inService = Date::FromYmd(2003, 5, 1)) {
        AssetRecord asset = test::Machine(number, inService, 1000);
        asset.Division = division;
        asset.Department = "West";
        company_.Session.AddAssetRecord(asset);
    }

    AssetRecord Stored(const char* number) { return Stored(company_.Session, number); }
    static AssetRecord Stored(CompanySession& session, const char* number) {
        session.AssetsRecordset().Seek(number);
        AssetRecord record;
        session.ReadAssetRecord(record);
        return record;
    }

    test::TestCompany company_;
    CompanySession& session_ = company_.Session;
};

TEST_F(UtilitiesTest, RenamesWhatMatchesWholeAndCountsARowOnce) {
    Add("A1", "West");
    Add("A2", "west");
    EXPECT_EQ(ChangeDept(session_, {.Division = {"West ", "North"}, .Department = {"West", ""}, .AccountNum = {}, .Year = "0"},
                         company_.Prompts),
              2);
    EXPECT_EQ(Stored("A1").Division.Trimmed(), "North");
    EXPECT_EQ(Stored("A2").Division.Trimmed(), "west");
    EXPECT_TRUE(Stored("A2").Department.IsBlank());
    EXPECT_EQ(ChangeDept(session_, {}, company_.Prompts), 0) << "a blank From is no match";
    EXPECT_EQ(
        ChangeDept(session_, {.Division = {"North", "X"}, .Department = {}, .AccountNum = {}, .Year = "2003"}, company_.Prompts),
        0);
}

TEST_F(UtilitiesTest, AFailureKeepsTheRowsBeforeItAndCountsThem) {
    Add("A1", "West");
    Add("A2", "West");
    const std::string text = test::TextOf([&] {
        ChangeAssets(session_, company_.Prompts, [](AssetRecord& asset) {
            if (asset.AssetNum.Trimmed() == "A2") throw PlatformError(Failure::Overflow);
            asset.Division = "East";
            return true;
        });
    });
    EXPECT_EQ(text, "Asset A2: Overflow; assets changed before it: 1");
    EXPECT_EQ(Stored("A1").Division.Trimmed(), "East");
    EXPECT_EQ(Stored("A2").Division.Trimmed(), "West");
    const FieldChange tooLong{"1500", "1234567890123"};
    EXPECT_EQ(test::FailureOf([&] {
                  ChangeDept(session_, {.Division = {}, .Department = {}, .AccountNum = tooLong, .Year = {}}, company_.Prompts);
              }),
              Failure::FieldTooSmall);
}

TEST_F(UtilitiesTest, ARangeChangesOneBookOfWhatMatchesInAllSix) {
    Add("A1", "West");
    AssetRecord other = test::Machine("A2", Date::FromYmd(2003, 5, 1), 1000);
    other.DBPercent[3] = 150;
    session_.AddAssetRecord(other);
    const DepreciationSetUp from{
        .AssetType = "PP", .DeprType = "MCRS", .DeprMethod = "DB", .DBPercent = "200", .ClassLife = Units(5), .Period = Units(5)};
    const DepreciationSetUp to{.AssetType = "PP",
                               .DeprType = "GENL",
                               .DeprMethod = "SL",
                               .DBPercent = "",
                               .ClassLife = Units(7),
                               .Period = CurrencyAmount::FromTenThousandths(75000)};
    EXPECT_EQ(ChangeRange(session_, {.Division = "West", .Department = {}, .Year = {}, .Book = 3, .From = from, .To = to},
                          company_.Prompts),
              0)
        << "a division is compared at its full width";
    EXPECT_EQ(
        ChangeRange(session_, {.Division = "West            ", .Department = "  ", .Year = {}, .Book = 3, .From = from, .To = to},
                    company_.Prompts),
        1);
    const AssetRecord changed = Stored("A1");
    EXPECT_EQ(changed.DeprType[3], kGenl);
    EXPECT_EQ(changed.DeprMethod[3], kSl);
    EXPECT_EQ(changed.DBPercent[3], 0);
    EXPECT_EQ(changed.Period[3], CurrencyAmount::FromTenThousandths(75000));
    EXPECT_EQ(changed.DeprType[1], kMcrs);
    EXPECT_EQ(session_.AssetsRecordset().Get("FedLife").Integer(), 7);
    EXPECT_EQ(changed.FedLife, 5) << "the class life sets it again";
    DepreciationSetUp none = to;
    none.DeprType = "";
    EXPECT_EQ(test::FailureOf([&] {
                  ChangeRange(session_, {.Division = {}, .Department = {}, .Year = {}, .Book = 1, .From = from, .To = none},
                              company_.Prompts);
              }),
              Failure::InvalidCall);
}

TEST_F(UtilitiesTest, BooksAreSetEqualButForTheLimit) {
    AssetRecord asset = test::Machine("A1", Date::FromYmd(2003, 5, 1), 1000);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        asset.Basis[book] = Units(book);
        asset.DeprLimit[book] = Units(100 + book);
        asset.DateDeprToo[book] = Date::FromYmd(2000 + book, 1, 1);
    }
    session_.AddAssetRecord(asset);
    EXPECT_EQ(SetBooks(session_, {.FromBook = 3, .ToBook = -1, .Division = {}, .Department = {}, .Year = {}}, company_.Prompts),
              1);
    EXPECT_EQ(Stored("A1").Basis[1], Units(1));
    SetBooks(session_, {.FromBook = 3, .ToBook = 4, .Division = {}, .Department = {}, .Year = {}}, company_.Prompts);
    EXPECT_EQ(Stored("A1").Basis[1], Units(1));
    EXPECT_EQ(Stored("A1").Basis[4], Units(3));
    SetBooks(session_, {.FromBook = 3, .ToBook = 0, .Division = {}, .Department = {}, .Year = {}}, company_.Prompts);
    const AssetRecord equal = Stored("A1");
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_EQ(equal.Basis[book], Units(3));
        EXPECT_EQ(equal.DateDeprToo[book], Date::FromYmd(2003, 1, 1));
        EXPECT_EQ(equal.DeprLimit[book], Units(100 + book));
    }
}

class ResequenceTest : public UtilitiesTest {
 protected:
    ResequenceTest() {
        Add("C", "East", Date::FromYmd(2001, 1, 1));
        Add("A", "West", Date::FromYmd(2002, 1, 1));
        Add("B", "EAST", Date::FromYmd(2003, 1, 1));
    }
    ResequenceCounts Run(const ResequenceOptions& options) {
        return Resequence(session_, options, company_.Folder / "target.mdb", company_.Prompts).value();
    }
    static ResequenceOptions Options(const char* only, const char* division, const char* department, const char* prefix) {
        return {.Division = division,
                .Department = department,
                .CopyOnly = only,
                .IgnoreCase = true,
                .Renumber = *prefix != '\0',
                .Prefix = prefix};
    }
    std::string Numbers() {
        session_.OpenCompany(company_.Folder / "target.mdb", company_.Prompts);
        std::string numbers;
        recordset::Recordset& assets = session_.AssetsRecordset();
        for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
            numbers += std::string(RTrimmed(assets.Get("AssetNum").ToText())) + " ";
        }
        return numbers;
    }
    static std::string RTrimmed(std::string text) {
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }
};

TEST_F(ResequenceTest, NumbersFollowTheDateOfService) {
    EXPECT_EQ(Run(Options("N", "", "", "AB")).Text(), "3 Assets added and 0 Assets changed");
    EXPECT_EQ(session_.AssetCount(), 3);
    EXPECT_EQ(Stored("C").AssetNum.Trimmed(), "C") << "the open company is as it was, and in its own order";
    EXPECT_EQ(Numbers(), "AB0001 AB0002 AB0003 ");
    EXPECT_EQ(session_.CompanyName(), "New Company");
    EXPECT_EQ(Stored("AB0001").Division.Trimmed(), "East");
}

TEST_F(ResequenceTest, FiltersLookAtTheDivisionAndMergeIntoWhatIsThere) {
    EXPECT_EQ(Run(Options("Y", "east", "", "")).Added, 2);
    EXPECT_EQ(Run(Options("Y", "", "West", "")).Text(), "0 Assets added and 2 Assets changed")
        << "the department is compared with the division, and must differ";
    EXPECT_EQ(Run(Options("", "", "", "")).Added, 0);
    EXPECT_EQ(Run(Options("N", "", "", "")).Text(), "1 Assets added and 2 Assets changed");
    EXPECT_EQ(Numbers(), "A B C ");
}

TEST_F(ResequenceTest, WhatDoesNotFitLeavesTheTargetAsItWas) {
    EXPECT_EQ(PrefixLimit(99), 4);
    EXPECT_EQ(PrefixLimit(100000), 3);
    recordset::RunBatch(session_.Database(), recordset::OnFailure::AllOrNothing, [&] {
        for (int i = 0; i < 1000; ++i) Add(std::to_string(100000 + i).c_str(), "");
    });
    const auto failure = test::ErrorOf([&] { Run(Options("N", "", "", "ABC")); });
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->Code(), Failure::FieldTooSmall);
    EXPECT_EQ(std::string(failure->what()).substr(0, 13), "Asset 100996:");
    EXPECT_FALSE(std::filesystem::exists(company_.Folder / "target.mdb"));
    EXPECT_EQ(test::FailureOf([&] { Run(Options("N", "", "", "ABCD")); }), Failure::InvalidCall);
    EXPECT_EQ(test::FailureOf([&] { Resequence(session_, {}, company_.File(), company_.Prompts); }), Failure::InvalidCall);
}

class CompanyFilesTest : public UtilitiesTest {
 protected:
    CompanyFilesTest() { Add("A1", "West"); }
    std::filesystem::path Backup() const { return company_.Folder.Path() / "Backup" / "company.mdb"; }
};

TEST_F(CompanyFilesTest, ABackupComesBack) {
    company_.Prompts.OpenFiles = {company_.File(), std::nullopt, Backup()};
    company_.Prompts.SaveFiles = {Backup(), company_.File()};
    company_.Prompts.YesNo = {true, true};
    EXPECT_NE(BackupCompany(session_, company_.Prompts), "");
    EXPECT_FALSE(session_.IsOpen());
    EXPECT_EQ(company_.Prompts.Questions.front().Text, "Make Backup Copy Client Database company.mdb ?");
    EXPECT_EQ(company_.Prompts.Dialogs.back().FileName, "company.mdb");
    EXPECT_EQ(BackupCompany(session_, company_.Prompts), "") << "a cancelled dialog ends it without a word";

    session_.OpenCompany(company_.File(), company_.Prompts);
    session_.AssetsRecordset().MoveFirst();
    session_.AssetsRecordset().Delete();
    EXPECT_NE(RestoreCompany(session_, company_.Prompts), "");
    EXPECT_FALSE(session_.IsOpen());
    session_.OpenCompany(company_.File(), company_.Prompts);
    EXPECT_EQ(session_.AssetCount(), 1);
    EXPECT_TRUE(company_.Prompts.Messages.empty());
}

// A file of another kind may stand for a company that is made of it, wherever one is chosen.
TEST_F(CompanyFilesTest, AFileThatIsNoCompanyGivesTheOneMadeOfIt) {
    const std::filesystem::path old = company_.Folder / "old.mdb";
    const std::filesystem::path made = company_.Folder / "made.mdb";
    std::filesystem::copy_file(company_.File(), made);
    test::WriteAll(old, "no company at all");
    bool taken = true;
    session_.SetChosenFile([&](const std::filesystem::path& file, Prompts&) {
        return file != old ? std::optional(file) : taken ? std::optional(made) : std::nullopt;
    });
    EXPECT_EQ(Resequence(session_, {}, old, company_.Prompts)->Changed, 1);

    company_.Prompts.OpenFiles = {old, old};
    company_.Prompts.SaveFiles = {company_.Folder / "copy.mdb"};
    company_.Prompts.YesNo = {true};
    EXPECT_NE(RestoreCompany(session_, company_.Prompts), "");
    EXPECT_EQ(company_.Prompts.Dialogs.back().FileName, "made.mdb");
    session_.OpenCompany(company_.Folder / "copy.mdb", company_.Prompts);
    EXPECT_EQ(session_.AssetCount(), 1);

    taken = false;
    EXPECT_FALSE(Resequence(session_, {}, old, company_.Prompts).has_value());
    EXPECT_EQ(BackupCompany(session_, company_.Prompts), "");
    EXPECT_TRUE(session_.IsOpen());
    EXPECT_EQ(test::ReadAll(old), "no company at all");
}

TEST_F(CompanyFilesTest, ACopyNeverTakesThePlaceOfTheOpenCompany) {
    session_.FileClose();
    std::filesystem::copy_file(company_.File(), company_.Folder / "other.mdb");
    session_.OpenCompany(company_.File(), company_.Prompts);
    company_.Prompts.OpenFiles = {company_.Folder / "other.mdb"};
    company_.Prompts.SaveFiles = {company_.File()};
    company_.Prompts.YesNo = {true};
    EXPECT_EQ(test::FailureOf([&] { BackupCompany(session_, company_.Prompts); }), Failure::FileInUse);
    EXPECT_EQ(session_.AssetCount(), 1);
}

TEST_F(CompanyFilesTest, WhatCannotBeCopiedLeavesTheTarget) {
    test::WriteAll(company_.Folder / "notes.mdb", "no company at all");
    const std::string before = test::ReadAll(company_.File());
    company_.Prompts.OpenFiles = {company_.Folder / "notes.mdb"};
    company_.Prompts.SaveFiles = {company_.File()};
    company_.Prompts.YesNo = {true};
    const auto failure = test::ErrorOf([&] { RestoreCompany(session_, company_.Prompts); });
    ASSERT_TRUE(failure.has_value());
    EXPECT_NE(std::string(failure->what()).find("notes.mdb"), std::string::npos);
    EXPECT_EQ(test::ReadAll(company_.File()), before);
}

TEST_F(CompanyFilesTest, DeletingAsksTwiceAndTakesTheJournalWithIt) {
    company_.Prompts.OpenFiles = {company_.File(), company_.File(), company_.Folder / "gone.mdb"};
    company_.Prompts.YesNo = {true, false, true, true, true, true};
    EXPECT_EQ(DeleteCompany(session_, company_.Prompts), "");
    EXPECT_FALSE(session_.IsOpen()) << "it stays closed after a No";
    test::WriteAll(company_.File().string() + "-journal", "left by a crash");
    EXPECT_NE(DeleteCompany(session_, company_.Prompts), "");
    EXPECT_FALSE(std::filesystem::exists(company_.File()));
    EXPECT_FALSE(std::filesystem::exists(company_.File().string() + "-journal"));
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Delete Client Database \ncompany.mdb?");
    EXPECT_EQ(DeleteCompany(session_, company_.Prompts), "");
    EXPECT_EQ(company_.Prompts.Messages.back().Title, "Delete Client Database ERROR");
    EXPECT_EQ(company_.Prompts.Messages.back().Text.substr(0, 28), "Client Database NOT Deleted\n");
}

}  // namespace
}  // namespace tallymar
