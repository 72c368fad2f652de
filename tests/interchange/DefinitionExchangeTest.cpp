#include <gtest/gtest.h>

#include "interchange/DosExchange.h"
#include "interchange/UserExport.h"
#include "interchange/UserImport.h"
#include "store/Vocabularies.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

class DefinitionExchangeTest : public testing::Test {
 protected:
    DefinitionExchangeTest() { company_.SetYearEnds(Date::FromYmd(2003, 12, 31)); }

    // Boxes by field: {1, "1"} puts the number first.
    static FieldDefinition Definition(const char* count, std::initializer_list<std::pair<int, const char*>> boxes) {
        FieldDefinition definition;
        definition.FieldCountText = count;
        for (const auto& [field, text] : boxes) definition.SetBox(field, text);
        return definition;
    }

    std::filesystem::path File(std::string_view contents) {
        test::WriteAll(company_.Folder / "aascii.txt", contents);
        return company_.Folder / "aascii.txt";
    }

    ImportCounts Import(const FieldDefinition& definition, std::string_view contents, bool addNew = false,
                        ImportEnding ending = ImportEnding::KeepDone, const char* book = "Federal") {
        return UserImport(company_.Session, {.Definition = definition, .Book = book, .AddNew = addNew, .Ending = ending},
                          File(contents));
    }

    AssetRecord Stored(const char* number) {
        company_.Session.AssetsRecordset().Seek(number);
        AssetRecord record;
        company_.Session.ReadAssetRecord(record);
        return record;
    }

    std::int64_t Count() { return company_.Session.AssetCount(); }

    test::TestCompany company_;
};

// The first item of the next record is what no box has claimed at the last position of this one.
TEST_F(DefinitionExchangeTest, AnUnclaimedLastItemBeginsTheNextRecord) {
    const auto claimed = Definition("3", {{1, "1"}, {4, "3"}});
    EXPECT_EQ(UserImportDoneText(Import(claimed, "A1,dropped,Lathe\r\nA2,dropped,\"Drill, big\"\r\n")),
              "DONE:  Assets Added = 2    Assets Updated = 0");
    EXPECT_EQ(Stored("A2").Description, "Drill, big");
    const auto unclaimed = Definition("2", {{1, "1"}});
    Import(unclaimed, "B1,B2\r\nB3,B4\r\n");
    EXPECT_EQ(Count(), 6);
    EXPECT_EQ(ImportRemarkText(Import(unclaimed, "B1,B2\r\n", false, ImportEnding::CheckOnly).Remarks.back()).substr(0, 54),
              "every record: item 2, the last, is claimed by no box: ");
}

TEST_F(DefinitionExchangeTest, ABoxHoldsAPositionOrNothing) {
    for (const char* text : {"", "0", "40", " 7.5"}) EXPECT_TRUE(FieldDefinition::IsValidPosition(text)) << text;
    for (const char* text : {"-1", "41", "1E400"}) EXPECT_FALSE(FieldDefinition::IsValidPosition(text)) << text;
    EXPECT_EQ(Definition("", {{1, "4"}, {2, "2"}, {3, "2"}, {4, "-7"}}).Unclaimed(), (std::vector<int>{1, 3}));
}

TEST_F(DefinitionExchangeTest, TheRulesOfTheColumns) {
    const auto definition = Definition("12", {{1, "1"},
                                              {4, "2"},
                                              {8, "3"},
                                              {12, "4"},
                                              {14, "5"},
                                              {15, "6"},
                                              {17, "7"},
                                              {20, "8"},
                                              {24, "9"},
                                              {26, "10"},
                                              {36, "11"},
                                              {3, "12"}});
    Import(definition,
           "A1,A description of more than thirty-two letters,3/5/02,USED,MCRS,DDB,5,900,100,12abc,4,West  \n"
           "A2,Desk,no date,U,179E,EX,7,1000,,,Y,a department of more than sixteen\n"
           "A3,Chair,4/1/2003,N,ADR,?,7,1000,,0,N,\n",
           false, ImportEnding::KeepDone, "State");
    const AssetRecord first = Stored("A1");
    EXPECT_EQ(first.Description + "|" + first.Descrip2, "A description of more than thirt|y-two letters");
    EXPECT_EQ(first.Purchased, Date::FromYmd(2002, 3, 5)) << "the date of service stands in";
    EXPECT_EQ(first.NewUsed.View(), "N") << "what the file says is never taken";
    EXPECT_EQ(first.DeprMethod[2], kDb);
    EXPECT_EQ(first.DBPercent[2], 200);
    EXPECT_EQ(first.Period[2], Units(5));
    EXPECT_EQ(first.Basis[2], Units(1000));
    EXPECT_TRUE(first.Sold);
    EXPECT_TRUE(first.Notice4);
    EXPECT_FALSE(first.LikeKind);
    EXPECT_EQ(first.BusinessUse, Units(100));
    EXPECT_EQ(first.Basis[1], CurrencyAmount()) << "another book";
    const AssetRecord expensed = Stored("A2");
    EXPECT_EQ(expensed.InService, Date());
    EXPECT_EQ(expensed.Period[2], Units(1));
    EXPECT_EQ(expensed.Department.Trimmed(), "a department of");
    const AssetRecord after = Stored("A3");
    EXPECT_EQ(after.DeprType[2], kAdr);
    EXPECT_EQ(after.Period[2], Units(1)) << "the mark of the record before holds on";
}

