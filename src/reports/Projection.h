#pragma once

#include "reports/ReportColumns.h"

namespace tallymar {

struct ReportRun;

// Drives the engine forward over a copy of the asset, year by year, as if each year were computed and posted: years 2 to 5 after
// the stored year 1. COMPAT: the years start from the company's Federal year end whichever book is reported; when that has not
// been set up the user is told, and the years to come keep what they held.
void Compute4Years(ReportRun& run, const AssetRecord& asset, FourYears& years);

}  // namespace tallymar
