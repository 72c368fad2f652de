#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Val.h"

namespace tallymar {
namespace {

CurrencyAmount Amount(const char* text) {
    return *CurrencyAmount::Parse(text);
}

TEST(NumberPictures, Table) {
    using namespace pictures;
    const struct {
        const char* Value;
        std::string_view Picture;
        const char* Expected;
    } table[] = {
        {"1234567.5", kTotal, "1,234,567.50"},
        {"0", kTotal, "0.00"},
        {"-1234.565", kTotal, "-1,234.57"},
        {"123456789012.34", kTotal, "123,456,789,012.34"},
        {"999.995", kTotal, "1,000.00"},
        {"999.9949", kTotal, "999.99"},
        {"37.5", kPercent, "37.50"},
        {"1234567", kCount, "1234567"},
        {"360", kLongCount, "360"},
        {"1234.5", kReportMoney, "1,234.50 "},
        {"-1234.5", kReportMoney, "(1,234.50)"},
        {"0", kReportMoney, "0.00 "},
        {"-0.001", kReportMoney, "(0.00)"},
        {"0", kReportMoneyOrBlank, " "},
        {"0.001", kReportMoneyOrBlank, "0.00 "},
        {"-0.005", kReportMoneyOrBlank, "(0.01)"},
        {"100", kUsePercent, "100"},
        {"66.6667", kUsePercentTenths, "66.7"},
        {"27.5", kLife, "27.5"},
        {"5", kLife, "5.0"},
        {"0", kLifeOrBlank, " "},
        {"0.25", kLifeOrBlank, "0.3"},
        {"-5", kLifeOrBlank, "-5.0"},
        {"0", kDecliningPercent, ""},
        {"200", kDecliningPercent, "200"},
        {"0.4", kDecliningPercentNarrow, ""},
        {"5", kPeriodInFileName, "05"},
        {"27.5", kPeriodInFileName, "28"},
        {"31.5", kPeriodInFileName, "32"},
        {"7", kNewNumber, "007"},
        {"1000", kNewNumber, "1000"},
        {"42", kAssetNumber, "000042"},
        {"7", kScheduleNumber, "007  "},
        {"7.125", kScheduleRate, "7.125"},
        {"7.5", kScheduleRate, "7.50"},
        {"7.125", kLoanRate, "7.1250"},
        {"12345.6", kLoanRate, "12,345.6000"},
        {"2003", kScheduleYear, "2003"},
        {"0", "#.##", "."},
        {"0.5", "#.##", ".5"},
        {"12.5", ".00", "12.50"},
        {"12", "0,000", "0,012"},
        {"-5", "$#,##0", "-$5"},
        {"5551234", "(###) ###-####", "() 555-1234"},
        {"1234567", "#,##0,", "1,235"},
        {"0.125", "0.0%", "12.5%"},
        {"5", "0 \"days; left\"", "5 days; left"},
        {"-5", "0\\;;\\(0", "(5"},
        {"0", "0;;", "0"},
        {"1234.5", "", "1234.5"},
        {"-1234.5", "@", "-1234.5"},
        {"-922337203685477.5808", "#,##0.0000", "-922,337,203,685,477.5808"},
    };
    for (const auto& row : table)
        EXPECT_EQ(Format(Amount(row.Value), row.Picture), row.Expected) << row.Value << " in " << row.Picture;
}

// Digits moved as text, from the least significant up: no arithmetic in common with the formatter.
std::string CentsByHand(std::int64_t count) {
    const bool negative = count < 0;
    std::string digits = std::to_string(count);
    if (negative) digits.erase(0, 1);
    if (digits.size() < 5) digits.insert(0, 5 - digits.size(), '0');
    const bool up = digits[digits.size() - 2] >= '5';
    digits.resize(digits.size() - 2);
    for (std::size_t i = digits.size(); up && i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            break;
        }
        digits[i] = '0';
        if (i == 0) digits.insert(0, 1, '1');
    }
    std::string text = digits.substr(digits.size() - 2);
    text.insert(0, 1, '.');
    digits.resize(digits.size() - 2);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && i % 3 == 0) text.insert(0, 1, ',');
        text.insert(0, 1, digits[digits.size() - 1 - i]);
    }
    if (!negative) return text + ' ';
    text.insert(0, 1, '(');
    return text + ')';
}

TEST(NumberPictures, MoneyByHandDigitByDigit) {
    std::mt19937_64 random(42);
    for (int i = 0; i < 20000; ++i) {
        const auto count = static_cast<std::int64_t>(random()) >> (random() % 63);
        ASSERT_EQ(Format(CurrencyAmount::FromTenThousandths(count), pictures::kReportMoney), CentsByHand(count)) << count;
    }
}

TEST(NumberPictures, AllKindsOfNumberAgree) {
    for (const long long value : {0LL, 7LL, -7LL, 1234567LL, -99999LL}) {
        for (const std::string_view picture : {pictures::kTotal, pictures::kReportMoney, pictures::kCount, std::string_view()}) {
            EXPECT_EQ(Format(value, picture), Format(CurrencyAmount::FromInteger(value), picture));
            EXPECT_EQ(Format(value, picture), Format(static_cast<double>(value), picture));
        }
    }
    EXPECT_EQ(Format(std::numeric_limits<long long>::min(), "#,##0"), "-9,223,372,036,854,775,808");
}

