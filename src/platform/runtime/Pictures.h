#pragma once

#include <string_view>

// Every picture that the program prints with, by what it is for. A new screen or report takes its picture from here.
namespace tallymar::pictures {

inline constexpr std::string_view kTotal = "###,###,##0.00";  // totals on screens, money of the loan calculator
inline constexpr std::string_view kPercent = "##0.00";
inline constexpr std::string_view kCount = "#####0";
inline constexpr std::string_view kLongCount = "###,###,##0";

inline constexpr std::string_view kReportMoney = "##,###,##0.00 ;(##,###,##0.00)";  // decimal points line up whatever the sign
inline constexpr std::string_view kReportMoneyOrBlank = "##,###,##0.00 ;(##,###,##0.00); ;";
inline constexpr std::string_view kUsePercent = "##0";
inline constexpr std::string_view kUsePercentTenths = "##0.0";
inline constexpr std::string_view kLife = "#0.0";
inline constexpr std::string_view kLifeOrBlank = "#0.0;; ;";
inline constexpr std::string_view kDecliningPercent = "####";
inline constexpr std::string_view kDecliningPercentNarrow = "###";
inline constexpr std::string_view kYearKey = "0000";
inline constexpr std::string_view kPeriodInFileName = "00";

inline constexpr std::string_view kReportDate = "m/dd/yyyy";
inline constexpr std::string_view kYearEndHeading = "mm/dd/yy";
inline constexpr std::string_view kFilterDate = "m/d/y";  // "y" is the day of the year
inline constexpr std::string_view kMonthDay = "mm/dd";
inline constexpr std::string_view kYear = "yyyy";

}  // namespace tallymar::pictures
