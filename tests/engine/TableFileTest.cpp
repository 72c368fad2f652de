// The table computation, its files, and the tables that are delivered.

#include <gtest/gtest.h>

#include <cmath>

#include "Assets.h"
#include "engine/DepreciationTableFile.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using test::Day;
using test::kDeliveredTables;
using test::Money;
using test::TestAsset;
using test::YearEnd;

// Two years: month m has m percent in the first and 100 - m in the second.
std::string TwoYearTable() {
    std::string text = "1,\"a, b\",c,d,\"e\"\r\n";
    for (int month = 1; month <= 12; ++month) text += std::to_string(month) + ".25," + std::to_string(100 - month) + "\r\n";
    return text;
}

class TableFile : public testing::Test {
 protected:
    test::TempFolder folder;
    ADepre engine{folder.Path()};

    void Write(const std::string& name, const std::string& contents) { test::WriteAll(folder / name, contents); }
    static TestAsset Asset() { return TestAsset("PP", kMacs, kDb, "5", "1000", Day(2000, 3, 1)).Convention("Y"); }

    std::optional<Failure> FailureOf(const std::string& contents, int year = 2000) {
        Write("MACSDB05.DPP", contents);
        engine.BeginRun("False");
        TestAsset asset = Asset();
        const AssetRecord before = asset.Record;
        const auto failure = test::FailureOf([&] { asset.Compute(engine, YearEnd(year)); });
        EXPECT_EQ(asset.Record, before);
        return failure;
    }
};

TEST_F(TableFile, Names) {
    for (const auto& [period, name] : {std::pair{"5", "MACSSL05.DRL"},
                                       {"27.5", "MACSSL28.DRL"},
                                       {"31.5", "MACSSL32.DRL"},
                                       {"39.4999", "MACSSL39.DRL"},
                                       {"100", "MACSSL100.DRL"}}) {
        EXPECT_EQ(DepreciationTableFile::NameFor("MACS", "SL", Money(period), "RL"), name);
    }
}

TEST_F(TableFile, TakesTheMonthsRowAndTheYearsColumn) {
    TestAsset asset = Asset();
    EXPECT_EQ(asset.Compute(engine, YearEnd(2000)), Money("0"));
    EXPECT_EQ(engine.DeprStatusText(), "< ERROR - Deprec. Table NOT Found");
    EXPECT_EQ(engine.MissingTable(), "MACSDB05.DPP");
    Write("MACSDB05.DPP", TwoYearTable());
    engine.BeginRun("False");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2000)), Money("32.50"));
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("970"));
    EXPECT_EQ(asset.Compute(engine, YearEnd(2002)), Money("0")) << "after the file's last year";
    EXPECT_EQ(asset.Compute(engine, Day(2000, 6, 30)), Money("92.50")) << "March is month 9 of a year to June";
    asset.Record.Basis[1] = Money("0.20");  // 3.25% is 0.65 cents
    EXPECT_EQ(asset.Compute(engine, YearEnd(2000)), Money("0.01"));
}

TEST_F(TableFile, IsFoundInSmallLettersAndReadOnceARun) {
    Write("macsdb05.dpp", TwoYearTable());
    TestAsset asset = Asset();
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("970"));
    std::string changed = TwoYearTable();
    changed.replace(changed.find("3.25,97"), 7, "3.25,50");
    Write("macsdb05.dpp", changed);
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("970"));
    engine.BeginRun("False");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("500"));
}

TEST_F(TableFile, Disposal) {
    Write("MACSDB05.DPP", TwoYearTable());
    const auto sale = [this](std::string_view convention, std::string_view classLife) {
        TestAsset asset = Asset().Convention(convention).SoldOn(Day(2001, 7, 1));
        asset.Record.ClassLife = Money(classLife);
        const CurrencyAmount amount = asset.Compute(engine, YearEnd(2001));
        EXPECT_EQ(engine.DeprStatusCode(), 51);
        return amount;
    };
    EXPECT_EQ(sale("Y", "15"), Money("485"));  // 6 of 12 months of 970
    EXPECT_EQ(sale("Y", "14.9"), Money("970"));
    EXPECT_EQ(sale("Y", "15.1"), Money("525.42"));  // 6.5 months
    EXPECT_EQ(sale("M", "15"), Money("565.83"));    // 7 months
}

TEST_F(TableFile, DamageStopsTheRun) {
    const std::string table = TwoYearTable();
    for (const std::string& cut : {std::string(), std::string("1,a,b,c"), table.substr(0, table.rfind("12.25"))}) {
        EXPECT_EQ(FailureOf(cut), Failure::InputPastEnd) << cut;
    }
    for (const char* years : {"one", "1.5", "-1"}) EXPECT_EQ(FailureOf(years + table.substr(1)), Failure::TypeMismatch) << years;
    std::string damaged = table;
    damaged.replace(damaged.find("7.25"), 4, "7.2S");
    EXPECT_EQ(FailureOf(damaged), Failure::TypeMismatch) << "a damaged figure is no zero percent";
    for (const char* figure : {"100.0001", "-0.01", "725"}) {
        damaged = table;
        damaged.replace(damaged.find("7.25"), 4, figure);
        EXPECT_EQ(FailureOf(damaged), Failure::TypeMismatch) << figure;
    }
    EXPECT_EQ(FailureOf("50" + table.substr(1)), Failure::SubscriptOutOfRange);
    EXPECT_EQ(FailureOf(table, 2050), Failure::SubscriptOutOfRange) << "the 51st year of life";
    TestAsset fiftieth = Asset();
    EXPECT_EQ(fiftieth.Compute(engine, YearEnd(2049)), Money("0"));
}

