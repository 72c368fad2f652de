#include "batch/ComputeCurrent.h"

#include <chrono>

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "store/Vocabularies.h"
#include "support/Child.h"
#include "support/OtherProgram.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

PerBook<bool> Books(std::initializer_list<int> books) {
    PerBook<bool> chosen;
    for (const int book : books) chosen[book] = true;
    return chosen;
}

class ComputeCurrentTest : public testing::Test {
 protected:
    ComputeCurrentTest() : engine_(company_.Folder.Path()) { company_.SetYearEnds(Date::FromYmd(2003, 12, 31)); }

    ComputeCurrentResult Compute(PerBook<bool> books, PerBook<bool> midQuarter = {}) {
        ComputeCurrentResult result;
        Compute(books, midQuarter, result);
        return result;
    }
    void Compute(PerBook<bool> books, PerBook<bool> midQuarter, ComputeCurrentResult& result) {
        ComputeCurrent(company_.Session, engine_, {.Compute = books, .UseMidQuarter = midQuarter}, company_.Prompts, result);
    }

    AssetRecord Stored(const char* number) {
        company_.Session.AssetsRecordset().Seek(number);
        AssetRecord record;
        company_.Session.ReadAssetRecord(record);
        return record;
    }

    test::TestCompany company_;
    ADepre engine_;
};

TEST_F(ComputeCurrentTest, AnEmptyCompanyShowsZeros) {
    const auto result = Compute(Books({1, 2, 3, 4}));
    EXPECT_EQ(result[1].Totals.InServiceText(), "0.00");
    EXPECT_EQ(result[4].Totals.FourthQuarterText(), "0.00");
    EXPECT_EQ(result[4].Totals.PercentText(), "0.00");
    EXPECT_EQ(RemarksOn(result), std::vector<std::string>());
}

TEST_F(ComputeCurrentTest, TotalsCountFirstYearModifiedAcrsPersonalProperty) {
    AssetRecord used = test::Machine("A2", Date::FromYmd(2003, 10, 1), 3000);
    used.BusinessUse = Units(50);
    used.Salvage[1] = Units(1000);
    AssetRecord building = test::Machine("A3", Date::FromYmd(2003, 11, 1), 90000);
    building.AssetType = "RL";
    AssetRecord general = test::Machine("A4", Date::FromYmd(2003, 11, 1), 90000);
    general.DeprType[1] = kGenl;
    general.DeprMethod[1] = kSl;
    for (const AssetRecord& record : {test::Machine("A1", Date::FromYmd(2003, 9, 30), 2000), used, building, general,
                                      test::Machine("A5", Date::FromYmd(2002, 12, 1), 500)}) {
        company_.Session.AddAssetRecord(record);
    }
    const auto result = Compute(Books({1}));
    EXPECT_EQ(result[1].Totals.InServiceText(), "3,000.00");
    EXPECT_EQ(result[1].Totals.FourthQuarterText(), "1,000.00");
    EXPECT_EQ(result[1].Totals.PercentText(), "33.33");
    EXPECT_EQ(Stored("A1").CurrDepr[1], Units(400));
    EXPECT_EQ(Stored("A5").CurrDepr[1], Units(200));
    EXPECT_EQ(Stored("A1").CurrDepr[2], CurrencyAmount());

    // Read the share, choose the mid-quarter convention, and run again: the second run replaces the first.
    Compute(Books({1}), Books({1}));
    EXPECT_EQ(Stored("A1").CurrDepr[1], Units(300));
    EXPECT_EQ(Stored("A1").IRSConvUsed[1].View(), "Q");
}

TEST_F(ComputeCurrentTest, TheQuarterIsTheFiscalYears) {
    company_.SetYearEnds(Date::FromYmd(2003, 6, 30));
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2002, 7, 15), 1000));
    company_.Session.AddAssetRecord(test::Machine("A2", Date::FromYmd(2003, 4, 1), 1000));
    const auto result = Compute(Books({2}));
    EXPECT_EQ(result[2].Totals.InServiceText(), "2,000.00");
    EXPECT_EQ(result[2].Totals.PercentText(), "50.00");
    EXPECT_EQ(SummaryOf(result), "2 assets, State 50.00% in the 4th quarter: above 40%");
}

