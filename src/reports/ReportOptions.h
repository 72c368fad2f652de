#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/Date.h"

namespace tallymar {

// The numbers of the reports are their places in the Reports menu.
enum ReportNumber : int {
    kFixedAssetReport = 0,
    kCurrentDepreciationReport = 1,
    kAssetValueReport = 2,
    kFairMarketValueReport = 3,
    kNetBookValueReport = 4,
    kAssetSoldReport = 5,
    kStocksAndCollectiblesReport = 6,
    kPostReport = 7,
    kPropertyTaxReport = 8,
    kComparisonReport = 9,
    kFourYearReport = 10
};
inline constexpr int kReports = 11;

// The items of the check list "Print Prior Year"; a choice is their sum.
enum PrintPriorYear : int { kPYSold = 1, kPYCasualty = 2, kPYAbandoned = 4, kPYLikeKind = 8 };

// The items of the check list "Miscellaneous Options"; a choice is their sum.
enum MiscellaneousOption : int {
    kDoubleSpace = 1,
    kPrintDescrip2 = 2,
    kUpdateDatabase = 4,
    kPrintInvestments = 8,
    kInclude179 = 16
};

// The order of the assets, and with it the groups that are subtotalled.
enum class ReportSequence { AssetNumber, InServiceDate, GLAccount, MethodLife, ClassLife, PropertyGroup };

struct SequenceInfo {
    ReportSequence Sequence;
    std::string_view Item;   // as the user chooses it
    std::string_view Index;  // of the assets; the methods' is completed with the book's number
    bool SubtotalsOn;
    std::string_view SubtotalPrefix;  // what a group's label begins with
};

inline constexpr std::array<SequenceInfo, 6> kSequences = {{
    {ReportSequence::AssetNumber, "Asset Number", "AssetNum", false, "Asset "},
    {ReportSequence::InServiceDate, "In Service Date", "InService", true, "Fiscal Year "},
    {ReportSequence::GLAccount, "G/L Account", "AccountNum", true, "Account "},
    {ReportSequence::MethodLife, "Method / Life", "Method", true, "Method "},
    {ReportSequence::ClassLife, "ClassLife", "ClassLife", true, "ClassLife "},
    {ReportSequence::PropertyGroup, "Property Group", "TaxGroup", true, "Group "},
}};

const SequenceInfo& InfoOf(ReportSequence sequence);
std::optional<ReportSequence> SequenceOfItem(std::string_view item);  // in any letter case

std::optional<int> ReportOfName(std::string_view name);
std::string ReportCaption(int reportNumber, int book);

// What the user has chosen for one report run.
struct ReportOptions {
    // The choices that the form opens with. reportDate is normally today.
    static ReportOptions Defaults(int reportNumber, Date reportDate);

    int ReportNumber = 0;
    int Book = 1;
    ReportSequence Sequence = ReportSequence::AssetNumber;
    Date ReportDate;
    std::string Division;  // the filters; empty: none
    std::string Department;
    std::string CodeSection;
    std::optional<Date> YStart;  // the date filter
    std::optional<Date> YEnd;

    int PrintPYItems = 0;      // the prior years' disposals checked; they join the flags when the run begins
    bool PrintPYSold = false;  // whether assets disposed of in earlier years are printed
    bool PrintPYCasualty = false;
    bool PrintPYAbandoned = false;
    bool PrintPYLikeKind = false;

    bool DoubleSpace = false;
    bool PrintDescrip2 = false;
    bool UpdateDatabase = false;
    bool PrintInvestments = false;
    bool Include179 = false;

    std::optional<bool> GroupAndYear;  // of the property groups; none: the user is asked
    bool Confirmed = false;            // the warning before the post report has been answered already

    // Once checked for a run, the disposals of earlier years stay: a form that was refused keeps them.
    void CheckPrintPY(int items);
    void SetMiscellaneous(int items);
};

}  // namespace tallymar
