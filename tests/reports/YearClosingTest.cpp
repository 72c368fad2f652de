#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "PageGrid.h"
#include "ReportCompany.h"
#include "platform/runtime/PlatformError.h"
#include "support/Child.h"

namespace tallymar::test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

ReportOptions Posting(int book = 1) {
    ReportOptions options = ReportCompany::Options(kPostReport);
    options.Book = book;
    options.UpdateDatabase = true;
    options.PrintInvestments = true;
    options.CheckPrintPY(kPYSold + kPYCasualty + kPYAbandoned + kPYLikeKind);
    return options;
}

std::vector<fs::path> Backups(const ReportCompany& company) {
    std::error_code none;  // the folder comes with the first copy
    const fs::directory_iterator folder(company.Session.Paths().Backup(), none);
    std::vector<fs::path> files(begin(folder), end(folder));
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<AssetRecord> AllOf(CompanySession& session) {
    std::vector<AssetRecord> assets;
    session.AssetsRecordset().SetIndex("AssetNum");
    for (session.AssetsRecordset().MoveFirst(); !session.AssetsRecordset().Eof(); session.AssetsRecordset().MoveNext()) {
        session.ReadAssetRecord(assets.emplace_back());
    }
    return assets;
}

// What a posting may do to an asset, and nothing else.
AssetRecord Posted(AssetRecord asset, int book) {
    asset.PrevDepr[book] += asset.CurrDepr[book];
    asset.CurrDepr[book] = {};
    asset.DateDeprToo[book] = asset.DateDeprToo[book].AddYearsWithinMonth(1);
    return asset;
}

TEST(Posting, MovesOneBookOnByAYearAndLeavesEverythingElse) {
    ReportCompany company;
    FillWithEveryKind(company);
    const std::vector<AssetRecord> before = AllOf(company.Session);
    PageDocument canvas;
    ASSERT_TRUE(company.Print(Posting(2), canvas).Printed);
    const std::vector<AssetRecord> after = AllOf(company.Session);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        AssetRecord expected = Posted(before[i], 2);
        expected.TaxGroup = "      ";  // how an empty group is stored when a row is rewritten
        EXPECT_EQ(after[i], expected) << before[i].AssetNum.View();
    }
    EXPECT_EQ(company.Session.FiscalYearEnd(2), Date::FromYmd(2004, 12, 31));
    for (const int book : {1, 3, 4}) EXPECT_EQ(company.Session.FiscalYearEnd(book), Date::FromYmd(2003, 12, 31));
}

// The printed page is what happened: this year's new previous depreciation is next year's previous.
TEST(Posting, PreviousAndCurrentOfOneYearArePreviousOfTheNext) {
    for (const ReportSequence sequence :
         {ReportSequence::AssetNumber, ReportSequence::MethodLife, ReportSequence::InServiceDate}) {
        ReportCompany company;
        FillWithEveryKind(company);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            ReportOptions options = Posting(book);
            options.Sequence = sequence;
            PageDocument first;
            DetailTable posted;
            ASSERT_TRUE(company.Print(options, first, &posted).Printed);
            options.UpdateDatabase = false;
            PageDocument second;
            DetailTable next;
            ASSERT_TRUE(company.Print(options, second, &next).Printed);
            ASSERT_EQ(posted.RowCount(), 16U);
            ASSERT_EQ(next.RowCount(), posted.RowCount());
            for (std::size_t row = 0; row < posted.RowCount(); ++row) {
                EXPECT_EQ(next.Cell(row, 0), posted.Cell(row, 0));
                EXPECT_EQ(next.Cell(row, 13), posted.Cell(row, 15));          // previous is the new previous
                EXPECT_EQ(next.Cell(row, 14), DetailCell(CurrencyAmount()));  // nothing is current yet
            }
        }
    }
}

TEST(Posting, WithoutUpdateDatabaseChangesNothing) {
    ReportCompany company;
    FillWithEveryKind(company);
    const std::vector<AssetRecord> before = AllOf(company.Session);
    PageDocument canvas;
    ReportOptions options = Posting();
    options.UpdateDatabase = false;
    ASSERT_TRUE(company.Print(options, canvas).Printed);
    EXPECT_EQ(AllOf(company.Session), before);
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2003, 12, 31));
    EXPECT_TRUE(Backups(company).empty());
}

