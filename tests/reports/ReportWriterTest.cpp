#include "reports/ReportWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PageGrid.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class ReportWriterTest : public testing::Test {
 protected:
    void Money(int index, Justify justify, int width = 12) {
        writer_.ColumnAdd(index, 40, width, justify, true, pictures::kReportMoney, "", "Cost");
    }
    void Set(int index, int units) { writer_.Columns(index).Value = Units(units); }

    // The texts drawn by what is done.
    template <typename Do>
    std::vector<std::string> Drawn(Do&& what) {
        const std::size_t before = TextsOf(canvas_).size();
        what();
        const std::vector<std::string> all = TextsOf(canvas_);
        return {all.begin() + static_cast<std::ptrdiff_t>(before), all.end()};
    }

    PageDocument canvas_;
    ReportWriter writer_{canvas_,
                         {.ReportDate = Date::FromYmd(2004, 1, 15),
                          .YearEnd = Date::FromYmd(2003, 12, 31),
                          .Company = "",
                          .ReportName = " R ",
                          .Book = "Federal",
                          .FilterWords = "For Assets Sold ",
                          .FilterFrom = {},
                          .FilterTo = {},
                          .Division = "",
                          .Department = ""},
                         "Account "};
};

TEST(GridToTwips, RoundsHalvesToEvenAndRefusesWhatDoesNotFit) {
    EXPECT_EQ(GridToTwips(1, 17), 85);
    EXPECT_EQ(GridToTwips(172, 17), 14569);
    EXPECT_EQ(GridToTwips(0.5F, 8), 90);
    EXPECT_EQ(GridToTwips(0.5F, 1440), 0);
    EXPECT_EQ(GridToTwips(1.5F, 1440), 2);
    EXPECT_EQ(GridToTwips(386, 17), 32696);
    EXPECT_THROW(GridToTwips(387, 17), PlatformError);
}

// Too wide an amount loses its leading digits, too wide a text its last
// characters.
TEST_F(ReportWriterTest, ClipsAmountsOnTheLeftAndTextsOnTheRightInDetailLinesOnly) {
    writer_.ColumnAdd(1, 1, 5, Justify::Left, false, "@", "", "");
    Money(2, Justify::Right, 8);
    writer_.Columns(1).Value = std::string("WWWWWWWWWW");
    Set(2, 1234567);
    const std::vector<std::string> detail = Drawn([&] { writer_.PrintColumnDetails(); });
    ASSERT_EQ(detail.size(), 2U);
    EXPECT_THAT(detail[0], testing::MatchesRegex("W+"));
    EXPECT_LT(detail[0].size(), 5U);
    EXPECT_THAT(detail[1], testing::EndsWith("67.00 "));
    EXPECT_LT(detail[1].size(), std::string("1,234,567.00 ").size());
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnTotals(); }), ElementsAre("1,234,567.00 "));
}

TEST_F(ReportWriterTest, ShadowsPrintNothingAndKeepTheirSubtotals) {
    Money(1, Justify::Right);
    Money(2, Justify::Shadow);
    for (int line = 0; line < 3; ++line) {
        Set(1, 100);
        Set(2, -10);
        EXPECT_THAT(Drawn([&] { writer_.PrintColumnDetails(); }), ElementsAre("100.00 "));
    }
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnSubtotals(0, false); }), ElementsAre("300.00 "));
    writer_.Columns(1).Just = Justify::Shadow;
    writer_.Columns(2).Just = Justify::Right;
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnSubtotals(0, false); }), ElementsAre("(30.00)"));
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnSubtotals(0, false); }), ElementsAre("0.00 "));
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnTotals(); }), ElementsAre("(30.00)"));
    EXPECT_EQ(writer_.Columns(1).Total, Units(300));
}

TEST_F(ReportWriterTest, OnlyADetailLineBelowRow56StartsAPage) {
    Money(1, Justify::Right);
    Set(1, 1);
    writer_.PrintColumnHeadings();
    writer_.ReportRow = 56;
    writer_.PrintColumnDetails();
    EXPECT_EQ(canvas_.PageCount(), 1);
    writer_.PrintColumnLines();
    writer_.PrintColumnSubtotals(0, true);
    writer_.ReportRow = 70;
    writer_.PrintColumnTotals();
    EXPECT_EQ(canvas_.PageCount(), 1);
    writer_.ReportRow = 56.5F;
    writer_.PrintColumnDetails();
    EXPECT_EQ(canvas_.PageCount(), 2);
    EXPECT_THAT(TextsOf(canvas_), Contains("Page 2"));
    EXPECT_EQ(writer_.ReportRow, 9);  // five rows of head, a blank one, one heading line, the detail
}

