#pragma once

#include "engine/DeprStatus.h"
#include "engine/WorkingRecord.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar {

// What is known of the year computed before a method runs.
struct YearFacts {
    int AsOfYear = 0;
    int YearOfLife = 0;    // the fiscal year that contains InService is 1
    int ServiceMonth = 0;  // fiscal month of InService, 1 to 12
    bool UseMidQuarter = false;
    bool Disposed = false;                // the asset has left the books by the end of the year
    int SaleYear = 0;                     // 1: the disposal falls in the year; 0 or below: after it; above 1: in an earlier year
    int SaleMonth = 0;                    // fiscal month of the disposal
    DeprStatus SaleStatus = kStatusNone;  // what the disposal alone has to say
};

// For a record whose dates are valid (no status refuses it).
YearFacts FactsOfYear(const WorkingRecord& record, Date asOf, bool useMidQuarter);

// A method's answer: the amount of the year before the limits and the cap, and what is to be said of it. kStatusNone leaves
// standing what the disposal has said.
struct YearAmount {
    CurrencyAmount Amount;
    DeprStatus Status = kStatusNone;
};

}  // namespace tallymar
