#pragma once

#include <string_view>

// Every picture that the program prints with, by what it is for. A new screen or report takes its picture from here. (The masks
// of the form pages are a language of their own and stand with them.)
namespace tallymar::pictures {

inline constexpr std::string_view kTotal = "###,###,##0.00";  // totals on screens, money of the loan calculator
inline constexpr std::string_view kBuildMoney =
    "##,###,##0.00";  // the rows of the depreciation build; balances of a loan schedule
inline constexpr std::string_view kPercent = "##0.00";
inline constexpr std::string_view kCount = "#####0";
inline constexpr std::string_view kLongCount = "###,###,##0";  // the periods of a loan

inline constexpr std::string_view kReportMoney = "##,###,##0.00 ;(##,###,##0.00)";  // decimal points line up whatever the sign
inline constexpr std::string_view kReportMoneyOrBlank = "##,###,##0.00 ;(##,###,##0.00); ;";
inline constexpr std::string_view kText = "@";
inline constexpr std::string_view kUsePercent = "##0";
inline constexpr std::string_view kUsePercentTenths = "##0.0";
inline constexpr std::string_view kLife = "#0.0";
inline constexpr std::string_view kLifeOrBlank = "#0.0;; ;";
inline constexpr std::string_view kDecliningPercent = "####";
inline constexpr std::string_view kDecliningPercentNarrow = "###";
inline constexpr std::string_view kYearKey = "0000";
inline constexpr std::string_view kPeriodInFileName = "00";

// Numbers of assets: after "NEW" and "DUP", counted upward, and resequenced after a prefix of one to four characters.
inline constexpr std::string_view kNewNumber = "000";
inline constexpr std::string_view kAssetNumber = "000000";
inline constexpr std::string_view kNumberPad2 = "00";
inline constexpr std::string_view kNumberPad3 = "000";
inline constexpr std::string_view kNumberPad4 = "0000";
inline constexpr std::string_view kNumberPad5 = "00000";

// The loan calculator and its schedule.
inline constexpr std::string_view kLoanRate = "###,##0.0000";
inline constexpr std::string_view kScheduleRate = "##0.00#";
inline constexpr std::string_view kSchedulePeriods = "#####";
inline constexpr std::string_view kScheduleNumber = "000  ";  // the payment number and the gap after it
inline constexpr std::string_view kScheduleMoney = "#,###,##0.00";
inline constexpr std::string_view kScheduleYear = "####";

inline constexpr std::string_view kReportDate = "m/dd/yyyy";
inline constexpr std::string_view kLabelDate = "mm/dd/yyyy";
inline constexpr std::string_view kYearEndHeading = "mm/dd/yy";
inline constexpr std::string_view kSortableDate = "yyyy/mm/dd";  // grids that sort by text
inline constexpr std::string_view kFilterDate = "m/d/y";         // COMPAT: "y" is the day of the year
inline constexpr std::string_view kMonthDay = "mm/dd";
inline constexpr std::string_view kYear = "yyyy";

}  // namespace tallymar::pictures