TEST_F(ReportWriterTest, AHeadingLineThatNoColumnUsesTakesNoRow) {
    writer_.ColumnAdd(1, 1, 5, Justify::Left, false, "@", "", "");
    writer_.PrintColumnHeadings();
    EXPECT_EQ(writer_.ReportRow, 7);
    writer_.ColumnAdd(2, 20, 5, Justify::Shadow, false, "@", "Never", "Never");
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnHeadings(); }), Not(Contains("Never")));
    writer_.ColumnAdd(2, 20, 5, Justify::Right, false, "@", "One", "Two");
    writer_.PrintColumnHeadings();
    EXPECT_EQ(writer_.ReportRow, 9);
}

TEST_F(ReportWriterTest, TheFirstKeyMakesNoBreakAndAnEmptyOneLaterDoes) {
    EXPECT_FALSE(writer_.CreateSubTotals(""));
    EXPECT_FALSE(writer_.CreateSubTotals(""));
    EXPECT_TRUE(writer_.CreateSubTotals("1500"));
    Money(2, Justify::Right);
    writer_.ColumnAdd(1, 10, 23, Justify::Left, false, "@", "", "");
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnSubtotals(1, true); }), ElementsAre("Account ", "0.00 "));
    EXPECT_FALSE(writer_.CreateSubTotals("1500"));
    EXPECT_TRUE(writer_.CreateSubTotals(""));
    EXPECT_THAT(Drawn([&] { writer_.PrintColumnSubtotals(1, true); }), Contains("Account 1500"));
}

TEST_F(ReportWriterTest, SumsThatOverflowAndTextsInSummedColumnsEndTheReport) {
    Money(1, Justify::Right);
    writer_.Columns(1).Value = CurrencyAmount::FromTenThousandths(INT64_MAX);
    writer_.PrintColumnDetails();
    EXPECT_THROW(writer_.PrintColumnDetails(), PlatformError);
    writer_.Columns(1).Value = std::string("  ");
    EXPECT_THROW(writer_.PrintColumnDetails(), PlatformError);
}

TEST(DetailRows, AreTheUnclippedTypedCells) {
    PageDocument canvas;
    DetailTable details;
    ReportWriter writer(canvas,
                        {.ReportDate = {},
                         .YearEnd = {},
                         .Company = "",
                         .ReportName = " Fixed ",
                         .Book = "",
                         .FilterWords = "",
                         .FilterFrom = {},
                         .FilterTo = {},
                         .Division = "",
                         .Department = ""},
                        "", &details);
    writer.ColumnAdd(1, 1, 2, Justify::Left, false, "@", "Asset", "Number");
    writer.ColumnAdd(2, 20, 10, Justify::Right, false, pictures::kReportDate, "Date", "Sold");
    writer.ColumnAdd(3, 30, 4, Justify::Right, false, pictures::kDecliningPercent, "", "%");
    writer.ColumnAdd(4, 40, 4, Justify::Right, true, pictures::kReportMoney, "", "Cost");
    writer.ColumnAdd(5, 40, 4, Justify::Shadow, true, pictures::kReportMoney, "", "");
    writer.Columns(1).Value = std::string("LATHE ");
    writer.Columns(2).Value = std::string(10, ' ');
    writer.Columns(3).Value = std::int16_t{200};
    writer.Columns(4).Value = Units(1234567);
    writer.Columns(5).Value = Units(1);
    writer.PrintColumnHeadings();
    writer.PrintColumnDetails();
    writer.PrintColumnHeadings();
    ASSERT_EQ(details.Columns().size(), 4U);
    EXPECT_EQ(details.Columns()[0].Heading, "Asset Number");
    EXPECT_EQ(details.Columns()[2].Kind, DetailKind::Integer);
    ASSERT_EQ(details.RowCount(), 1U);
    EXPECT_EQ(details.Cell(0, 0), DetailCell("LATHE"));
    EXPECT_EQ(details.Cell(0, 1), DetailCell());
    EXPECT_EQ(details.Cell(0, 2), DetailCell(std::int64_t{200}));
    EXPECT_EQ(details.Cell(0, 3), DetailCell(Units(1234567)));
}

}  // namespace
}  // namespace tallymar::test
