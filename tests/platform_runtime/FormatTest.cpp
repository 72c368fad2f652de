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

TEST(NumberPictures, Table) {
    using namespace pictures;
    const std::tuple<std::string_view, const char*, const char*> table[] = {{kTotal, "1234567.5", "1,234,567.50"},
                                                                            {kTotal, "0", "0.00"},
                                                                            {kTotal, "-1234.565", "-1,234.57"},
                                                                            {kTotal, "999.995", "1,000.00"},
                                                                            {kCount, "1234567", "1234567"},
                                                                            {kReportMoney, "-0.001", "(0.00)"},
                                                                            {kReportMoneyOrBlank, "0", " "},
                                                                            {kReportMoneyOrBlank, "0.001", "0.00 "},
                                                                            {kReportMoneyOrBlank, "-0.005", "(0.01)"},
                                                                            {kUsePercentTenths, "66.6667", "66.7"},
                                                                            {kLife, "5", "5.0"},
                                                                            {kLifeOrBlank, "0", " "},
                                                                            {kLifeOrBlank, "0.25", "0.3"},
                                                                            {kLifeOrBlank, "-5", "-5.0"},
                                                                            {kDecliningPercent, "0", ""},
                                                                            {kDecliningPercentNarrow, "0.4", ""},
                                                                            {kPeriodInFileName, "5", "05"},
                                                                            {kPeriodInFileName, "31.5", "32"},
                                                                            {kNewNumber, "7", "007"},
                                                                            {kAssetNumber, "42", "000042"},
                                                                            {kScheduleNumber, "7", "007  "},
                                                                            {kScheduleRate, "7.125", "7.125"},
                                                                            {kScheduleRate, "7.5", "7.50"},
                                                                            {kLoanRate, "12345.6", "12,345.6000"},
                                                                            {"#.##", "0.5", ".5"},
                                                                            {".00", "12.5", "12.50"},
                                                                            {"0,000", "12", "0,012"},
                                                                            {"$#,##0", "-5", "-$5"},
                                                                            {"(###) ###-####", "5551234", "() 555-1234"},
                                                                            {"#,##0,", "1234567", "1,235"},
                                                                            {"0.0%", "0.125", "12.5%"},
                                                                            {"0 \"days; left\"", "5", "5 days; left"},
                                                                            {"0\\;;\\(0", "-5", "(5"},
                                                                            {"0;;", "0", "0"},
                                                                            {"", "1234.5", "1234.5"},
                                                                            {"@", "-1234.5", "-1234.5"}};
    for (const auto& [picture, value, expected] : table) {
        EXPECT_EQ(Format(*CurrencyAmount::Parse(value), picture), expected) << value << " in " << picture;
    }
}

std::string MoneyByHand(std::int64_t count) {
    const std::uint64_t cents = (static_cast<std::uint64_t>(std::abs(count)) + 50) / 100;
    std::string text = std::to_string(cents / 100);
    for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
    text += "." + std::to_string(100 + cents % 100).substr(1);
    return count < 0 ? "(" + text + ")" : text + " ";
}

TEST(NumberPictures, MoneyAgreesWithHandMadeTexts) {
    std::mt19937_64 random(42);
    for (int i = 0; i < 20000; ++i) {
        const auto count = static_cast<std::int64_t>(random()) >> (random() % 63);
        ASSERT_EQ(Format(CurrencyAmount::FromTenThousandths(count), pictures::kReportMoney), MoneyByHand(count)) << count;
    }
}

TEST(NumberPictures, DoublesRoundTheTextThatTheyPrintAs) {
    const std::tuple<double, const char*, const char*> table[] = {
        {2.675, "0.00", "2.68"},  // the double lies below the half
        {0.1 + 0.2, "", "0.3"},   {1e22, "0", "10000000000000000000000"},
        {1e22, "", "1E+22"},      {-1.5e-7, "", "-1.5E-07"},
        {0.05, "", "0.05"},       {-0.0, "0.0;(0.0)", "0.0"},
        {1e-300, "0.00", "0.00"}, {9.9999999999999999e14, "", "1E+15"}};
    for (const auto& [value, picture, expected] : table) EXPECT_EQ(Format(value, picture), expected) << value;
    EXPECT_EQ(Format(std::numeric_limits<long long>::min(), "#,##0"), "-9,223,372,036,854,775,808");
    EXPECT_EQ(Format(-99999LL, pictures::kReportMoney), "(99,999.00)");
    EXPECT_THROW(Format(std::nan(""), "0"), PlatformError);
}

TEST(DatePictures, Table) {
    using namespace pictures;
    const Date date = Date::FromYmd(2003, 8, 5).AddDays(14.0 / 24 + 5.0 / 1440 + 9.0 / 86400);
    const std::pair<std::string_view, const char*> table[] = {
        {kReportDate, "8/05/2003"},    {kLabelDate, "08/05/2003"},
        {kYearEndHeading, "08/05/03"}, {kSortableDate, "2003/08/05"},
        {"YYYY/MM/DD", "2003/08/05"},  {kFilterDate, "8/5/217"},
        {kMonthDay, "08/05"},          {kYear, "2003"},
        {"ddd d mmm", "Tue 5 Aug"},    {"dddd, mmmm dd", "Tuesday, August 05"},
        {"h:mm AM/PM", "2:05 PM"},     {"hh:nn:ss", "14:05:09"},
        {"mm h:m", "08 14:5"},         {"yyyy\"mm\"\\m", "2003mmm"},
        {"", "8/5/2003 2:05:09 PM"}};
    for (const auto& [picture, expected] : table) EXPECT_EQ(Format(date, picture), expected) << picture;
    EXPECT_EQ(Format(Date(), kReportDate), "12/30/1899");
    EXPECT_EQ(Format(Date::FromYmd(2004, 12, 31), kFilterDate), "12/31/366");
    EXPECT_EQ(Format(Date::FromSerial(0.5), "h AM/PM"), "12 PM");
}

TEST(TextPictures, AsItStandsOrInOneCase) {
    EXPECT_EQ(Format(std::string_view(" Caf\xE9 ; 0"), "@"), " Caf\xE9 ; 0");
    EXPECT_EQ(Format(std::string_view("Caf\xE9"), ">"), "CAF\xC9");
    EXPECT_EQ(Format(std::string_view("CAF\xC9"), "<"), "caf\xE9");
}

TEST(LeadingNumber, Table) {
    const std::pair<const char*, double> table[] = {
        {"", 0},        {"ABC123", 0},     {"12ab", 12}, {"1,234", 1},   {"  12.50 USD", 12.5},
        {"1 2 3", 123}, {"-.5", -0.5},     {"- 5", -5},  {"+7", 7},      {"--5", 0},
        {"5-", 5},      {".", 0},          {"-", 0},     {"1.2.3", 1.2}, {"1E3", 1000},
        {"1d3", 1000},  {"2.5e-1x", 0.25}, {"1E", 1},    {"1E+", 1},     {"&H1F", 31},
        {"&o17", 15},   {"&17", 15},       {"&HG", 0},   {"0x10", 0},    {"inf", 0},
        {"nan", 0},     {"000123", 123},   {"$5", 0},    {"(5)", 0},     {"12%", 12},
        {"1E-400", 0},  {"5.", 5},         {"\t3", 3}};
    for (const auto& [text, expected] : table) EXPECT_EQ(Val(text), expected) << text;
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
