#include <fstream>

#include <gtest/gtest.h>

#include "law/Law.h"
#include "platform/runtime/PlatformError.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using test::TempFolder;

const std::filesystem::path kDelivered = std::filesystem::path(TALLYMAR_SOURCE_DIR) / "data";

Date Day(int year, int month, int day) {
    return Date::FromYmd(year, month, day);
}

void Write(const std::filesystem::path& file, const std::string& contents) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << contents;
}

std::vector<std::string> Faults(const std::string& contents) {
    Law law;
    std::vector<LawFault> faults;
    ReadLawText(contents, "own.txt", law, faults);
    std::vector<std::string> messages;
    for (const LawFault& fault : faults) messages.push_back(fault.Message());
    return messages;
}

TEST(DeliveredLaw, LeavesNoDayOfItsYearsOutAndHoldsNoneTwice) {
    const Law law = ReadLaw({{kDelivered}});
    for (const LawFault& gap : GapsOf(law)) ADD_FAILURE() << gap.Message();
    for (Date day = Day(1987, 1, 1); day <= Day(2026, 12, 31); day = day.AddDays(1)) {
        ASSERT_NE(law.Section179(day.Year()), nullptr) << day.Year();
        for (const Date acquired : {day, day.AddDays(-400), Day(1980, 1, 1)}) {
            ASSERT_NE(law.Allowance(acquired, day), nullptr) << day.Serial();
            ASSERT_NE(law.Automobile(VehicleKind::Truck, acquired, day), nullptr) << day.Serial();
        }
    }
    EXPECT_EQ(law.FirstLimitedDay(), Day(1987, 1, 1));
}

// Figures as the publications named print them, at the edges of what they hold for.
TEST(DeliveredLaw, HoldsThePublishedFigures) {
    const Law law = ReadLaw({{kDelivered}});
    struct Expense {
        int Year, Limit, Threshold;
    };
    for (const Expense& row : {Expense{1992, 10000, 200000},
                               {1993, 17500, 200000},
                               {2002, 24000, 200000},
                               {2003, 100000, 400000},
                               {2007, 125000, 500000},
                               {2009, 250000, 800000},
                               {2010, 500000, 2000000},
                               {2017, 510000, 2030000},
                               {2018, 1000000, 2500000},
                               {2024, 1220000, 3050000},
                               {2025, 2500000, 4000000}}) {
        EXPECT_EQ(law.Section179(row.Year)->Limit, row.Limit) << row.Year;
        EXPECT_EQ(law.Section179(row.Year)->Threshold, row.Threshold) << row.Year;
    }
    struct Allowance {
        Date InService, Acquired;
        int Percent;
    };
    for (const Allowance& row : {Allowance{Day(2001, 9, 10), Day(2001, 9, 10), 0},
                                 {Day(2001, 9, 11), Day(2001, 9, 11), 30},
                                 {Day(2001, 12, 1), Day(2001, 9, 10), 0},
                                 {Day(2003, 5, 6), Day(2003, 5, 5), 30},
                                 {Day(2003, 5, 6), Day(2003, 5, 6), 50},
                                 {Day(2005, 1, 1), Day(2004, 12, 1), 0},
                                 {Day(2008, 1, 1), Day(2008, 1, 1), 50},
                                 {Day(2010, 9, 9), Day(2010, 9, 9), 100},
                                 {Day(2011, 12, 31), Day(2010, 9, 8), 50},
                                 {Day(2012, 1, 1), Day(2011, 12, 1), 50},
                                 {Day(2017, 9, 28), Day(2017, 9, 27), 50},
                                 {Day(2017, 9, 28), Day(2017, 9, 28), 100},
                                 {Day(2019, 6, 1), Day(2017, 9, 27), 30},
                                 {Day(2022, 12, 31), Day(2022, 1, 1), 100},
                                 {Day(2023, 1, 1), Day(2022, 12, 31), 80},
                                 {Day(2024, 1, 1), Day(2024, 1, 1), 60},
                                 {Day(2025, 1, 20), Day(2025, 1, 19), 40},
                                 {Day(2025, 1, 20), Day(2025, 1, 20), 100}}) {
        EXPECT_EQ(law.Allowance(row.Acquired, row.InService)->Percent, row.Percent) << row.InService.Serial();
    }
    EXPECT_EQ(law.Classes(Day(2009, 6, 1)).size(), 4U);
    EXPECT_EQ(law.Classes(Day(2004, 10, 22)).size(), 0U);
}

TEST(LawLookup, TheTaxYearIsThatOfItsBeginning) {
    EXPECT_EQ(TaxYearOf(Day(2018, 12, 31)), 2018);
    EXPECT_EQ(TaxYearOf(Day(2018, 6, 30)), 2017);
    EXPECT_EQ(TaxYearOfDay(Day(2018, 6, 30), Day(2003, 6, 30)), 2017);
    EXPECT_EQ(TaxYearOfDay(Day(2018, 7, 1), Day(2003, 6, 30)), 2018);
    EXPECT_EQ(TaxYearOfDay(Day(2018, 7, 1), Date()), 2018);
}