// ---------------------------------------------------------------- the delivered set

std::vector<std::filesystem::path> DeliveredFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(kDeliveredTables)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".DPP" || extension == ".DRL") files.push_back(entry.path());
    }
    return files;
}

TEST(DeliveredTables, EachMonthComesToOneHundredPercent) {
    const auto files = DeliveredFiles();
    EXPECT_EQ(files.size(), 99U);
    for (const auto& path : files) {
        const DepreciationTableFile table(path);
        for (int month = 1; month <= 12; ++month) {
            CurrencyAmount sum;
            for (int year = 1; year <= 50; ++year) sum += table.Percentage(month, year);
            EXPECT_EQ(sum, Units(100)) << path.filename() << ", month " << month;
        }
    }
}

// The general rule in double over unrounded balances: no printed figure may be off by more than its own roundings.
void ExpectHalfYearRule(const std::string& name, double life, double declining, double tolerance) {
    const DepreciationTableFile table(kDeliveredTables / name);
    double left = 100.0;
    for (int year = 1; year <= static_cast<int>(life) + 1; ++year) {
        double figure = std::max(left * declining / 100.0 / life, left / (life - year + 1.5));
        if (year == 1) figure = 100.0 / life * std::max(declining, 100.0) / 200.0;
        if (year > life) figure = left;
        for (const int month : {1, 6, 12}) {
            EXPECT_NEAR(table.Percentage(month, year).ToDouble(), figure, tolerance) << name << ", year " << year;
        }
        left -= figure;
    }
}

TEST(DeliveredTables, FollowTheRuleOfTheirConvention) {
    struct Table {
        const char* Name;
        double Life, Declining, Tolerance = 0.0101;
    };
    const Table halfYear[] = {{"MACSDB03.DPP", 3, 200},
                              {"MACSDB05.DPP", 5, 200},
                              {"MACSDB07.DPP", 7, 200},
                              {"MACSDB10.DPP", 10, 200},
                              {"MACSDB12.DPP", 12, 150},
                              {"MACSDB15.DPP", 15, 150},
                              {"MACSDB15.DRL", 15, 150},
                              {"MACSSL05.DPP", 5, 0},
                              {"MACSSL12.DPP", 12, 0},
                              {"ACRSSL05.DPP", 5, 0},
                              {"ACAMSL15.DPP", 15, 0},
                              {"MACSDB20.DPP", 20, 150, 0.00101},
                              {"MACSDB28.DPP", 28, 150, 0.00101},
                              {"MACSDB45.DPP", 45, 150, 0.00101},
                              {"MACSSL22.DPP", 22, 0, 0.00101},
                              {"MACSSL40.DPP", 40, 0, 0.00101}};
    for (const Table& t : halfYear) ExpectHalfYearRule(t.Name, t.Life, t.Declining, t.Tolerance);
    const std::vector<std::tuple<std::string, double, double>> midMonth = {{"MACSSL28.DRL", 27.5, 0.00101},
                                                                           {"MACSSL32.DRL", 31.5, 0.00101},
                                                                           {"MACSSL39.DRL", 39.0, 0.0038},
                                                                           {"MACSSL40.DRL", 40.0, 0.00101},
                                                                           {"ACRSSL19.DRL", 19.0, 0.101}};
    for (const auto& [name, life, tolerance] : midMonth) {
        const DepreciationTableFile table(kDeliveredTables / name);
        for (int month = 1; month <= 12; ++month) {
            double left = 100.0;
            for (int year = 1; year <= 42; ++year) {
                const double figure = std::min(left, 100.0 / life * (year == 1 ? (12.5 - month) / 12.0 : 1.0));
                // What the roundings of the years before have left falls into the last ones.
                const double slack = left - figure < 100.0 / life ? 30.0 * tolerance : tolerance;
                EXPECT_NEAR(table.Percentage(month, year).ToDouble(), figure, slack)
                    << name << ", " << month << ", year " << year;
                left -= figure;
            }
        }
    }
}

// Accelerated tables of ACRS real property by the rule of their percentages: 175% (low-income housing 200%) declining balance,
// whole months (19 years: the middle of the month), then straight line.
TEST(DeliveredTables, AcceleratedRealPropertyFollowsItsRule) {
    struct Table {
        const char* Name;
        double Life, Declining, FirstMonthPart, Tolerance;
    };
    for (const Table& t : {Table{"ACRSAC15.DRL", 15, 175, 1.0, 1.0}, Table{"ACRSLH15.DRL", 15, 200, 1.0, 1.0},
                           Table{"ACRSAC19.DRL", 19, 175, 0.5, 0.11}}) {
        const DepreciationTableFile table(kDeliveredTables / t.Name);
        for (int month = 1; month <= 12; ++month) {
            double left = 100.0;
            double yearsLeft = t.Life;
            for (int year = 1; year <= static_cast<int>(t.Life); ++year) {
                const double part = year == 1 ? (12.0 - month + t.FirstMonthPart) / 12.0 : 1.0;
                const double figure = std::max(left * t.Declining / 100.0 / t.Life, left / yearsLeft) * part;
                EXPECT_NEAR(table.Percentage(month, year).ToDouble(), figure, t.Tolerance)
                    << t.Name << ", " << month << ", " << year;
                if (year > 2) {
                    EXPECT_LE(table.Percentage(month, year), table.Percentage(month, year - 1))
                        << t.Name << ", " << month << ", " << year;
                }
                left -= figure;
                yearsLeft -= part;
            }
        }
    }
}

}  // namespace
}  // namespace tallymar