TEST(NumberPictures, DoublesRoundTheTextThatTheyPrintAs) {
    EXPECT_EQ(Format(2.675, "0.00"), "2.68");  // the double lies below the half
    EXPECT_EQ(Format(1.005, "0.00"), "1.01");
    EXPECT_EQ(Format(0.1 + 0.2, ""), "0.3");
    EXPECT_EQ(Format(1e22, "0"), "10000000000000000000000");
    EXPECT_EQ(Format(1e22, ""), "1E+22");
    EXPECT_EQ(Format(-1.5e-7, ""), "-1.5E-07");
    EXPECT_EQ(Format(0.05, ""), "0.05");
    EXPECT_EQ(Format(-0.0, "0.0;(0.0)"), "0.0");
    EXPECT_EQ(Format(1e-300, "0.00"), "0.00");
    EXPECT_EQ(Format(9.9999999999999999e14, ""), "1E+15");
    EXPECT_THROW(Format(std::nan(""), "0"), PlatformError);
}

TEST(DatePictures, Table) {
    using namespace pictures;
    const Date date = Date::FromYmd(2003, 8, 5).AddDays(14.0 / 24 + 5.0 / 1440 + 9.0 / 86400);
    const struct {
        std::string_view Picture;
        const char* Expected;
    } table[] = {
        {kReportDate, "8/05/2003"},    {kLabelDate, "08/05/2003"},
        {kYearEndHeading, "08/05/03"}, {kSortableDate, "2003/08/05"},
        {"YYYY/MM/DD", "2003/08/05"},  {kFilterDate, "8/5/217"},
        {kMonthDay, "08/05"},          {kYear, "2003"},
        {"ddd d mmm", "Tue 5 Aug"},    {"dddd, mmmm dd", "Tuesday, August 05"},
        {"h:mm AM/PM", "2:05 PM"},     {"hh:nn:ss", "14:05:09"},
        {"mm h:m", "08 14:5"},         {"yyyy\"mm\"\\m", "2003mmm"},
        {"", "8/5/2003 2:05:09 PM"},
    };
    for (const auto& row : table) EXPECT_EQ(Format(date, row.Picture), row.Expected) << row.Picture;

    EXPECT_EQ(Format(Date(), kReportDate), "12/30/1899");
    EXPECT_EQ(Format(Date(), ""), "12:00:00 AM");
    EXPECT_EQ(Format(Date::FromYmd(2003, 1, 1), kFilterDate), "1/1/1");
    EXPECT_EQ(Format(Date::FromYmd(2004, 12, 31), kFilterDate), "12/31/366");
    EXPECT_EQ(Format(Date::FromSerial(0.5), "h AM/PM"), "12 PM");
}

TEST(TextPictures, AsItStandsOrInOneCase) {
    EXPECT_EQ(Format(std::string_view(" Caf\xE9 ; 0"), "@"), " Caf\xE9 ; 0");
    EXPECT_EQ(Format(std::string_view("Caf\xE9"), ">"), "CAF\xC9");
    EXPECT_EQ(Format(std::string_view("CAF\xC9"), "<"), "caf\xE9");
}

TEST(LeadingNumber, Table) {
    const struct {
        const char* Text;
        double Expected;
    } table[] = {
        {"", 0},        {"ABC123", 0},     {"12ab", 12}, {"1,234", 1},   {"  12.50 USD", 12.5},
        {"1 2 3", 123}, {"-.5", -0.5},     {"- 5", -5},  {"+7", 7},      {"--5", 0},
        {"5-", 5},      {".", 0},          {"-", 0},     {"1.2.3", 1.2}, {"1E3", 1000},
        {"1d3", 1000},  {"2.5e-1x", 0.25}, {"1E", 1},    {"1E+", 1},     {"&H1F", 31},
        {"&o17", 15},   {"&17", 15},       {"&HG", 0},   {"0x10", 0},    {"inf", 0},
        {"nan", 0},     {"000123", 123},   {"$5", 0},    {"(5)", 0},     {"12%", 12},
        {"1E-400", 0},  {"5.", 5},         {"\t3", 3},
    };
    for (const auto& row : table) EXPECT_EQ(Val(row.Text), row.Expected) << row.Text;
    EXPECT_THROW(Val("1E400"), PlatformError);
}

TEST(LeadingNumber, ReadsEveryDoubleBackInAnyLocale) {
    const char* const german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    std::mt19937_64 random(3);
    for (int i = 0; i < 5000; ++i) {
        const std::int64_t count = static_cast<std::int64_t>(random()) >> (12 + random() % 50);
        const CurrencyAmount amount = CurrencyAmount::FromTenThousandths(count);
        EXPECT_EQ(Val(amount.ToText()), amount.ToDouble()) << amount.ToText();
        EXPECT_EQ(Format(amount.ToDouble(), "0.0000"), Format(amount, "0.0000"));
    }
    if (german != nullptr) std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace tallymar
