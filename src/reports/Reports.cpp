#include "reports/Reports.h"

#include <string>

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "reports/ReportProcedures.h"
#include "reports/ReportTable.h"
#include "reports/YearClosing.h"
#include "store/Books.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr std::string_view kTitle = "Tallymar";

bool IsCalendarDate(Date date) {
    constexpr double kLastDay = 2958465;  // 12/31/9999
    return !date.IsNone() && date.Serial() > 0 && date.Serial() < kLastDay + 1;
}

bool WantsNoCopy(const PlatformError& failure, Prompts& prompts) {
    return prompts.AskYesNo("The company file could not be copied to the Backup folder before posting:\n" +
                                std::string(failure.what()) + "\n\nDo you wish to post without a copy ?",
                            "No Backup Copy");
}

PlatformError PostedInPart(const PlatformError& failure, const std::filesystem::path& copy) {
    std::string text =
        std::string(failure.what()) + "\nThe assets before it have been posted, the others and the year end have not.";
    if (!copy.empty()) text += "\nThe company file as it was before is " + FromUtf8(copy.string());
    return PlatformError(failure.Code(), text);
}

// The user has been asked about the year end that the filter holds.
void RequireSameYear(ReportRun& run) {
    const int book = run.Filter.Options.Book;
    run.Session.CompanyRecordset().MoveFirst();  // the row as it is now, and not as it was when it became the current one
    const Date yearEnd = run.Session.FiscalYearEnd(book);
    if (yearEnd == run.Filter.YearEnd) return;
    throw PlatformError(Failure::RecordLocked, "Another program closed this year: the year end of " +
                                                   std::string(BookOf(book).Name) + " is " + FormatShortDate(yearEnd) +
                                                   " now. Nothing was posted.");
}

// The pages go to the disk while the posting can still be taken back.
void Drawn(ReportRun& run, recordset::WriteBatch& batch) {
    if (!run.OnDrawn) return;
    try {
        run.OnDrawn();
    } catch (...) {
        batch.Rollback();
        throw;
    }
}

ReportResult PostYear(ReportRun& run) {
    ReportResult result;
    YearClosing closing(run.Session, run.Filter.Options.Book);
    bool begun = false;
    try {
        recordset::RunBatch(run.Session.Database(), recordset::OnFailure::KeepDone, [&](recordset::WriteBatch& batch) {
            RequireSameYear(run);
            try {
                result.Copy = closing.CopyCompanyFile();
            } catch (const PlatformError& failure) {
                if (!WantsNoCopy(failure, run.Asking)) return;
            }
            run.Closing = &closing;
            begun = true;
            PrintPostReport(run);
            closing.MoveYearEnd();
            begun = false;
            Drawn(run, batch);
            result.Printed = true;
        });
    } catch (const recordset::BatchTakenBack&) {
        throw;
    } catch (const PlatformError& failure) {
        if (!begun) throw;
        throw PostedInPart(failure, result.Copy);
    }
    return result;
}

}  // namespace

std::optional<ReportFilter> CheckReportOptions(CompanySession& session, ReportOptions& options, Prompts& prompts) {
    const Date yearEnd = session.FiscalYearEnd(options.Book);
    if (!IsCalendarDate(yearEnd)) {
        prompts.Message("Invalid fiscal year-end date for selected book\nPlease use company setup options", kTitle);
        return std::nullopt;
    }
    if (options.YStart.has_value() != options.YEnd.has_value()) {
        prompts.Message("You must enter Both dates or leave both dates blank", kTitle);
        return std::nullopt;
    }
    options.CheckPrintPY(options.PrintPYItems);
    ReportFilter filter{.Options = options,
                        .YearEnd = yearEnd,
                        .FilterFrom = options.YStart.value_or(Date()),
                        .FilterTo = options.YEnd.value_or(Date())};
    if (options.Sequence == ReportSequence::PropertyGroup && !options.GroupAndYear) {
        const Answer answer = prompts.AskYesNoCancel("Print subtotals by Group and Year ", "Subtotals by Group or Group & Year");
        if (answer == Answer::Cancel) return std::nullopt;
        filter.Options.GroupAndYear = answer == Answer::Yes;
    }
    return filter;
}

bool ConfirmPosting(Prompts& prompts) {
    return prompts.AskYesNo("WARNING: Database will be Updated. Do you wish to Continue ?", " Confirm (See Message Below)");
}

std::string ReportTitle(CompanySession& session, const ReportOptions& options) {
    return std::string(Trim(ReportCaption(options.ReportNumber, options.Book))) + " - " + session.CompanyName();
}

std::string PostedText(const std::filesystem::path& copy) {
    std::string text = "The year HAS been posted; do not post again.\n";
    if (!copy.empty())
        text += "The company file as it was before, which prints the same report, is " + FromUtf8(copy.string()) + "\n";
    return text;
}

ReportResult PrintReport(ReportRun& run) {
    const ReportOptions& options = run.Filter.Options;
    run.V.Source = run.Session.DatabaseFileName();
    run.V.Title = ReportTitle(run.Session, options);
    run.LimitsByLaw = run.Session.LimitsByLaw();
    run.Engine.BeginRun(run.Session.RoundText(), run.LimitsByLaw);
    if (options.ReportNumber == kPostReport && options.UpdateDatabase) return PostYear(run);
    {
        const recordset::ReadSnapshot snapshot(run.Session.Database());
        InfoOfReport(options.ReportNumber).Print(run);
    }
    if (run.OnDrawn) run.OnDrawn();
    return {.Printed = true, .Copy = {}};
}

}  // namespace tallymar
