#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "reports/ColumnReport.h"
#include "reports/ReportOptions.h"
#include "reports/ReportSelection.h"

namespace tallymar {

// A report run, as the form and the command line tool go through it:
//   CheckReportOptions, for the post report ConfirmPosting, PrintReport, and then the delivery of the pages.

// What the options select in the open company. Asks for what they leave open and tells what they miss; nullopt: no report. The
// flags that it takes from the options' items stay in the options.
std::optional<ReportFilter> CheckReportOptions(CompanySession& session, ReportOptions& options, Prompts& prompts);

// The warning before a post report, whether it will update the database or not. False: no report.
bool ConfirmPosting(Prompts& prompts);

// The document's title, known before the run: "Fixed Asset Report - Client Inc".
std::string ReportTitle(CompanySession& session, const ReportOptions& options);

struct ReportResult {
    bool Printed = false;        // false: the user did not want to post without a copy of the file, and nothing was done
    std::filesystem::path Copy;  // of the company file from before a posting; empty when none was made
};

// Draws the report on run.V and, for a post report with UpdateDatabase, posts it: all of the posting or none of it is in the file
// whenever the program or the power goes. A failure at one asset ends the report there; what was posted before it stays, and the
// failure's text says so. The assets' index is AssetNum afterwards.
//
// Nothing is posted when the year end is not the one that run.Filter was made for any more, because another program has closed
// the year meanwhile (RecordLocked), or when run.OnDrawn fails.
ReportResult PrintReport(ReportRun& run);

// What stands before a failure that comes when the year has been closed already: only its report is still missing.
std::string PostedText(const std::filesystem::path& copy);

}  // namespace tallymar
