#pragma once

#include <cstdint>
#include <string>

#include "platform/prompts/Prompts.h"
#include "platform/runtime/CurrencyAmount.h"
#include "store/CompanySession.h"

namespace tallymar {

// How an asset depreciates in one book, in the words and figures of the asset form. Type and method are codes ("MCRS", "DB").
struct DepreciationSetUp {
    std::string AssetType;  // "PP", "RL" or "IN"
    std::string DeprType;
    std::string DeprMethod;
    std::string DBPercent;     // "200"; blank is 0
    CurrencyAmount ClassLife;  // years; compared with, and stored in, the whole years of FedLife, ties to even
    CurrencyAmount Period;     // years
};

struct ChangeRangeOptions {
    std::string Division;    // blank: every division; else see SelectsAtFullWidth
    std::string Department;  // likewise
    std::string Year;        // see SelectsYear
    int Book = 1;
    DepreciationSetUp From;
    DepreciationSetUp To;
};

inline constexpr std::string_view kChangeRangeName = "Change Range of Assets";

// Gives every asset that matches the whole of From, in one book, the set-up To. There is no wildcard: an asset that differs in
// one of the six stays. One that already is as To says counts and is written too. Nothing is computed again.
// COMPAT: ClassLife itself stays, so the next reading of an asset takes FedLife from it again.
// Returns how many assets were changed. Fails with InvalidCall, before anything is written, for a book outside 1 to 4 or a To
// whose type, method or asset type is none; else as ChangeAssets tells.
std::int64_t ChangeRange(CompanySession& session, const ChangeRangeOptions& options, Prompts& prompts);

}  // namespace tallymar
