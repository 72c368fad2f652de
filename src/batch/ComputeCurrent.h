#pragma once

#include <functional>
#include <string>
#include <string_view>

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

    // As the window and the command line tool show them.
    std::string InServiceText() const;
    std::string FourthQuarterText() const;
    std::string PercentText() const;
};

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
// number and book before the text, and the rows done before it stay. engine.ComputeMonth has its effect on book 3. onComputed,
// when given, hears of every asset and book.
PerBook<InServiceTotals> ComputeCurrent(CompanySession& session, ADepre& engine, const ComputeCurrentOptions& options,
                                        Prompts& prompts, const std::function<void(const ComputedAsset&)>& onComputed = {});

}  // namespace tallymar
