#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/PerBook.h"
#include "store/AssetRecord.h"

namespace tallymar {

// The depreciation engine: computes the current year of one book of one asset as of one date. A pure calculation over an
// AssetRecord, but that the table computations read DepreciationTableFiles. Bad input yields a status, never a failure, with two
// exceptions that reach the caller as PlatformError and leave its record as it was: a method that the formula types do not know
// (TypeMismatch) and a table file that ends early or holds no numbers where they belong (InputPastEnd, TypeMismatch).
//
// One object serves any number of calls, one after the other; the working items and the status are its members. It allocates
// nothing per call except while a table file is read.
class ADepre {
 public:
    // tableFolder: where the DepreciationTableFiles lie.
    explicit ADepre(std::filesystem::path tableFolder);

    // Text of the company's Round column ("True" or "False"); callers set it before a run.
    std::string RoundText;
    // The month of the fiscal year (1 to 12) wanted for the Bookkeeping book; 0 or below: the whole year. Compute Current sets it, and it
    // stays for later calls of the session.
    std::int16_t ComputeMonth = 0;

    // Of record's book it can change CurrDepr, YearThru, IRSConvUsed, DeprLimit, AddlDepr, Section179 and SwitchBasis, and nothing else.
    // asOfDate is normally the book's fiscal year end; useMidQuarter is the caller's decision.
    void ComputeDepreciation(AssetRecord& record, Date asOfDate, bool useMidQuarter, int book);

    // The status of the last call; empty and 0 when nothing was to be said.
    const std::string& DeprStatusText() const { return statusText_; }
    std::int16_t DeprStatusCode() const { return statusCode_; }

 private:
    std::filesystem::path tableFolder_;
    std::string statusText_;
    std::int16_t statusCode_ = 0;
};

}  // namespace tallymar