TEST_F(ComputeCurrentTest, TheSummaryTellsBooksOfTheSameShareTogether) {
    ComputeCurrentResult result;
    EXPECT_EQ(SummaryOf(result), "No book is checked.");
    for (const int book : {1, 3, 4}) {
        result[book].Chosen = true;
        result[book].Computed = 73;
        result[book].Totals = {Units(1000), Units(book == 3 ? 400 : 401)};
    }
    EXPECT_FALSE(result[3].Totals.IsAboveFortyPercent()) << "40% is not above 40%";
    EXPECT_EQ(SummaryOf(result),
              "73 assets, Federal, A.M.T. 40.10% in the 4th quarter: above 40%; "
              "Bookkeeping 40.00% in the 4th quarter");
    result[3].Totals = {};
    EXPECT_EQ(SummaryOf(result),
              "73 assets, Federal, A.M.T. 40.10% in the 4th quarter: above 40%; "
              "Bookkeeping no MCRS personal property this year");
}

TEST_F(ComputeCurrentTest, AMonthShapesTheBookkeepingBookAlone) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2002, 1, 1), 12000));
    engine_.ComputeMonth = 6;
    Compute(Books({1, 3}));
    const AssetRecord record = Stored("A1");
    EXPECT_EQ(record.CurrDepr[1], Units(4800));
    EXPECT_EQ(record.CurrDepr[3], Units(400));
}

TEST_F(ComputeCurrentTest, AFailureNamesTheAssetAndKeepsTheRowsBeforeIt) {
    AssetRecord bad = test::Machine("B1", Date::FromYmd(2003, 1, 1), 1000);
    bad.DeprType[2] = kGenl;
    bad.DeprMethod[2] = kMi;
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 1, 1), 1000));
    company_.Session.AddAssetRecord(bad);
    company_.Session.AddAssetRecord(test::Machine("C1", Date::FromYmd(2003, 1, 1), 1000));
    ComputeCurrentResult result;
    try {
        Compute(Books({1, 2}), {}, result);
        FAIL() << "no failure";
    } catch (const PlatformError& failure) {
        EXPECT_EQ(failure.Code(), Failure::TypeMismatch);
        EXPECT_EQ(std::string(failure.what()), "Asset B1, State: Type mismatch");
    }
    EXPECT_EQ(RemarksOn(result), std::vector<std::string>{"State: 1 asset was computed before the failure."});
    company_.Session.OpenCompany(company_.File(), company_.Prompts);
    EXPECT_EQ(Stored("C1").CurrDepr[1], Units(200));
    EXPECT_EQ(Stored("A1").CurrDepr[2], Units(200));
    EXPECT_EQ(Stored("C1").CurrDepr[2], CurrencyAmount());
    EXPECT_EQ(company_.Prompts.ProgressMaxima.back(), 0);
}

// After its first book a run writes the computed columns alone; a row that another program has left odd must not tell.
TEST_F(ComputeCurrentTest, FourBooksAtOnceLeaveWhatFourRunsLeave) {
    AssetRecord sold = test::Machine("B1", Date::FromYmd(2002, 1, 1), 5000);
    sold.Sold = true;
    sold.DateSold = Date::FromYmd(2003, 3, 1);
    AssetRecord automobile = test::Machine("C1", Date::FromYmd(2003, 1, 1), 40000);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        sold.SwitchBasis[book] = Units(7);
        sold.DeprType[book] = kStck;
        automobile.Auto[book] = true;
        automobile.Section179[book] = Units(20000);
        automobile.ADPct[book] = Units(30);
    }
    for (const AssetRecord& record : {test::Machine("A1", Date::FromYmd(2003, 1, 1), 1000), sold, automobile}) {
        company_.Session.AddAssetRecord(record);
    }
    company_.Session.FileClose();
    test::OtherProgram(company_.File())
        .Run(
            "UPDATE Assets SET FedLife = 3, Division = 'E', TaxGroup = '', CodeSection = '', InService = NULL, "
            "\"CurrDepr(2)\" = NULL, \"DeprLimit(3)\" = '12.5x', \"Basis(4)\" = 1234567.89 WHERE AssetNum LIKE 'A1%'");
    const std::filesystem::path copy = company_.Folder / "copy.mdb";
    std::filesystem::copy_file(company_.File(), copy);

    const auto rows = [this](const std::filesystem::path& file, const std::vector<PerBook<bool>>& runs) {
        company_.Session.OpenCompany(file, company_.Prompts);
        for (const PerBook<bool>& books : runs) Compute(books);
        company_.Session.FileClose();
        return test::OtherProgram(file).Run("SELECT * FROM Assets ORDER BY _rowid_");
    };
    EXPECT_EQ(rows(company_.File(), {Books({1, 2, 3, 4})}), rows(copy, {Books({1}), Books({2}), Books({3}), Books({4})}));
}

