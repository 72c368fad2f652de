// Modified ACRS by formula, against the percentage tables that IRS Publication 946 prints in its Appendix A and against cases
// where the rules bite.

#include <gtest/gtest.h>

#include <cmath>

#include "Assets.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;
using test::TestAsset;
using test::YearEnd;

class Mcrs : public testing::Test {
 protected:
    ADepre engine{"no tables"};
};

struct PrintedColumn {
    const char* Table;
    const char* Period;
    int Declining;
    int Month;  // any month of the quarter, for the mid-quarter tables
    bool MidQuarter;
    std::vector<double> Percent;
};

const std::vector<PrintedColumn>& PersonalPropertyColumns() {
    static const std::vector<PrintedColumn> columns = {
        {"A-1", "3", 200, 5, false, {33.33, 44.45, 14.81, 7.41}},
        {"A-1", "5", 200, 1, false, {20.00, 32.00, 19.20, 11.52, 11.52, 5.76}},
        {"A-1", "7", 200, 12, false, {14.29, 24.49, 17.49, 12.49, 8.93, 8.92, 8.93, 4.46}},
        {"A-1", "10", 200, 8, false, {10.00, 18.00, 14.40, 11.52, 9.22, 7.37, 6.55, 6.55, 6.56, 6.55, 3.28}},
        {"A-1",
         "15",
         150,
         8,
         false,
         {5.00, 9.50, 8.55, 7.70, 6.93, 6.23, 5.90, 5.90, 5.91, 5.90, 5.91, 5.90, 5.91, 5.90, 5.91, 2.95}},
        {"A-1", "20", 150, 3, false, {3.750, 7.219, 6.677, 6.177, 5.713, 5.285, 4.888, 4.522, 4.462, 4.461, 4.462,
                                      4.461, 4.462, 4.461, 4.462, 4.461, 4.462, 4.461, 4.462, 4.461, 2.231}},
        {"A-2", "3", 200, 1, true, {58.33, 27.78, 12.35, 1.54}},
        {"A-2", "5", 200, 2, true, {35.00, 26.00, 15.60, 11.01, 11.01, 1.38}},
        {"A-2", "7", 200, 3, true, {25.00, 21.43, 15.31, 10.93, 8.75, 8.74, 8.75, 1.09}},
        {"A-3", "3", 200, 4, true, {41.67, 38.89, 14.14, 5.30}},
        {"A-3", "5", 200, 5, true, {25.00, 30.00, 18.00, 11.37, 11.37, 4.26}},
        {"A-3", "7", 200, 6, true, {17.85, 23.47, 16.76, 11.97, 8.87, 8.87, 8.87, 3.34}},
        {"A-4", "3", 200, 7, true, {25.00, 50.00, 16.67, 8.33}},
        {"A-4", "5", 200, 8, true, {15.00, 34.00, 20.40, 12.24, 11.30, 7.06}},
        {"A-4", "7", 200, 9, true, {10.71, 25.51, 18.22, 13.02, 9.30, 8.85, 8.86, 5.53}},
        {"A-5", "3", 200, 10, true, {8.33, 61.11, 20.37, 10.19}},
        {"A-5", "5", 200, 11, true, {5.00, 38.00, 22.80, 13.68, 10.94, 9.58}},
        {"A-5", "7", 200, 12, true, {3.57, 27.55, 19.68, 14.06, 10.04, 8.73, 8.73, 7.64}},
        {"A-14", "5", 150, 12, false, {15.00, 25.50, 17.85, 16.66, 16.66, 8.33}},
        {"A-14", "7", 150, 12, false, {10.71, 19.13, 15.03, 12.25, 12.25, 12.25, 12.25, 6.13}}};
    return columns;
}

TEST_F(Mcrs, AgreesWithThePrintedTablesOfPersonalProperty) {
    for (const PrintedColumn& column : PersonalPropertyColumns()) {
        SCOPED_TRACE(std::string(column.Table) + ", " + column.Period + " years, month " + std::to_string(column.Month));
        TestAsset asset("PP", kMcrs, kDb, column.Period, "1000000", Day(1995, column.Month, 20));
        asset.Declining(column.Declining).Convention(column.MidQuarter ? "Q" : "Y");
        const int years = static_cast<int>(column.Percent.size());
        const auto amounts = asset.ComputeYears(engine, YearEnd(1995), years, column.MidQuarter);
        for (std::size_t year = 0; year < amounts.size(); ++year) {
            // The printed figures are themselves rounded, each from the balance that rounded ones have left; the last one takes
            // what their roundings come to.
            const double tolerance = year + 1 < amounts.size() ? 0.0101 : 0.0151;
            EXPECT_NEAR(amounts[year].ToDouble() / 10000.0, column.Percent[year], tolerance) << "year " << year + 1;
        }
        EXPECT_EQ(asset.Record.PrevDepr[1], Money("1000000")) << "nothing is left at the end";
    }
}

TEST_F(Mcrs, AgreesWithThePrintedTablesOfRealProperty) {
    struct Column {
        const char* Period;
        std::vector<double> FirstYear;  // by month
        double LaterYears;
        double FirstYearTolerance = 0.0007;
    };
    // The first years of 39 years were printed as odd multiples of the half month's 0.107, itself rounded.
    const Column columns[] = {
        {"27.5", {3.485, 3.182, 2.879, 2.576, 2.273, 1.970, 1.667, 1.364, 1.061, 0.758, 0.455, 0.152}, 3.636},
        {"31.5", {3.042, 2.778, 2.513, 2.249, 1.984, 1.720, 1.455, 1.190, 0.926, 0.661, 0.397, 0.132}, 3.175},
        {"39", {2.461, 2.247, 2.033, 1.819, 1.605, 1.391, 1.177, 0.963, 0.749, 0.535, 0.321, 0.107}, 2.564, 0.0038},
        {"40", {2.396, 2.188, 1.979, 1.771, 1.563, 1.354, 1.146, 0.938, 0.729, 0.521, 0.313, 0.104}, 2.500}};
    for (const Column& column : columns) {
        for (int month = 1; month <= 12; ++month) {
            SCOPED_TRACE(std::string(column.Period) + " years, month " + std::to_string(month));
            TestAsset asset("RL", kMcrs, kSl, column.Period, "1000000", Day(1995, month, 3));
            const auto amounts = asset.ComputeYears(engine, YearEnd(1995), 42);
            EXPECT_EQ(asset.Record.IRSConvUsed[1], "M");
            EXPECT_NEAR(amounts[0].ToDouble() / 10000.0, column.FirstYear[static_cast<std::size_t>(month - 1)],
                        column.FirstYearTolerance);
            for (std::size_t year = 1; year < 26; ++year) {
                EXPECT_NEAR(amounts[year].ToDouble() / 10000.0, column.LaterYears, 0.0011);
            }
            EXPECT_EQ(asset.Record.PrevDepr[1], Money("1000000"));
        }
    }
}

}  // namespace
}  // namespace tallymar
