#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ADepre.h"
#include "platform/prompts/Prompts.h"
#include "platform/runtime/PerBook.h"
#include "store/CompanySession.h"

namespace tallymar {

struct ComputeCurrentOptions {
    PerBook<bool> Compute;        // the books to run
    PerBook<bool> UseMidQuarter;  // the preparer's decision, from an earlier run's percentages
};

// What went into service in the year computed: modified ACRS personal property alone, from the amounts that stood before the run.
struct InServiceTotals {
    CurrencyAmount InService;
    CurrencyAmount FourthQuarter;

    double FourthQuarterPercent() const;  // 0 when nothing went into service
    // Above 40% the mid-quarter convention applies (IRC section 168(d)(3)(A)); whether it is used stays the preparer's decision.
    bool IsAboveFortyPercent() const;

    // As the window and the command line tool show them.
    std::string InServiceText() const;
    std::string FourthQuarterText() const;
    std::string PercentText() const;
};

// What a run has done in one book.
struct ComputedBook {
    bool Chosen = false;
    InServiceTotals Totals;
    bool YearEndUnset = false;     // the company has no fiscal year end for it: every asset came out as 0
    std::int64_t Computed = 0;     // assets computed and written
    std::int64_t Errors = 0;       // those of them that ended with an error status (IsErrorStatus)
    std::string FirstErrorAsset;   // number of the first of these
    std::string FirstErrorStatus;  // its status in words, with the table file that was missing: "Deprec. Table NOT Found"
    bool Failed = false;           // the run ended here
};

using ComputeCurrentResult = PerBook<ComputedBook>;

// What a preparer must know of a run beside its figures, one sentence each and none after a smooth run: books without a year end,
// assets with an error status, how far a failed run has come. Shown by the window and on standard error.
std::vector<std::string> RemarksOn(const ComputeCurrentResult& result);
// The run in one line: "73 assets, Federal 40.75% in the 4th quarter: above 40%". Books of the same share are told together.
std::string SummaryOf(const ComputeCurrentResult& result);

// One asset of one book, as it has just been computed.
struct ComputedAsset {
    std::string_view AssetNum;
    int Book;
    CurrencyAmount CurrDepr;
    int Status;
    std::string_view StatusText;
};

// Computes the current year of every asset for the chosen books, as of each book's fiscal year end, and writes the results back.
// Bad assets do not stop it; a failure that ends it (a type mismatch, a bad table file) comes as PlatformError with the asset's
// number and book before the text, and the rows done before it stay. The result tells what was done, also after a failure.
// engine.ComputeMonth has its effect on book 3. onComputed, when given, hears of every asset and book.
void ComputeCurrent(CompanySession& session, ADepre& engine, const ComputeCurrentOptions& options, Prompts& prompts,
                    ComputeCurrentResult& result, const std::function<void(const ComputedAsset&)>& onComputed = {});

}  // namespace tallymar
