#include <random>

#include <gtest/gtest.h>

#include "loans/LoanFile.h"
#include "loans/LoanPages.h"
#include "platform/page/PageText.h"
#include "platform/runtime/Annuity.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using test::FailureOf;

Loan LoanWith(std::initializer_list<std::pair<LoanBox, std::string_view>> texts) {
    Loan loan;
    for (const auto& [box, text] : texts) loan.SetText(box, text);
    return loan;
}

TEST(Annuity, RateIsWhereTheValueIs) {
    for (const double rate : {-0.5, -0.001, 0.0, 1e-7, 0.0066, 0.5, 40.0}) {
        for (const double periods : {1.0, 36.0, 250.0}) {
            if (rate < -0.1 && periods > 1) continue;
            EXPECT_NEAR(Rate(periods, -100, PV(rate, periods, -100)), rate, 1e-9) << periods;
        }
    }
    EXPECT_EQ(FailureOf([] { Rate(36, 100, 1000); }), Failure::InvalidCall);
    EXPECT_EQ(FailureOf([] { Rate(36, -100, 0); }), Failure::InvalidCall);
}

TEST(Loan, SolvesWhatIsBlankAndAgainAfterAChange) {
    Loan loan = LoanWith({{LoanBox::Amount, "10,000"}, {LoanBox::Rate, "8"}});
    EXPECT_EQ(loan.Solve(), LoanBox::Payment);
    EXPECT_EQ(loan.Text(LoanBox::Payment), "313.36");
    EXPECT_EQ(loan.Text(LoanBox::TotalInterest), "1,281.09");  // 36 payments of 313.3637
    loan.SetText(LoanBox::Amount, "20000");
    EXPECT_EQ(loan.Solve(), LoanBox::Payment);
    EXPECT_EQ(loan.Text(LoanBox::Payment), "626.73");
    // A rate below 1% is blank; from then on it is the rate that follows.
    loan.SetText(LoanBox::Rate, "0.5");
    EXPECT_EQ(loan.Solve(), LoanBox::Rate);
    EXPECT_EQ(loan.Text(LoanBox::Rate), "8.0000");
    loan.SetText(LoanBox::Payment, "600");
    EXPECT_EQ(loan.Solve(), LoanBox::Rate);
    loan.SetText(LoanBox::Periods, "");
    EXPECT_EQ(loan.Solve(), LoanBox::Periods);
    EXPECT_EQ(loan.Text(LoanBox::Periods), "36");
    loan.SetText(LoanBox::Amount, "0.99");
    EXPECT_EQ(loan.Solve(), LoanBox::Amount);
    EXPECT_NEAR(loan.Terms().Amount.ToDouble(), 20000, 0.5);
}

TEST(Loan, SaysWhatCannotBeComputed) {
    Loan loan = LoanWith({{LoanBox::Amount, "1000"}, {LoanBox::PerYear, "0"}, {LoanBox::Rate, "5"}});
    loan.Solve();
    EXPECT_EQ(loan.Text(LoanBox::Payment), "0.00");
    EXPECT_NE(loan.Note(), "");
    Loan endless =
        LoanWith({{LoanBox::Amount, "100000"}, {LoanBox::Payment, "5"}, {LoanBox::Rate, "900"}, {LoanBox::Periods, ""}});
    endless.Solve();
    EXPECT_EQ(endless.Text(LoanBox::Periods), "1,000");
    Loan tooLong = LoanWith({{LoanBox::Amount, "1000"}, {LoanBox::Payment, "50"}, {LoanBox::Periods, "251"}});
    tooLong.Solve();
    EXPECT_EQ(tooLong.Text(LoanBox::Rate), "0.0000");
    // Refused, and the boxes are as they were.
    Loan none = LoanWith({{LoanBox::Amount, "1000"}, {LoanBox::Payment, "-5"}});
    const LoanTexts before = none.Texts();
    EXPECT_EQ(FailureOf([&] { none.Solve(); }), Failure::InvalidCall);
    none.SetText(LoanBox::Periods, "40000");
    EXPECT_EQ(FailureOf([&] { none.Solve(); }), Failure::TypeMismatch);
    none.SetText(LoanBox::Periods, "36");
    EXPECT_EQ(none.Texts(), before);
}

