#pragma once

#include <functional>

#include "engine/ADepre.h"
#include "platform/page/PageDocument.h"
#include "platform/prompts/Prompts.h"
#include "reports/ReportSelection.h"
#include "reports/ReportShape.h"
#include "store/CompanySession.h"

namespace tallymar {

class YearClosing;

// What a report procedure works with. The assets are read in the order of the index that is set.
struct ReportRun {
    CompanySession& Session;
    ADepre& Engine;  // asked by the projection only
    Prompts& Asking;
    PageDocument& V;
    ReportFilter Filter;
    Date Now;                        // for the days owned of what is unsold
    DetailTable* Details = nullptr;  // takes the detail lines as typed cells
    // Hears that the pages are complete: before a posting is committed, so that what it throws takes the posting back.
    std::function<void()> OnDrawn = {};
    YearClosing* Closing = nullptr;               // posts each asset printed
    std::shared_ptr<const Law> LimitsByLaw = {};  // of a company that goes by it
};

// The loop of the family: page heads, one detail line an asset, the subtotals of the groups and the closing block, as the shape
// tells them. A failure names the asset that it came at.
void PrintColumnReport(ReportRun& run, const ReportShape& shape);

}  // namespace tallymar
