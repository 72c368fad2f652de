#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "engine/DeprStatus.h"
#include "engine/DepreciationTables.h"
#include "engine/WorkingRecord.h"
#include "engine/YearFacts.h"
#include "law/Law.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Trace.h"
#include "store/AssetRecord.h"

namespace tallymar {

// The depreciation engine: computes the current year of one book of one asset as of one date. A pure calculation over an
// AssetRecord, except that the table computations read DepreciationTableFiles. Bad input yields a status, never a failure, with
// three exceptions that reach the caller as PlatformError and leave its record as it was: a method that the formula types do not
// know (TypeMismatch); a table file that ends early, holds no percentages where they belong, or is asked for a year after the
// 50th (InputPastEnd, TypeMismatch, SubscriptOutOfRange); and, by law, an automobile that the law's tables have no limits for yet
// (ItemNotFound). A book outside 0 to 4 and an amount outside 64 bits fail as everywhere.
//
// One object serves any number of calls, one after the other, in runs: a run is one command over one or many assets, and sees
// each table file as it was when the run first asked for it. A call allocates nothing, except for the first use of a table.
class ADepre {
 public:
    explicit ADepre(TableFinder findTable);
    // All tables in one folder.
    explicit ADepre(std::filesystem::path tableFolder);

    // Every command begins with this: tables are looked for afresh. roundText is the text of the company's Round column ("True"
    // or "False"). law: what the limits of automobiles go by; without it they are those of the program (AutoLimitTable.h).
    void BeginRun(std::string roundText, std::shared_ptr<const Law> law = nullptr);

    // Every call from here on; nullptr for none. It must outlast the engine.
    void SetTrace(Trace* trace) { trace_ = trace; }

    // The month of the fiscal year (1 to 12) wanted for the Bookkeeping book; 0 or below: the whole year. Compute Current sets
    // it, and it stays for later calls of the session.
    std::int16_t ComputeMonth = 0;

    // Of record's book it can change CurrDepr, YearThru, IRSConvUsed, DeprLimit, AddlDepr, Section179 and SwitchBasis, and
    // nothing else. asOfDate is normally the book's fiscal year end; useMidQuarter is the caller's decision.
    void ComputeDepreciation(AssetRecord& record, Date asOfDate, bool useMidQuarter, int book);

    // The status of the last call; empty and 0 when nothing was to be said.
    std::string DeprStatusText() const;
    std::int16_t DeprStatusCode() const { return status_; }
    // The name of the table file that the last call looked for in vain (kStatusTableNotFound); empty otherwise.
    std::string MissingTable() const;

 private:
    CurrencyAmount ComputeYear(const YearFacts& facts);
    YearAmount ComputeByType(const YearFacts& facts);
    void StampConvention(bool useMidQuarter);
    CurrencyAmount MonthOfBookkeeping(CurrencyAmount year, const YearFacts& facts) const;
    void Say(DeprStatus status);
    void TraceCall(const AssetRecord& record, Date asOfDate, int book) const;

    DepreciationTables tables_;
    std::string roundText_;
    std::shared_ptr<const Law> law_;
    // Of the last call.
    WorkingRecord record_;
    DeprStatus status_ = kStatusNone;
    Trace* trace_ = nullptr;
};

}  // namespace tallymar
