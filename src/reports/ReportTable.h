#pragma once

#include <array>
#include <string_view>

#include "reports/ReportOptions.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

// A report is one row here: what the menu, the form, the command line and the page head say of it, and what prints it. The row's
// place is the report's number. A new report is a row at the end, its number in ReportNumber, and its procedure.
struct ReportInfo {
    std::string_view Menu;         // in the Reports menu: "&Fixed Assets"
    std::string_view Hint;         // of the menu item, for the status line
    std::string_view Name;         // for the command line: "fixed-assets"
    std::string_view Caption;      // of the form and the page head, blanks included; the comparison's is completed with the books
    std::string_view FilterLabel;  // which date the date filter compares
    std::string_view FilterWords;  // the same in the page head
    int Miscellaneous;             // the options checked when the form opens
    int Book;                      // chosen when the form opens
    void (*Print)(ReportRun& run);
};

namespace report_words {

inline constexpr std::string_view kInServiceLabel = "Assets Placed in Service";
inline constexpr std::string_view kInServiceWords = "For Assets Placed in Service ";

}  // namespace report_words

inline constexpr std::array<ReportInfo, kReports> kReportTable = {{
    {"&Fixed Assets", "Select the Fixed Asset Report", "fixed-assets", " Fixed Asset Report ", report_words::kInServiceLabel,
     report_words::kInServiceWords, kInclude179, 1, PrintFAReport},
    {"Current &Depreciation", "Select the Current Depreciation Report", "current-depreciation", " Current Depreciation ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, PrintCDReport},
    {"Asset &Value Report", "Select the Asset Value Report", "asset-value", " Asset Value Report ", report_words::kInServiceLabel,
     report_words::kInServiceWords, kInclude179, 1, PrintAVReport},
    {"Fair &Market Value", "Select the Fair Market Value Report", "fair-market-value", " Fair Market Value Report ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, PrintFMVReport},
    {"Net &Book Value", "Select the Net Book Value Report", "net-book-value", " Net Book Value Report ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, PrintNBVReport},
    {"Assets &Sold", "Select the Assets Sold Report", "assets-sold", " Asset Sold Report ", "Assets Sold", "For Assets Sold ",
     kInclude179, 1, PrintASReport},
    {"Stocks and &Collectibles", "Select the Stocks and Collectibles Report", "stocks-collectibles", " Stocks and Collectibles ",
     "Stocks Purchased", "For Stocks Purchased ", kPrintInvestments, 1, PrintSCReport},
    {"&Post Depreciation", "Select the Post Depreciation Report and Post Depreciation", "post", " Post Depreciation Report ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, PrintPostReport},
    {"Property &Tax", "Select the Property Tax Report", "property-tax", " Personal Property Tax Report ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, PrintPTaxReport},
    {"Co&mparison Reports", "Select a Comparison Report", "comparison", " Comparison Report - ", "Compare Federal",
     report_words::kInServiceWords, kInclude179, 4, PrintCompReport},
    {"&4 Year Depreciation", "Select the 4 Year Depreciation Report", "four-year", " 4 Year Depreciation Projection Report ",
     report_words::kInServiceLabel, report_words::kInServiceWords, kInclude179, 1, Print4YearReport},
}};

// Failure::SubscriptOutOfRange for a number outside 0 to 10.
const ReportInfo& InfoOfReport(int reportNumber);

}  // namespace tallymar