TEST(OwnLaw, GoesBeforeTheDeliveredRowByRow) {
    TempFolder own;
    Write(own / "law/section179.txt", "table section179\r\n2027 | 2,620,000 | 4,190,000 | 32,800 | Rev. Proc. of 2026 |\r\n");
    Write(own / "Law/AUTOMOBILES.TXT", "");  // another spelling of the folder is not looked into: the first is there
    const std::filesystem::path folders[] = {own.Path(), kDelivered};
    Law law = ReadLaw(folders);
    EXPECT_EQ(law.Section179(2027)->Limit, 2620000);
    EXPECT_EQ(law.Section179(2026)->Limit, 2560000) << "the delivered row";
    Write(own / "law/section179.txt", "table section179\n2025 | 1,250,000 | 3,130,000 | - | as the year began |\n");
    law = ReadLaw(folders);
    EXPECT_EQ(law.Section179(2025)->Limit, 1250000);
    EXPECT_EQ(law.Section179(2025)->Suv, std::nullopt);
    EXPECT_EQ(law.Section179(2024)->Limit, 1220000);
    // A portable copy has one folder for both: its rows are not their own rivals.
    const std::filesystem::path once[] = {kDelivered, kDelivered};
    EXPECT_EQ(ReadLaw(once).Section179Rows.size(), ReadLaw({{kDelivered}}).Section179Rows.size());
}

TEST(OwnLaw, AFaultyFileEndsTheCommandThatReadsIt) {
    TempFolder own;
    Write(own / "law/allowance.txt", "table allowance\n2028-01-01.. | any | 101 | - | nobody |\n");
    const std::filesystem::path folders[] = {own.Path(), kDelivered};
    try {
        ReadLaw(folders);
        FAIL();
    } catch (const PlatformError& failure) {
        EXPECT_EQ(failure.Code(), Failure::TypeMismatch);
        EXPECT_NE(std::string(failure.what()).find("line 2: \"101\" is no percentage"), std::string::npos) << failure.what();
    }
    EXPECT_THROW(ReadLaw({{own.Path()}}), PlatformError) << "no tables at all";
}

TEST(OwnLaw, FaultsAreToldByTheLine) {
    EXPECT_EQ(Faults(""), std::vector<std::string>{"own.txt: there is no table in it"});
    EXPECT_EQ(Faults("table sectio179\n").front().substr(0, 48), "own.txt, line 1: the first line must be \"table s");
    const auto faults = Faults(
        "# own\ntable automobiles\n"
        "car | 2027-01-01..2027-12-31 | any | 1 | - | 2 | 3 | 4 | source\n"            // 3: good
        "bus | 2028-01-01..2028-12-31 | any | 1 | - | 2 | 3 | 4 | source |\n"          // 4
        "car | 2027-12-31..2028-12-31 | any | 1 | - | 2 | 3 | 4 | source |\n"          // 5: meets line 3
        "car | 2028-02-30..2028-12-31 | any | 1 | - | 2 | 3 | 4 | source |\n"          // 6
        "car | 2029-12-31..2029-01-01 | any | 1 | - | 2 | 3 | 4 | source |\n"          // 7
        "car | 2030-01-01..2030-12-31 | any | -1 | - | 2 | 3 | 4 | source |\n"         // 8
        "car | 2031-01-01..2031-12-31 | any | 1 | - | 2 | 3 | 4 | |\n"                 // 9
        "car | 2031-01-01..2031-12-31 | any | 1 | 2 | 3 | 4 | source\n"                // 10: a column short
        "car | 2032-01-01..2032-12-31 | any | 9999999999999 | - | 2 | 3 | 4 | s |\n"   // 11
        "truck | 2027-01-01..2027-12-31 | any | 1\x01 | - | 2 | 3 | 4 | source |\n");  // 12
    ASSERT_EQ(faults.size(), 9U);
    for (std::size_t i = 0; i < faults.size(); ++i) {
        EXPECT_TRUE(faults[i].starts_with("own.txt, line " + std::to_string(i + 4) + ": ")) << faults[i];
    }
    EXPECT_EQ(faults[1], "own.txt, line 5: line 3 holds for the same dates");
}

TEST(OwnLaw, GapsBesideTheDeliveredRowsAreTold) {
    TempFolder own;
    const auto file = own / "next.txt";
    Write(file,
          "table automobiles\n"
          "car | 2028-01-01..2028-12-31 | ..2027-12-31 | 1 | - | 2 | 3 | 4 | source |\n"
          "car | 2028-01-01..2028-12-31 | 2028-01-02.. | 1 | - | 2 | 3 | 4 | source |\n");
    std::vector<std::string> messages;
    for (const LawFault& fault : CheckLawFile(file, {{kDelivered}})) messages.push_back(fault.Text);
    EXPECT_EQ(messages,
              (std::vector<std::string>{"no row of automobiles (car) holds for 2027-01-01 to 2027-12-31",
                                        "no row of automobiles (car) holds for 2028-01-01, acquired before 2028-01-02"}));
    Write(file, "table section179\n2027-2028 | 1 | 2 | 3 | source |\n");
    EXPECT_TRUE(CheckLawFile(file, {{kDelivered}}).empty());
}

TEST(OwnLaw, WhatIsTooLargeIsNoTable) {
    EXPECT_EQ(Faults("table classes\n" + std::string(300000, 'x')).size(), 1U);
    std::string many = "table section179\n";
    for (int line = 0; line < 3000; ++line) many += "x|1|1|1|s|\n";
    EXPECT_EQ(Faults(many).size(), 100U);
    EXPECT_LE(Faults("table classes\n" + std::string(50000, '|')).front().size(), 200U);
}

}  // namespace
}  // namespace tallymar
