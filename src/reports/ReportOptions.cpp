#include "reports/ReportOptions.h"

#include <cstddef>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "reports/ReportTable.h"
#include "store/Books.h"

namespace tallymar {

const SequenceInfo& InfoOf(ReportSequence sequence) {
    return kSequences.at(static_cast<std::size_t>(sequence));
}

std::optional<ReportSequence> SequenceOfItem(std::string_view item) {
    for (const SequenceInfo& info : kSequences) {
        if (LCase(info.Item) == LCase(item)) return info.Sequence;
    }
    return std::nullopt;
}

const ReportInfo& InfoOfReport(int reportNumber) {
    if (reportNumber < 0 || reportNumber >= kReports) throw PlatformError(Failure::SubscriptOutOfRange);
    return kReportTable[static_cast<std::size_t>(reportNumber)];
}

std::optional<int> ReportOfName(std::string_view name) {
    for (int number = 0; number < kReports; ++number) {
        if (InfoOfReport(number).Name == name) return number;
    }
    return std::nullopt;
}

std::string ReportCaption(int reportNumber, int book) {
    std::string caption(InfoOfReport(reportNumber).Caption);
    if (reportNumber == kComparisonReport) caption += "Federal to " + std::string(BookOf(book).ShortName) + " ";
    return caption;
}

ReportOptions ReportOptions::Defaults(int reportNumber, Date reportDate) {
    const ReportInfo& info = InfoOfReport(reportNumber);
    ReportOptions options;
    options.ReportNumber = reportNumber;
    options.Book = info.Book;
    options.ReportDate = reportDate;
    options.SetMiscellaneous(info.Miscellaneous);
    return options;
}

void ReportOptions::CheckPrintPY(int items) {
    PrintPYSold = PrintPYSold || (items & kPYSold) != 0;
    PrintPYCasualty = PrintPYCasualty || (items & kPYCasualty) != 0;
    PrintPYAbandoned = PrintPYAbandoned || (items & kPYAbandoned) != 0;
    PrintPYLikeKind = PrintPYLikeKind || (items & kPYLikeKind) != 0;
}

void ReportOptions::SetMiscellaneous(int items) {
    DoubleSpace = (items & tallymar::kDoubleSpace) != 0;
    PrintDescrip2 = (items & tallymar::kPrintDescrip2) != 0;
    UpdateDatabase = (items & tallymar::kUpdateDatabase) != 0;
    PrintInvestments = (items & tallymar::kPrintInvestments) != 0;
    Include179 = (items & tallymar::kInclude179) != 0;
}

}  // namespace tallymar
