#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assets/AssetEditSession.h"
#include "assets/DeprBuild.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Machine;

CurrencyAmount Amount(const char* text) {
    return CurrencyAmount::Parse(text).value();
}

TEST(DeprBuild, TheFirstYearEndIsOnOrAfterTheDayInService) {
    const Date june = Date::FromYmd(2003, 6, 30);
    const Date december = Date::FromYmd(2003, 12, 31);
    EXPECT_EQ(FirstYearEnd(Date::FromYmd(2000, 6, 30), june), Date::FromYmd(2000, 6, 30));
    EXPECT_EQ(FirstYearEnd(Date::FromYmd(2000, 7, 1), june), Date::FromYmd(2001, 6, 30));
    EXPECT_EQ(FirstYearEnd(Date::FromYmd(2000, 5, 31), june), Date::FromYmd(2000, 6, 30));
    EXPECT_EQ(FirstYearEnd(Date::FromYmd(2000, 6, 29), Date::FromYmd(2003, 6, 15)), Date::FromYmd(2001, 6, 15));
    EXPECT_EQ(FirstYearEnd(Date::FromYmd(2000, 12, 31), december), Date::FromYmd(2000, 12, 31));
    EXPECT_EQ(FirstYearEnd(Date(), december), Date::FromYmd(1899, 12, 31));
    EXPECT_THROW(FirstYearEnd(Date::FromYmd(2000, 3, 1), Date::FromYmd(2004, 2, 29)), PlatformError);
    EXPECT_FALSE(CanBuild(Date()));
    EXPECT_FALSE(CanBuild(Date::FromYmd(1900, 1, 1)));
}

class DeprBuildTest : public testing::Test {
 protected:
    void Add(const AssetRecord& record) {
        company_.Session.AddAssetRecord(record);
        company_.Session.AssetsRecordset().MoveFirst();
        edit_.Open();
    }

    AssetRecord Stored() {
        AssetRecord record;
        company_.Session.AssetsRecordset().MoveFirst();
        company_.Session.ReadAssetRecord(record);
        return record;
    }

    test::TestCompany company_;
    ADepre engine_{company_.Folder.Path()};
    AssetEditState state_;
    AssetEditSession edit_{company_.Session, state_, company_.Prompts};
    DeprBuildGrid grid_;
};

// Five-year property of 10,000 by the half-year convention: 20, 32, 19.2, 11.52 percent.
TEST_F(DeprBuildTest, YearsAddUpAndAreSavedOnYesAlone) {
    company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
    Add(Machine("A1", Date::FromYmd(2000, 5, 1), 10000));
    edit_.Values.Description = "saved before the build";
    ASSERT_TRUE(edit_.Build(engine_, grid_));
    ASSERT_EQ(grid_.Rows().size(), 4u);
    EXPECT_EQ(grid_.BuildRow(), 6);
    const char* const previous[] = {"0", "2000", "5200", "7120"};
    const char* const current[] = {"2000", "3200", "1920", "1152"};
    for (std::size_t year = 0; year < 4; ++year) {
        EXPECT_EQ(grid_.Rows()[year].YearEnding, Date::FromYmd(2000 + static_cast<int>(year), 12, 31));
        EXPECT_EQ(grid_.Rows()[year].PrevDepr[4], Amount(previous[year]));
        EXPECT_EQ(grid_.Rows()[year].CurrDepr[4], Amount(current[year]));
    }
    EXPECT_EQ(grid_.TabSeparated(1, 0, 3, 2),
              "Year Ending\tPrevious\tCurrent\n12/31/2000\t0.00\t2,000.00\n12/31/2001\t2,000.00\t3,200.00\n");
    EXPECT_EQ(grid_.Cell(0, 0) + grid_.Cell(0, 1) + grid_.Cell(0, 8), "FederalAMT");

    edit_.FinishBuild(true);
    EXPECT_EQ(Stored().CurrDepr[1], CurrencyAmount());
    EXPECT_EQ(Stored().Description, "saved before the build");
    edit_.Build(engine_, grid_);
    edit_.FinishBuild(false);
    EXPECT_EQ(Stored().CurrDepr[1], Units(1152));
    EXPECT_EQ(Stored().PrevDepr[3], Units(7120));
    EXPECT_EQ(Stored().DateDeprToo[2], Date::FromYmd(2002, 12, 31));
    EXPECT_EQ(Stored().YearThru[2], 3);
    EXPECT_EQ(edit_.Values.Book[3].PrevDepr, Units(7120)) << "and shown";
}

TEST_F(DeprBuildTest, AdditionalDepreciationIsTakenFromTheSecondYearOn) {
    company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
    AssetRecord record = Machine("A1", Date::FromYmd(2002, 5, 1), 10000);
    for (int book = kFirstBook; book <= kLastBook; ++book) record.ADPct[book] = Units(30);
    Add(record);
    ASSERT_TRUE(edit_.Build(engine_, grid_));
    ASSERT_EQ(grid_.Rows().size(), 2u);
    EXPECT_EQ(grid_.Rows()[0].PrevDepr[1], CurrencyAmount());
    EXPECT_EQ(grid_.Rows()[0].CurrDepr[1], Units(1400));
    EXPECT_EQ(grid_.Rows()[1].PrevDepr[1], Units(4400));
}

TEST_F(DeprBuildTest, EdgesOfTheYears) {
    Add(Machine("A1", Date::FromYmd(2004, 5, 1), 10000));
    EXPECT_FALSE(edit_.Build(engine_, grid_));
    EXPECT_EQ(company_.Prompts.Messages.back().Text, "Company fiscal year end dates\nhave not been set up properly");

    company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
    edit_.Values.Book[1].PrevDepr = Units(77);
    ASSERT_TRUE(edit_.Build(engine_, grid_));
    EXPECT_EQ(grid_.RowCount(), DeprBuildGrid::kFixedRows) << "not in service yet";
    edit_.FinishBuild(false);
    EXPECT_EQ(Stored().YearThru[1], -1);
    EXPECT_EQ(Stored().PrevDepr[1], CurrencyAmount());

    // Without a day in service the years are counted from 1899.
    edit_.Values.InService.clear();
    ASSERT_TRUE(edit_.Build(engine_, grid_));
    EXPECT_EQ(grid_.Rows().size(), 105u);

    company_.SetYearEnds(Date::FromYmd(2004, 2, 29));
    const AssetRecord before = edit_.EditRecord();
    EXPECT_THROW(edit_.Build(engine_, grid_), PlatformError) << "1900 has no February 29";
    EXPECT_EQ(edit_.EditRecord().PrevDepr, before.PrevDepr);
}

}  // namespace
}  // namespace tallymar
