#include "reports/ReportSelection.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

bool DroppedAsPriorYear(const AssetRecord& asset, const ReportOptions& options) {
    return (asset.Sold && !options.PrintPYSold) || (asset.Abandoned && !options.PrintPYAbandoned) ||
           (asset.LikeKind && !options.PrintPYLikeKind) || (asset.Casualty && !options.PrintPYCasualty);
}

bool IsInvestment(const AssetRecord& asset, int book) {
    return asset.DeprType[book] == kStck || asset.DeprType[book] == kColl;
}

}  // namespace

bool ReportFilter::SelectFilter(const AssetRecord& asset, FilterMode mode) const {
    if (!Options.Division.empty() && asset.Division.Trimmed() != Options.Division) return false;
    // COMPAT: the department is compared with the division too.
    if (!Options.Department.empty() && asset.Division.Trimmed() != Options.Department) return false;
    if (!Options.CodeSection.empty() && RTrim(asset.CodeSection) != Options.CodeSection) return false;

    if (asset.Sold || asset.Abandoned || asset.LikeKind || asset.Notice4 || asset.Casualty) {
        const bool earlierYear = YearsAndMonths(asset.DateSold, YearEnd).Years > 1;
        if (earlierYear && DroppedAsPriorYear(asset, Options)) return false;
    }

    if (!FilterFrom.IsNone() || !FilterTo.IsNone()) {
        const Date compared = mode == FilterMode::InService ? asset.InService : asset.DateSold;
        if (compared < FilterFrom || compared > FilterTo) return false;
    }

    const bool withoutInvestments = !Options.PrintInvestments || Options.ReportNumber == kCurrentDepreciationReport;
    return !(withoutInvestments && IsInvestment(asset, Options.Book));
}

std::string FiscalYearKey(Date inService, Date yearEnd) {
    if (yearEnd.Month() == 12 && yearEnd.Day() == 31) return Format(inService, pictures::kYear);
    const bool upToYearEnd =
        inService.Month() < yearEnd.Month() || (inService.Month() == yearEnd.Month() && inService.Day() <= yearEnd.Day());
    return Format(static_cast<long long>(inService.Year() - (upToYearEnd ? 1 : 0)), pictures::kYearKey);
}

std::string SubtotalKey(const AssetRecord& asset, const ReportOptions& options, Date yearEnd) {
    const int book = options.Book;
    switch (options.Sequence) {
        case ReportSequence::AssetNumber:
            break;
        case ReportSequence::InServiceDate:
            return FiscalYearKey(asset.InService, yearEnd);
        case ReportSequence::GLAccount:
            return std::string(RTrim(asset.AccountNum));
        case ReportSequence::ClassLife:
            return asset.ClassLife.ToText() + " " + FiscalYearKey(asset.InService, yearEnd);
        case ReportSequence::PropertyGroup: {
            std::string group(RTrim(asset.TaxGroup));
            return options.GroupAndYear.value_or(false) ? group + " " + FiscalYearKey(asset.InService, yearEnd) : group;
        }
        case ReportSequence::MethodLife:
            return Format(asset.Period[book], pictures::kLife) + " " + std::string(DeprTypeCode(asset.DeprType[book])) + " " +
                   Format(static_cast<long long>(asset.DBPercent[book]), pictures::kDecliningPercentNarrow) + " " +
                   std::string(DeprMethodCode(asset.DeprMethod[book]));
    }
    return {};
}

}  // namespace tallymar