TEST(LoanSchedule, PaysTheLoanToTheCent) {
    std::mt19937 random(20030101);
    const auto between = [&](int least, int most) { return std::uniform_int_distribution(least, most)(random); };
    for (int i = 0; i < 10000; ++i) {
        constexpr std::array<std::int16_t, 9> kPerYear = {1, 2, 4, 6, 12, 13, 24, 26, 52};
        LoanTerms terms;
        terms.Amount = CurrencyAmount::FromTenThousandths(between(10000, 100000000) * std::int64_t{100});
        terms.PerYear = kPerYear[static_cast<std::size_t>(between(0, 8))];
        terms.Periods = terms.ToBalloon = static_cast<std::int16_t>(between(1, 30 * terms.PerYear));
        terms.DaysToFirst = static_cast<std::int16_t>(between(0, 60));
        terms.Rate = CurrencyAmount::FromTenThousandths(between(0, 200000));
        SolveFor(LoanVariable::Payment, terms);
        const LoanSchedule schedule = MakeLoanSchedule(terms, {2003, between(1, 12), between(1, 28)});
        CurrencyAmount reduction;
        for (const LoanPayment& payment : schedule.Payments) {
            reduction += payment.Reduction();
            ASSERT_LE(std::abs((payment.Principal - payment.Reduction()).TenThousandths()), 50) << i;
        }
        ASSERT_EQ(reduction + schedule.Balance(), terms.Amount) << i;
        // Days to the first payment other than a period leave what the payment was not computed for.
        const bool isRegular = terms.PerYear != 24 && terms.PerYear != 26 && terms.DaysToFirst == 30;
        if (isRegular) {
            ASSERT_EQ(schedule.Balance(), CurrencyAmount()) << i;
        }
    }
}

// 36 payments of 313.3637 and, of the longer loan, 12 of 1,023.2644.
TEST(LoanSchedule, YearsAddUpWhatThePaymentsCarry) {
    const auto yearsOf = [](std::string_view amount, std::string_view rate, std::string_view periods) {
        Loan loan = LoanWith({{LoanBox::Amount, amount}, {LoanBox::Rate, rate}, {LoanBox::Periods, periods}});
        loan.SetText(LoanBox::ToBalloon, periods);
        loan.Solve();
        std::vector<std::string> years;
        for (const LoanYear& year : loan.Schedule().Years) years.push_back(Format(year.Principal, pictures::kTotal));
        return years;
    };
    EXPECT_EQ(yearsOf("10000", "8", "36"), (std::vector<std::string>{"3,071.36", "3,326.26", "3,602.50"}));
    EXPECT_EQ(yearsOf("150000", "7.25", "360").front(), "1,451.79");
}

std::vector<std::string> DueDatesOf(const char* first, int perYear, int count) {
    std::vector<std::string> dates;
    DueDates due(ReadDueDate(first).value(), perYear);
    for (int i = 0; i < count; ++i, due.MoveNext()) {
        dates.push_back(std::to_string(due.Current().Month) + "/" + std::to_string(due.Current().Day));
    }
    return dates;
}

TEST(DueDates, KeepTheirDayAcrossALeapFebruary) {
    EXPECT_EQ(DueDatesOf("1/31/2004", 12, 3), (std::vector<std::string>{"1/31", "2/29", "3/31"}));
    EXPECT_EQ(DueDatesOf("1/20/2004", 24, 5), (std::vector<std::string>{"1/20", "2/4", "2/20", "3/6", "3/20"}));
    EXPECT_EQ(DueDatesOf("2/20/2004", 26, 3), (std::vector<std::string>{"2/20", "3/5", "3/19"}));
    EXPECT_EQ(DueDatesOf("11/30/2003", 4, 2), (std::vector<std::string>{"11/30", "2/29"}));
    EXPECT_EQ(ReadDueDate("1/1/20")->Year, 2020);
    EXPECT_EQ(ReadDueDate("1/1/21")->Year, 1921);
    for (const char* none : {"", "2/30/2003", "1/1", "1/1/2003 x", "13/1/2003", "-1/1/2003"})
        EXPECT_FALSE(ReadDueDate(none)) << none;
}

std::string TextOf(Loan loan) {
    test::ScriptedPrompts prompts;
    prompts.YesNo = {true};
    const auto document = PrintLoan(loan, prompts);
    std::string text;
    for (int page = 1; page <= document->Pages.PageCount(); ++page) text += PageText(document->Pages, page) + "\f";
    return text;
}

