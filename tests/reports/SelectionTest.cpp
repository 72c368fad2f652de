#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/Disposal.h"

#include "PageGrid.h"
#include "ReportCompany.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::test {
namespace {

using testing::Contains;
using testing::Not;

AssetRecord Plain() {
    return Ledger("A1", "1500", "Lathe", Date::FromYmd(2001, 3, 1), "1000", "0", "0");
}

ReportFilter Filter(int report = kFixedAssetReport) {
    return {.Options = ReportCompany::Options(report), .YearEnd = Date::FromYmd(2003, 12, 31), .FilterFrom = {}, .FilterTo = {}};
}

bool Selects(const ReportFilter& filter, const AssetRecord& asset) {
    return filter.SelectFilter(asset, FilterMode::InService);
}

TEST(SelectFilter, DepartmentIsComparedWithTheDivision) {
    AssetRecord asset = Plain();
    asset.Division = "NORTH";
    asset.Department = "SHOP";
    ReportFilter filter = Filter();
    filter.Options.Department = "SHOP";
    EXPECT_FALSE(Selects(filter, asset));
    filter.Options.Department = "NORTH";
    EXPECT_TRUE(Selects(filter, asset));
    filter.Options.Division = "NORTH";
    EXPECT_TRUE(Selects(filter, asset));
    filter.Options.Division = "north";
    EXPECT_FALSE(Selects(filter, asset));
    filter.Options.Division.clear();
    filter.Options.CodeSection = "1245";
    EXPECT_FALSE(Selects(filter, asset));
    asset.CodeSection = "1245  ";
    EXPECT_TRUE(Selects(filter, asset));
}

// What was disposed of in an earlier fiscal year is printed only by its own check; Notice 2000-4 alone never drops an asset.
TEST(SelectFilter, DisposalsOfEarlierYearsAskForTheirCheck) {
    struct Case {
        bool AssetRecord::*Flag;
        bool ReportOptions::*Check;
    };
    const Case cases[] = {{&AssetRecord::Sold, &ReportOptions::PrintPYSold},
                          {&AssetRecord::Abandoned, &ReportOptions::PrintPYAbandoned},
                          {&AssetRecord::LikeKind, &ReportOptions::PrintPYLikeKind},
                          {&AssetRecord::Casualty, &ReportOptions::PrintPYCasualty}};
    for (const Case& kind : cases) {
        AssetRecord asset = Plain();
        asset.*kind.Flag = true;
        ReportFilter filter = Filter();
        asset.DateSold = Date::FromYmd(2003, 1, 1);
        EXPECT_TRUE(Selects(filter, asset));
        asset.DateSold = Date::FromYmd(2004, 1, 1);  // after the year end: it counts as no year
        EXPECT_TRUE(Selects(filter, asset));
        asset.DateSold = Date::FromYmd(2002, 12, 31);
        EXPECT_FALSE(Selects(filter, asset));
        filter.Options.*kind.Check = true;
        EXPECT_TRUE(Selects(filter, asset));
    }
    AssetRecord notice = Plain();
    notice.Notice4 = true;
    notice.DateSold = Date::FromYmd(1990, 1, 1);
    EXPECT_TRUE(Selects(Filter(), notice));
}

TEST(SelectFilter, TheDateFilterIsInclusiveAndTakesTheDateOfItsMode) {
    AssetRecord asset = Plain();
    asset.DateSold = Date::FromYmd(2003, 5, 5);
    ReportFilter filter = Filter();
    filter.FilterFrom = filter.FilterTo = asset.InService;
    EXPECT_TRUE(filter.SelectFilter(asset, FilterMode::InService));
    EXPECT_FALSE(filter.SelectFilter(asset, FilterMode::DateSold));
    filter.FilterFrom = filter.FilterTo = asset.DateSold;
    EXPECT_FALSE(filter.SelectFilter(asset, FilterMode::InService));
    EXPECT_TRUE(filter.SelectFilter(asset, FilterMode::DateSold));
}

TEST(SelectFilter, CurrentDepreciationNeverShowsInvestments) {
    AssetRecord asset = Plain();
    for (const std::int16_t type : {std::int16_t{kStck}, std::int16_t{kColl}}) {
        asset.DeprType[1] = type;
        for (const int report : {kFixedAssetReport, kCurrentDepreciationReport}) {
            ReportFilter filter = Filter(report);
            EXPECT_FALSE(Selects(filter, asset));
            filter.Options.PrintInvestments = true;
            EXPECT_EQ(Selects(filter, asset), report == kFixedAssetReport);
        }
    }
    ReportFilter state = Filter();
    state.Options.Book = 2;  // the type of the book reported decides
    EXPECT_TRUE(Selects(state, asset));
}

TEST(FiscalYearKey, IsTheYearThatTheFiscalYearBeginsIn) {
    const Date june = Date::FromYmd(2006, 6, 30);
    EXPECT_EQ(FiscalYearKey(Date::FromYmd(2006, 3, 15), june), "2005");
    EXPECT_EQ(FiscalYearKey(Date::FromYmd(2005, 9, 1), june), "2005");
    EXPECT_EQ(FiscalYearKey(Date::FromYmd(2006, 6, 30), june), "2005");
    EXPECT_EQ(FiscalYearKey(Date::FromYmd(2006, 7, 1), june), "2006");
    EXPECT_EQ(FiscalYearKey(Date::FromYmd(2005, 12, 31), Date::FromYmd(2006, 12, 31)), "2005");
}

TEST(SubtotalKey, SaysTheGroupOfEachSequence) {
    AssetRecord asset = Plain();
    asset.ClassLife = Money("12.5");
    asset.TaxGroup = "AUTO  ";
    ReportOptions options = ReportCompany::Options(kFixedAssetReport);
    const auto key = [&](ReportSequence sequence) {
        options.Sequence = sequence;
        return SubtotalKey(asset, options, Date::FromYmd(2003, 12, 31));
    };
    EXPECT_EQ(key(ReportSequence::ClassLife), "12.5 2001");
    EXPECT_EQ(key(ReportSequence::GLAccount), "1500");
    EXPECT_EQ(key(ReportSequence::MethodLife), "5.0 MCRS 200 DB");
    EXPECT_EQ(key(ReportSequence::PropertyGroup), "AUTO");
    options.GroupAndYear = true;
    EXPECT_EQ(key(ReportSequence::PropertyGroup), "AUTO 2001");
    asset.DBPercent[1] = 0;
    EXPECT_EQ(key(ReportSequence::MethodLife), "5.0 MCRS  DB");
}

TEST(CheckReportOptions, RefusesInItsOrderAndSaysWhy) {
    ReportCompany company;
    ReportOptions options = ReportCompany::Options(kFixedAssetReport);
    options.YStart = Date::FromYmd(2003, 1, 1);
    options.Sequence = ReportSequence::PropertyGroup;
    company.SetYearEnds(Date());
    EXPECT_FALSE(CheckReportOptions(company.Session, options, company.Prompts));
    ASSERT_EQ(company.Prompts.Messages.size(), 1U);
    EXPECT_EQ(company.Prompts.Messages.back().Text,
              "Invalid fiscal year-end date for selected book\nPlease use company setup options");

    company.SetYearEnds(Date::FromYmd(2003, 12, 31));
    EXPECT_FALSE(CheckReportOptions(company.Session, options, company.Prompts));
    EXPECT_EQ(company.Prompts.Messages.back().Text, "You must enter Both dates or leave both dates blank");
    EXPECT_TRUE(company.Prompts.Questions.empty());

    options.YStart.reset();
    company.Prompts.YesNo = {true};
    const auto filter = CheckReportOptions(company.Session, options, company.Prompts);
    ASSERT_TRUE(filter);
    EXPECT_EQ(company.Prompts.Questions.back().Text, "Print subtotals by Group and Year ");
    EXPECT_EQ(company.Prompts.Questions.back().Title, "Subtotals by Group or Group & Year");
    EXPECT_TRUE(filter->Options.GroupAndYear.value());
}

TEST(ReportOfNothing, PrintsItsHeadAndZeroTotals) {
    ReportCompany company;
    for (int report = 0; report < kReports; ++report) {
        PageDocument canvas;
        ReportOptions options = ReportCompany::Options(report);
        options.Sequence = ReportSequence::GLAccount;
        ASSERT_TRUE(company.Print(options, canvas).Printed);
        const std::vector<std::string> texts = TextsOf(canvas);
        EXPECT_EQ(canvas.PageCount(), 1);
        EXPECT_THAT(texts, Contains(ReportCaption(report, options.Book)));
        EXPECT_THAT(texts, Contains("Account "));  // the last group's block, without a group
        EXPECT_THAT(texts, Contains("Report Total"));
    }
}

TEST(ReportRunEnds, WithTheAssetsInNumberOrderEvenAfterAFailure) {
    ReportCompany company;
    company.Add(Plain());
    AssetRecord broken = Plain();
    broken.AssetNum = "A2";
    broken.Basis[1] = CurrencyAmount::FromTenThousandths(INT64_MAX);
    company.Add(broken);
    ReportOptions options = ReportCompany::Options(kFixedAssetReport);
    options.Sequence = ReportSequence::InServiceDate;
    PageDocument canvas;
    try {
        company.Print(options, canvas);
        FAIL() << "the sum overflows";
    } catch (const PlatformError& failure) {
        EXPECT_EQ(failure.Code(), Failure::Overflow);
        EXPECT_THAT(failure.what(), testing::StartsWith("Asset A2"));
    }
    EXPECT_EQ(company.Session.AssetsRecordset().Index(), "AssetNum");
}

// The expense limits: a year of 2003 fails the row of $100,000 and then meets the row for years after 2001.
TEST(Section179Warning, FirstExceededRowWins) {
    struct Case {
        int Year;
        const char* Expense;
        const char* PostLimit;  // nullptr: no warning
        const char* CurrentLimit;
    };
    const Case cases[] = {
        {2003, "30000", "$24,000", "$25,000"},        {2003, "24000", "$20,000", "$20,000"},
        {2003, "100000.0001", "$100,000", "$25,000"}, {1986, "5000", nullptr, nullptr},
        {1986, "5000.0001", "$5,000", "$5,000"},      {1992, "10000.01", "$10,000", nullptr},
        {1993, "17500.01", "$17,500", "$17,500"},     {1993, "17500", nullptr, nullptr},
        {1999, "18600", "$18,500", "$18,500"},
    };
    ReportCompany company;
    company.Add(Plain());
    for (const Case& limit : cases) {
        for (const int report : {kPostReport, kCurrentDepreciationReport}) {
            company.SetYearEnds(Date::FromYmd(limit.Year, 12, 31));
            AssetRecord asset = Ledger("A1", "1500", "Lathe", Date::FromYmd(limit.Year, 3, 1), "200000", "0", "0");
            SetInEveryBook(asset.Section179, limit.Expense);
            company.Read("A1");  // moves to the row
            company.Session.WriteAssetRecord(asset);
            PageDocument canvas;
            company.Print(ReportCompany::Options(report), canvas);
            const char* expected = report == kPostReport ? limit.PostLimit : limit.CurrentLimit;
            if (expected == nullptr) {
                EXPECT_THAT(TextsOf(canvas), Not(Contains(testing::HasSubstr("WARNING")))) << limit.Year << ' ' << limit.Expense;
            } else {
                EXPECT_EQ(TextsOf(canvas).back(),
                          "*** WARNING - Current Year 179 Expense EXCEEDS " + std::string(expected) + " ***\r\n");
            }
        }
    }
}

TEST(Projection, TellsForEveryAssetThatTheFederalYearEndIsMissing) {
    ReportCompany company;
    company.Add(Plain());
    AssetRecord second = Plain();
    second.AssetNum = "A2";
    company.Add(second);
    recordset::Recordset& row = company.Session.CompanyRecordset();
    row.Edit();
    row.Set("FYEFederal", Date());
    row.Update();
    ReportOptions options = ReportCompany::Options(kFourYearReport);
    options.Book = 2;
    const AssetRecord before = company.Read("A1");
    PageDocument canvas;
    ASSERT_TRUE(company.Print(options, canvas).Printed);
    ASSERT_EQ(company.Prompts.Messages.size(), 2U);
    EXPECT_EQ(company.Prompts.Messages[0].Text, "Company fiscal year end dates\nhave not been set up properly");
    EXPECT_EQ(company.Read("A1"), before);
}

// The headings add flat days: a year end of January 1 of a leap year reaches the last day of the same year.
TEST(Projection, HeadingsAddFlatDays) {
    EXPECT_EQ(ExpandHeading("FYE {yyyy+365}", Date::FromYmd(2004, 1, 1), 1), "FYE 2004");
    EXPECT_EQ(ExpandHeading("FYE {mm/dd/yy}", Date::FromYmd(2004, 1, 1), 1), "FYE 01/01/04");
    EXPECT_EQ(ExpandHeading("{book} Current", Date(), 1), "Fed Current");
    EXPECT_EQ(ExpandHeading("{book} Current", Date(), 3), "Book Current");
}

}  // namespace
}  // namespace tallymar::test