TEST(Posting, AFilterLimitsItButTheYearEndStillMoves) {
    ReportCompany company;
    FillWithEveryKind(company);
    ReportOptions options = Posting();
    options.PrintPYSold = false;
    options.YStart = Date::FromYmd(2000, 1, 1);
    options.YEnd = Date::FromYmd(2001, 12, 31);
    PageDocument canvas;
    ASSERT_TRUE(company.Print(options, canvas).Printed);
    EXPECT_EQ(company.Read("A1").CurrDepr[1], CurrencyAmount());
    EXPECT_EQ(company.Read("B6").CurrDepr[1], Units(6400));  // outside the dates
    EXPECT_EQ(company.Read("B3").DateDeprToo[1], Date());    // sold the year before
    EXPECT_EQ(company.Read("B7").DateDeprToo[1], Date());
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2004, 12, 31));
}

TEST(Posting, DatesKeepWithinTheirMonthAndDateZeroMovesLikeAnother) {
    ReportCompany company;
    company.SetYearEnds(Date::FromYmd(2004, 2, 29));
    AssetRecord asset = Machine("A1", Date::FromYmd(2001, 1, 1), 100);
    asset.DateDeprToo[1] = Date::FromYmd(2004, 2, 29);
    company.Add(asset);
    company.Add(Machine("A2", Date::FromYmd(2001, 1, 1), 100));
    PageDocument canvas;
    ASSERT_TRUE(company.Print(Posting(), canvas).Printed);
    EXPECT_EQ(company.Read("A1").DateDeprToo[1], Date::FromYmd(2005, 2, 28));
    EXPECT_EQ(company.Read("A2").DateDeprToo[1], Date::FromYmd(1900, 12, 30));
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2005, 2, 28));
}

TEST(Posting, KeepsAWholeCopyFromBeforeUnderATellingName) {
    ReportCompany company;
    FillWithEveryKind(company);
    recordset::Recordset& row = company.Session.CompanyRecordset();
    row.Edit();
    row.Set("Company", "Smith / Sons: \"Best\"\xE9");
    row.Update();
    const std::vector<AssetRecord> before = AllOf(company.Session);
    PageDocument canvas;
    const ReportResult first = company.Print(Posting(), canvas);
    EXPECT_EQ(first.Copy.filename().string(), "Smith - Sons- -Best-\xC3\xA9 Federal 2003-12-31 before closing.mdb");
    company.Print(Posting(), canvas);
    row.Edit();
    row.Set("FYEFederal", Date::FromYmd(2003, 12, 31));
    row.Update();
    const ReportResult again = company.Print(Posting(), canvas);
    EXPECT_NE(again.Copy, first.Copy);
    EXPECT_EQ(Backups(company).size(), 3U);

    UserProfile profile;
    ScriptedPrompts prompts;
    CompanySession copy(AppPath::At(company.Folder.Path(), company.Folder / "no-program"), profile);
    copy.OpenCompany(first.Copy, prompts);
    EXPECT_EQ(AllOf(copy), before);
    EXPECT_EQ(copy.FiscalYearEnd(1), Date::FromYmd(2003, 12, 31));
}

TEST(Posting, WithoutACopyAsksAndNoLeavesEverythingAsItWas) {
    ReportCompany company;
    FillWithEveryKind(company);
    fs::remove_all(company.Session.Paths().Backup());
    std::ofstream(company.Session.Paths().Backup()) << "in the way";
    const std::vector<AssetRecord> before = AllOf(company.Session);
    PageDocument canvas;
    company.Prompts.YesNo = {false, true};
    EXPECT_FALSE(company.Print(Posting(), canvas).Printed);
    EXPECT_TRUE(TextsOf(canvas).empty());
    EXPECT_EQ(AllOf(company.Session), before);
    EXPECT_THAT(company.Prompts.Questions.back().Text, HasSubstr("could not be copied"));
    EXPECT_TRUE(company.Print(Posting(), canvas).Printed);
    EXPECT_EQ(company.Read("A1").PrevDepr[1], Units(7120));
}

// Between the question and the posting another program may close the same year.
TEST(Posting, OfAYearThatAnotherProgramHasClosedIsRefused) {
    ReportCompany company;
    FillWithEveryKind(company);
    company.AfterAsking = [&] {
        company.AfterAsking = nullptr;
        UserProfile profile;
        CompanySession other(company.Session.Paths(), profile);
        other.OpenCompany(company.File(), company.Prompts);
        ReportFilter asked{.Options = Posting(), .YearEnd = other.FiscalYearEnd(1), .FilterFrom = {}, .FilterTo = {}};
        PageDocument canvas;
        ReportRun run{
            .Session = other, .Engine = company.Engine, .Asking = company.Prompts, .V = canvas, .Filter = asked, .Now = {}};
        ASSERT_TRUE(PrintReport(run).Printed);
    };
    PageDocument canvas;
    try {
        company.Print(Posting(), canvas);
        FAIL() << "posted twice";
    } catch (const PlatformError& failure) {
        EXPECT_THAT(failure.what(), testing::StartsWith("Another program closed this year"));
    }
    EXPECT_EQ(company.Read("A1").PrevDepr[1], Money("7120"));
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2004, 12, 31));
    EXPECT_EQ(Backups(company).size(), 1U);
}

