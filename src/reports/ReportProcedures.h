#pragma once

namespace tallymar {

struct ReportRun;

// One procedure a report. None computes depreciation but the projection, and none changes data but the post report.
void PrintFAReport(ReportRun& run);
void PrintCDReport(ReportRun& run);
void PrintAVReport(ReportRun& run);
void PrintFMVReport(ReportRun& run);
void PrintNBVReport(ReportRun& run);
void PrintASReport(ReportRun& run);
void PrintSCReport(ReportRun& run);
void PrintPostReport(ReportRun& run);  // run.Closing decides whether it posts
void PrintPTaxReport(ReportRun& run);
void PrintCompReport(ReportRun& run);
void Print4YearReport(ReportRun& run);

}  // namespace tallymar