TEST_F(DefinitionExchangeTest, TakenNumbersAreUpdatedOrAddedAsDuplicates) {
    const auto definition = Definition("2", {{1, "1"}, {2, "2"}});
    Import(definition, "A1,East\nA2,West\n");
    EXPECT_EQ(Import(definition, "A1,North\n").Updated, 1);
    EXPECT_EQ(Stored("A1").Division.Trimmed(), "North");
    EXPECT_EQ(Import(definition, "A1,South\nA2,South\n", true).Duplicates, 2);
    EXPECT_EQ(Stored("DUP002").Division.Trimmed(), "South");
    EXPECT_EQ(Stored("A1").Division.Trimmed(), "North");
}

TEST_F(DefinitionExchangeTest, AFailureNamesItsPlaceAndWhatStays) {
    const auto definition = Definition("2", {{1, "1"}, {6, "2"}});
    const std::string_view contents = "A1,1500\nA2,1234567890123\nA3,1600\n";
    const auto failure = test::ErrorOf([&] { Import(definition, contents); });
    ASSERT_TRUE(failure.has_value());
    const std::string text = failure->what();
    EXPECT_EQ(text.substr(0, 44), "An error 3163 has occurred during import\nrec");
    EXPECT_NE(text.find("record 2, item 2: "), std::string::npos) << text;
    EXPECT_NE(text.find("Records stored before it: 1"), std::string::npos) << text;
    EXPECT_EQ(Count(), 1);

    EXPECT_EQ(test::NumberOf([&] { Import(definition, contents, false, ImportEnding::AllOrNothing); }), 3163);
    EXPECT_EQ(Count(), 1);
    const ImportCounts check = Import(definition, "A4,1234567890123\nA5,1500\n,1600\nA6", false, ImportEnding::CheckOnly);
    EXPECT_EQ(Count(), 1);
    ASSERT_EQ(check.Remarks.size(), 4U);
    EXPECT_EQ(ImportRemarkText(check.Remarks[0]), "every record: no box claims the depreciation type: taken as MACS");
    EXPECT_EQ(ImportRemarkText(check.Remarks[1]).substr(0, 18), "record 1, item 2: ");
    EXPECT_EQ(check.Remarks[2].Record, 3);
    EXPECT_TRUE(check.Remarks[3].Fails) << "the file ends within its last record";
    EXPECT_EQ(test::NumberOf([&] { Import(definition, "A7,1500\n", false, ImportEnding::KeepDone, "Company"); }), 3265);
}

TEST_F(DefinitionExchangeTest, AnExportIsInOrderOfPositions) {
    AssetRecord asset = test::Machine("A1", Date::FromYmd(2003, 5, 1), 1000);
    asset.Division = "East";
    asset.TaxCredit[1] = Units(7);
    asset.TaxCreditUsed[1] = CurrencyAmount::FromTenThousandths(-5000);
    company_.Session.AddAssetRecord(asset);
    asset.AssetNum = "A2";
    asset.Division = "West";
    asset.InService = Date::FromYmd(2001, 5, 1);
    company_.Session.AddAssetRecord(asset);
    const auto definition = Definition("4", {{1, "1"}, {8, "2"}, {9, "3"}, {12, "3"}, {28, "4"}});
    const std::filesystem::path file = company_.Folder / "out.txt";
    EXPECT_EQ(UserExportDoneText(UserExport(company_.Session, definition, {.Year = "1"}, file, company_.Prompts)),
              "Total Assets = 2    Assets exported = 1");
    EXPECT_EQ(test::ReadAll(file), "A1,5/1/2003,,NEW,7\r\n-0.5\r\n");
    UserExport(company_.Session, definition, {.Division = "West"}, file, company_.Prompts);
    EXPECT_EQ(test::ReadAll(file).substr(0, 12), "A2,5/1/2001,");
}