TEST(LoanPages, ShowTheToldLines) {
    const std::string balloon = TextOf(LoanWith({{LoanBox::Amount, "1000000"},
                                                 {LoanBox::Periods, "24"},
                                                 {LoanBox::PerYear, "24"},
                                                 {LoanBox::Payment, "50000"},
                                                 {LoanBox::Rate, "7.125"},
                                                 {LoanBox::ToBalloon, "2"},
                                                 {LoanBox::FirstDue, "02/15/2004"}}));
    const auto has = [](const std::string& text, const char* line) {
        EXPECT_NE(text.find(line), std::string::npos) << line << '\n' << text;
    };
    // 30, 15 and 14 days: 1,000,000.00 x 7.125% x 30 / 365 is 5,856.16.
    has(balloon, "\n001  Feb 15 04  1,000,000.00    44,143.84      5,856.16       5,856.16    955,856.16\n");
    has(balloon, "\n002  Mar 01 04    955,856.16    47,201.17      2,798.83       8,654.99    908,654.99\n");
    has(balloon, "\nTotals Paid in 2004 =          138,861.77     11,138.23\n");
    has(balloon, "\nFinal payment payment of 861,138.23 required to zero balance of loan.\n");
    const std::string savings = TextOf(
        LoanWith({{LoanBox::Amount, "1000"}, {LoanBox::Payment, "-100"}, {LoanBox::Rate, "6"}, {LoanBox::ToBalloon, "1"}}));
    has(savings, "FUTURE VALUE SCHEDULE\n");
    has(savings, "\n002  Feb 01 03      1,105.00      -105.53          5.53          10.53      1,210.53\n");
    has(savings, "\nTotal Interest earned = 10.53\n");
    const std::string plain = TextOf(
        LoanWith({{LoanBox::Amount, "3600"}, {LoanBox::Rate, "0"}, {LoanBox::Periods, "360"}, {LoanBox::ToBalloon, "360"}}));
    has(plain, "\n360  Dec 01 32         10.00        10.00          0.00           0.00          0.00\n");
    EXPECT_EQ(std::count(plain.begin(), plain.end(), '\f'), 9);  // 450 lines at 55 or 57 a page
}

// An empty payment that cannot be solved for is still empty at the next attempt: no savings plan is made of the loan.
TEST(LoanPages, RefuseALoanWithoutAPaymentEachTime) {
    Loan loan = LoanWith({{LoanBox::Amount, "1000"}, {LoanBox::Rate, "8"}, {LoanBox::Periods, "0"}});
    const LoanTexts before = loan.Texts();
    for (int attempt = 0; attempt < 2; ++attempt) {
        test::ScriptedPrompts prompts;
        prompts.YesNo = {true};
        EXPECT_EQ(FailureOf([&] { PrintLoan(loan, prompts); }), Failure::InvalidCall);
        EXPECT_EQ(loan.Texts(), before);
    }
}

TEST(LoanFile, ComesBackByteForByteAndRefusesTheRest) {
    const test::TempFolder folder;
    const auto file = folder / "a.lon";
    test::ScriptedPrompts prompts;
    Loan loan = LoanWith({{LoanBox::Name, "The \"Elm\" \"\" caf\xE9, \""}, {LoanBox::Amount, "1,234,567.50"}});
    ASSERT_TRUE(CloseLoanFile(file, loan.Texts(), prompts));
    EXPECT_EQ(OpenLoanFile(file), loan.Texts());
    const std::string bytes = test::ReadAll(file);
    EXPECT_TRUE(bytes.starts_with("\"The \"\"Elm\"\" \"\"\"\" caf\xE9, \"\"\"\r\n\"1,234,567.50\"\r\n\"36\"\r\n"));
    prompts.YesNo = {false};
    EXPECT_FALSE(CloseLoanFile(file, LoanTexts(), prompts));
    EXPECT_EQ(prompts.Questions.at(0).Text, "Overwrite existing file?");
    EXPECT_EQ(test::ReadAll(file), bytes);

    for (std::size_t length = 0; length + 3 < bytes.size(); ++length) {
        test::WriteAll(file, bytes.substr(0, length));
        ASSERT_TRUE(FailureOf([&] { OpenLoanFile(file); })) << length;
    }
    for (const std::string& hostile : {std::string(70000, '"'), "\"a\x01\"\r\n" + bytes, bytes + "\"more\"\r\n"}) {
        test::WriteAll(file, hostile);
        EXPECT_EQ(FailureOf([&] { OpenLoanFile(file); }), Failure::UnrecognizedFormat);
    }
    EXPECT_TRUE(FailureOf([&] { OpenLoanFile(folder.Path()); }));
    EXPECT_EQ(FailureOf([&] { CloseLoanFile(folder / "no" / "a.lon", LoanTexts(), prompts); }), Failure::PathNotFound);
}

}  // namespace
}  // namespace tallymar
