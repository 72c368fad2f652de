#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "engine/DeprStatus.h"
#include "engine/WorkingRecord.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "store/AssetRecord.h"

namespace tallymar {

// The depreciation engine: computes the current year of one book of one asset as of one date. A pure calculation over an
// AssetRecord, but that the table computations read DepreciationTableFiles. Bad input yields a status, never a failure, with two
// exceptions that reach the caller as PlatformError and leave its record as it was: a method that the formula types do not know
// (TypeMismatch), and a table file that ends early, holds no numbers where they belong, or is asked for a year behind the 50th
// (InputPastEnd, TypeMismatch, SubscriptOutOfRange). A book outside 0 to 4 and an amount outside 64 bits fail as everywhere.
//
// One object serves any number of calls, one after the other; the working items and the status are its members. It allocates
// nothing per call except while a table file is read.
class ADepre {
 public:
    // tableFolder: where the DepreciationTableFiles lie.
    explicit ADepre(std::filesystem::path tableFolder);

    // Text of the company's Round column ("True" or "False"); callers set it before a run.
    std::string RoundText;
    // The month of the fiscal year (1 to 12) wanted for the Bookkeeping book; 0 or below: the whole year. Compute Current sets
    // it, and it stays for later calls of the session.
    std::int16_t ComputeMonth = 0;

    // Of record's book it can change CurrDepr, YearThru, IRSConvUsed, DeprLimit, AddlDepr, Section179 and SwitchBasis, and
    // nothing else. asOfDate is normally the book's fiscal year end; useMidQuarter is the caller's decision.
    void ComputeDepreciation(AssetRecord& record, Date asOfDate, bool useMidQuarter, int book);

    // The status of the last call; empty and 0 when nothing was to be said.
    const std::string& DeprStatusText() const { return statusText_; }
    std::int16_t DeprStatusCode() const { return statusCode_; }

 private:
    // Driver (ADepre.cpp).
    void ComputeYear();
    void ComputeByType();
    void StampConvention();
    void CapAndRound();
    void ComputeMonthOfBookkeeping();
    void SetStatus(DeprStatus status);
    void MarkNonDepreciable();
    void CountYears();

    // Where the asset stands (Disposal.cpp, DepreciableAmount.cpp).
    void EvaluateDisposed();
    bool IsValid();
    void EvaluateDisposal();
    void ComputeMaxDepr();
    void TakeAdditionalFirstYear();
    void ResolveAdditionalDepr();

    // Modified ACRS by formula (Mcrs.cpp).
    void ComputeMcrs();
    void McrsPersonalStraightLine();
    void McrsRealStraightLine();
    void McrsDecliningBalance();
    void McrsMidQuarterFirstYear();
    void McrsPersonalDisposal();
    void McrsRealDisposal();
    CurrencyAmount RemainingPeriod() const;

    // ACRS (Acrs.cpp), the percentage tables from files (TableComputation.cpp), and the months-counting types (Formula.cpp).
    void ComputeAcrs();
    void ComputeSwitchedAcrs();
    void ComputeAcrsByMethod();
    void ComputeFromTable();
    void ComputeFormula();
    void FormulaSumOfYears();
    void FormulaDisposal();

    void ApplyAutoLimits();

    double AnnualRate() const;  // DBPercent as a part of one, over Period

    std::filesystem::path tableFolder_;
    std::string statusText_;
    std::int16_t statusCode_ = 0;

    // The working items of the call that runs; each call overwrites them.
    WorkingRecord record_;
    Date asOfDate_;
    int asOfYear_ = 0;
    int asOfMonth_ = 0;
    bool useMidQuarter_ = false;
    bool disposed_ = false;  // the asset has left the books
    int saleYear_ = 0;       // 1: the disposal falls in the year computed; 0 or below: after it; above 1: in an earlier year
    int saleMonth_ = 0;      // fiscal month of the disposal
    int yearOfLife_ = 0;     // the fiscal year that contains InService is 1
    int serviceMonth_ = 0;   // fiscal month of InService, 1 to 12
    CurrencyAmount yearFraction_;  // the part of a full year that applies
    CurrencyAmount yearResult_;    // the amount computed
    CurrencyAmount maxDepr_;       // what may be depreciated
};

}  // namespace tallymar