TEST_F(DefinitionExchangeTest, TheDosFilesComeBackAsTheyWent) {
    AssetRecord asset = test::Machine("A1", Date::FromYmd(2003, 5, 1), 1000);
    asset.Description = "Lathe";
    asset.CodeSection = "1245";
    asset.DeprType[3] = kGenl;
    asset.LikeKind = true;
    asset.Salvage[3] = CurrencyAmount::FromTenThousandths(2500);
    company_.Session.AddAssetRecord(asset);
    const std::filesystem::path file = company_.Folder / "aascii.c01";
    const auto counts = DosExport(company_.Session, {.Book = "Book"}, file, company_.Prompts);
    EXPECT_EQ(counts->Exported, 1);
    EXPECT_EQ(
        test::ReadAll(file),
        "A1    ,,,Lathe,,,,5/1/2003,,,1245,New,PP,GENL,DB,100,5,5,1000,999.75,0.25,0,0,0,0,0,0,0,0,200,N,N,Y,N,N,Y,N,0,N,0\r\n");
    const AssetRecord before = Stored("A1");
    company_.Session.AssetsRecordset().Delete();
    DosImport(company_.Session, {.Type = "Book"}, file, company_.Prompts);
    const AssetRecord back = Stored("A1");
    EXPECT_EQ(back.DeprType[3], before.DeprType[3]);
    EXPECT_EQ(back.Salvage[3], before.Salvage[3]);
    EXPECT_EQ(back.InService, before.InService);
    EXPECT_TRUE(back.LikeKind);
    EXPECT_EQ(back.DeprType[1], kMcrs);
}

// Both files of the DOS edition: four records in a row are the books of one asset.
TEST_F(DefinitionExchangeTest, ACompanyOfTheDosEdition) {
    const std::filesystem::path control = company_.Folder / "assetctl.c01";
    test::WriteAll(control,
                   "Mills, Sons & Co\r\nMills\r\n\r\n12-3456789\r\n\r\n\r\n\r\n\r\n\r\nY\r\nCO\r\n\r\n\r\n\r\n12/31/2003\r\n");
    EXPECT_EQ(DosImport(company_.Session, {.Type = "Company"}, control, company_.Prompts), std::nullopt);
    EXPECT_EQ(company_.Session.CompanyName(), "Mills, Sons & Co");
    EXPECT_EQ(company_.Session.FiscalYearEnd(3), Date::FromYmd(2003, 12, 31));
    EXPECT_EQ(company_.Session.FiscalYearEnd(1), Date());
    EXPECT_EQ(company_.Prompts.Messages.back().Text.substr(0, 43), "Asset import file not found for this client");

    std::string records;
    for (const char* cost : {"100", "200", "300", "400"}) {
        records += std::string("A1,,,Lathe,,,,5/1/2003,,,,N,PP,MCRS,DB,100,5,5,") + cost +
                   ",0,0,0,0,0,0,0,0,0,0,200,N,N,Y,N,N,N,N,0,N,0\r\n";
    }
    test::WriteAll(company_.Folder / "Aascii.c01", records);
    const auto counts = DosImport(company_.Session, {.Type = "Company"}, control, company_.Prompts);
    ASSERT_TRUE(counts.has_value());
    EXPECT_EQ(counts->Added, 1);
    EXPECT_EQ(counts->Updated, 3);
    EXPECT_EQ(Stored("A1").Basis[4], Units(400));
    EXPECT_EQ(Stored("A1").Basis[1], Units(100));
    company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
    const auto exported = DosExport(company_.Session, {.Book = "Company"}, control, company_.Prompts);
    EXPECT_EQ(CountLines(*exported)[2].Count, 1);
    EXPECT_EQ(test::ReadAll(control).substr(0, 16), "Mills, Sons & Co");
}

std::string DosRecord(const std::string& number, const std::string& account, const std::string& type = "MCRS") {
    return number + ",,,Lathe,," + account + ",,5/1/2003,,,,N,PP," + type +
           ",DB,100,5,5,100,0,0,0,0,0,0,0,0,0,0,200,N,N,Y,N,N,N,N,0,N,0\r\n";
}

TEST_F(DefinitionExchangeTest, ACheckKeepsItsPlaceAfterAFailureAndTriesTheCompanyFile) {
    const std::filesystem::path control = company_.Folder / "assetctl.c01";
    test::WriteAll(control, "Mills\r\n\r\n\r\n" + std::string(300, '9') + "\r\n\r\n\r\n\r\n\r\n\r\nYES\r\n");
    test::WriteAll(company_.Folder / "aascii.c01",
                   DosRecord("A1", "1234567890123") + DosRecord("A2", "15") + DosRecord("A3", "15", "QQ") + "A4,,");
    const auto check =
        DosImport(company_.Session, {.Type = "Company", .Ending = ImportEnding::CheckOnly}, control, company_.Prompts);
    ASSERT_TRUE(check.has_value());
    std::vector<std::string> places;
    for (const ImportRemark& remark : check->Remarks) {
        const std::string text = ImportRemarkText(remark);
        places.push_back(text.substr(0, text.find(':')) + (remark.Fails ? " fails" : ""));
    }
    EXPECT_EQ(places, (std::vector<std::string>{"company file, line 4 fails", "company file, line 10", "record 1, item 6 fails",
                                                "record 3, item 14", "record 4, item 4 fails"}));
    EXPECT_EQ(check->Failing, 3);
    EXPECT_NE(company_.Session.CompanyName(), "Mills");
    EXPECT_EQ(Count(), 0);
}