TEST(Posting, WhoseReportCannotBeWrittenIsTakenBack) {
    ReportCompany company;
    FillWithEveryKind(company);
    const std::vector<AssetRecord> before = AllOf(company.Session);
    company.OnDrawn = [] { throw PlatformError(Failure::DiskFull); };
    PageDocument canvas;
    EXPECT_THROW(company.Print(Posting(), canvas), PlatformError);
    EXPECT_EQ(AllOf(company.Session), before);
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2003, 12, 31));
}

// What was posted before the failure stays, and the failure says so and where the copy is.
TEST(Posting, AFailureHalfwaySaysWhatWasPosted) {
    ReportCompany company;
    for (const char* number : {"A1", "A2", "A3"})
        company.Add(Ledger(number, "1500", "Lathe", Date::FromYmd(2001, 1, 1), "100", "0", "20"));
    AssetRecord broken = company.Read("A2");
    broken.PrevDepr[1] = CurrencyAmount::FromTenThousandths(INT64_MAX);
    company.Session.WriteAssetRecord(broken);
    PageDocument canvas;
    try {
        company.Print(Posting(), canvas);
        FAIL() << "the sum overflows";
    } catch (const PlatformError& failure) {
        EXPECT_THAT(failure.what(), testing::StartsWith("Asset A2"));
        EXPECT_THAT(failure.what(), HasSubstr("have been posted"));
        EXPECT_THAT(failure.what(), HasSubstr(Backups(company).at(0).string()));
    }
    EXPECT_EQ(company.Read("A1").PrevDepr[1], Units(20));
    EXPECT_EQ(company.Read("A3").PrevDepr[1], Units(0));
    EXPECT_EQ(company.Session.FiscalYearEnd(1), Date::FromYmd(2003, 12, 31));
}

// Killed at any moment, the file holds whole postings only: every asset and the year end have moved equally often.
TEST(Posting, KilledAtAnyMomentIsThereWholeOrNotAtAll) {
    constexpr int kAssets = 1500;
    ReportCompany company;
    recordset::RunBatch(company.Session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        for (int i = 0; i < kAssets; ++i) {
            AssetRecord asset = Machine("N" + std::to_string(10000 + i), Date::FromYmd(2001, 1, 1), 100);
            asset.DateDeprToo[1] = Date::FromYmd(2003, 12, 31);
            company.Add(asset);
        }
    });
    company.Session.FileClose();
    using Clock = std::chrono::steady_clock;
    constexpr int kRounds = 24;
    Clock::duration takes{};  // a posting that is left alone: the first one
    int whole = 0;
    int none = 0;
    for (int round = 0; round <= kRounds; ++round) {
        const Clock::time_point start = Clock::now();
        Child child([&] {
            company.Session.OpenCompany(company.File(), company.Prompts);
            PageDocument canvas;
            company.Print(Posting(), canvas);
            return 0;
        });
        ASSERT_NE(round == 0 ? child.Wait() : child.KillAfter(takes * round * 5 / (kRounds * 4)), Child::kThrew);
        if (round == 0) takes = Clock::now() - start;

        company.Session.OpenCompany(company.File(), company.Prompts);
        const Date yearEnd = company.Session.FiscalYearEnd(1);
        const std::vector<AssetRecord> assets = AllOf(company.Session);
        ASSERT_EQ(assets.size(), static_cast<std::size_t>(kAssets));
        for (const AssetRecord& asset : assets) ASSERT_EQ(asset.DateDeprToo[1], yearEnd) << round;
        const int years = yearEnd.Year() - 2003;
        (years > whole ? whole : none) += 1;
        ASSERT_EQ(years, whole);
        company.Session.FileClose();
    }
    EXPECT_GT(none, 0) << "no posting was cut off";
    for (const fs::path& copy : Backups(company)) {
        if (copy.extension() != ".mdb") continue;  // one that was cut off has not taken its name
        UserProfile profile;
        CompanySession session(AppPath::At(company.Folder.Path(), company.Folder / "no-program"), profile);
        session.OpenCompany(copy, company.Prompts);
        EXPECT_EQ(session.AssetCount(), kAssets);
    }
}

}  // namespace
}  // namespace tallymar::test