TEST_F(ComputeCurrentTest, SaysWhatWasNotComputed) {
    AssetRecord noTable = test::Machine("B1", Date::FromYmd(2003, 1, 1), 1000);
    noTable.DeprType[1] = kMacs;
    AssetRecord noPeriod = test::Machine("C1", Date::FromYmd(2003, 1, 1), 1000);
    noPeriod.Period[1] = Units(0);
    AssetRecord sold = test::Machine("D1", Date::FromYmd(2002, 1, 1), 1000);
    sold.Sold = true;
    sold.DateSold = Date::FromYmd(2003, 3, 1);
    for (const AssetRecord& record : {test::Machine("A1", Date::FromYmd(2003, 1, 1), 1000), noTable, noPeriod, sold}) {
        company_.Session.AddAssetRecord(record);
    }
    EXPECT_EQ(
        RemarksOn(Compute(Books({1, 2}))),
        std::vector<std::string>{"Federal: 2 assets could not be computed, first B1: Deprec. Table NOT Found (MACSDB05.DPP)"});

    company_.SetYearEnds(Date());
    EXPECT_EQ(
        RemarksOn(Compute(Books({3}))),
        std::vector<std::string>{"Bookkeeping: no fiscal year end is set (Company Profile), so every asset came out as 0."});
    EXPECT_EQ(Stored("A1").CurrDepr[3], CurrencyAmount());
}

// A power cut at any moment: afterwards the file opens, and the command is wholly there or not there at all.
TEST_F(ComputeCurrentTest, KilledAtAnyMomentTheRunIsThereWholeOrNotAtAll) {
    constexpr int kAssets = 400;
    recordset::RunBatch(company_.Session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        for (int i = 0; i < kAssets; ++i) {
            std::string number = std::to_string(100000 + i);
            company_.Session.AddAssetRecord(test::Machine(number, Date::FromYmd(2003, 1, 1), 1000));
        }
    });
    company_.Session.FileClose();
    constexpr int kRounds = 40;
    int whole = 0;
    for (int round = 0; round < kRounds || whole == 0; ++round) {  // a slow machine takes more rounds to end one
        ASSERT_LT(round, 20 * kRounds);
        // Each round writes another amount: 200 with the half year, 350 with the first quarter's 35 %.
        const bool midQuarter = round % 2 == 1;
        test::Child child([&] {
            company_.Session.OpenCompany(company_.File(), company_.Prompts);
            const PerBook<bool> all = Books({1, 2, 3, 4});
            Compute(all, midQuarter ? all : PerBook<bool>());
            return 0;
        });
        ASSERT_NE(child.KillAfter(std::chrono::microseconds(2000 + 1700 * round)), test::Child::kThrew);

        company_.Session.OpenCompany(company_.File(), company_.Prompts);
        recordset::Recordset& assets = company_.Session.AssetsRecordset();
        assets.MoveFirst();
        AssetRecord first;
        company_.Session.ReadAssetRecord(first);
        int count = 0;
        for (; !assets.Eof(); assets.MoveNext(), ++count) {
            AssetRecord record;
            company_.Session.ReadAssetRecord(record);
            for (int book = kFirstBook; book <= kLastBook; ++book) ASSERT_EQ(record.CurrDepr[book], first.CurrDepr[1]) << round;
        }
        ASSERT_EQ(count, kAssets);
        if (!first.CurrDepr[1].IsZero()) ++whole;
        company_.Session.FileClose();
    }
}

}  // namespace
}  // namespace tallymar