TEST_F(DefinitionExchangeTest, AllOrNothingIsOfTheCompanyFileToo) {
    const std::string before = company_.Session.CompanyName();
    const std::filesystem::path control = company_.Folder / "assetctl.c01";
    test::WriteAll(control, "Mills\r\n");
    const DosImportOptions options{.Type = "Company", .Ending = ImportEnding::AllOrNothing};
    EXPECT_EQ(test::NumberOf([&] { DosImport(company_.Session, options, control, company_.Prompts); }), 53);
    test::WriteAll(company_.Folder / "aascii.c01", DosRecord("A1", "15") + DosRecord("A1", "1234567890123"));
    EXPECT_EQ(test::NumberOf([&] { DosImport(company_.Session, options, control, company_.Prompts); }), 3163);
    EXPECT_EQ(company_.Session.CompanyName(), before);
    EXPECT_EQ(Count(), 0);
    test::WriteAll(company_.Folder / "aascii.c01", DosRecord("A1", "15"));
    EXPECT_EQ(DosImport(company_.Session, options, control, company_.Prompts)->Added, 1);
    EXPECT_EQ(company_.Session.CompanyName(), "Mills");
}

// The asset form may show one over which an import runs.
TEST_F(DefinitionExchangeTest, AnImportLeavesTheAssetWhereItWas) {
    const auto definition = Definition("2", {{1, "1"}, {6, "2"}});
    Import(definition, "A1,1\nA2,2\n");
    Stored("A2");
    Import(definition, "A0,1\nA3,3\n");
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("AssetNum").ToText(), "A2");
    EXPECT_EQ(test::NumberOf([&] { Import(definition, "A4,1\nA5,1234567890123\n"); }), 3163);
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("AssetNum").ToText(), "A2");
}

TEST_F(DefinitionExchangeTest, ACheckTellsWhatIsTakenOtherwise) {
    const auto definition = Definition("5", {{1, "1"}, {14, "2"}, {31, "3"}, {36, "4"}, {26, "5"}});
    const auto remarks = [&](std::string_view contents) {
        std::vector<std::string> texts;
        for (const auto& remark : Import(definition, contents, false, ImportEnding::CheckOnly).Remarks) {
            texts.push_back(ImportRemarkText(remark));
        }
        return texts;
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(remarks("A1,MCRS,y,4,\nA2,MCRS,Y,Yes,0.00001\n"),
              (Texts{"record 1, item 3: \"y\" is neither Y nor N: taken as No",
                     "record 2, item 4: \"Yes\" is neither Y nor N: taken as No"}));
    Import(definition, "A2,MCRS,Y,N,0.00001\n");
    EXPECT_TRUE(Stored("A2").Sold) << "sold for less than an amount can hold";
    const std::string lathe = "\xD0\xA1";  // a Cyrillic letter in UTF-8
    EXPECT_EQ(remarks("\xEF\xBB\xBF" + lathe + ",MCRS,Y,N,0\n"),
              Texts{"every record: the file has characters that Windows-1252 does not have: each is taken as ?"});
    EXPECT_EQ(remarks(lathe + ",MCRS,Y,N,0\n").front().substr(0, 33), "every record: the file looks like");
    EXPECT_EQ(remarks("\xC9t\xE9,MCRS,Y,N,0\n"), Texts{}) << "Windows-1252";
}

// Reading an asset fills in its code section and pads its texts; the files have them as they are stored.
TEST_F(DefinitionExchangeTest, TextsGoOutAsTheyAreStored) {
    Import(Definition("4", {{1, "1"}, {8, "2"}, {11, "3"}, {17, "4"}}), "A1,5/1/2003,,5\n");
    const std::filesystem::path file = company_.Folder / "out.txt";
    UserExport(company_.Session, Definition("5", {{1, "1"}, {11, "2"}, {33, "3"}, {12, "4"}, {2, "5"}}), {}, file,
               company_.Prompts);
    EXPECT_EQ(test::ReadAll(file), "A1,,,NEW,\r\n");
    DosExport(company_.Session, {}, file, company_.Prompts);
    EXPECT_EQ(test::ReadAll(file).substr(0, 28), "A1,,,,,,5/1/2003,5/1/2003,,,");
}

}  // namespace
}  // namespace tallymar
