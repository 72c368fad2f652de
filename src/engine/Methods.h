#pragma once

#include "engine/DepreciationTables.h"
#include "engine/WorkingRecord.h"
#include "engine/YearFacts.h"

// The computations of the depreciation types. Of the record they may change the convention and, with the additional first-year
// amount, AddlDepr and MaxDepr.
namespace tallymar {

YearAmount ComputeMcrs(WorkingRecord& record, const YearFacts& facts);
YearAmount ComputeAcrs(WorkingRecord& record, const YearFacts& facts, DepreciationTables& tables);
YearAmount ComputeFromTable(const WorkingRecord& record, const YearFacts& facts, DepreciationTables& tables);
YearAmount ComputeFormula(const WorkingRecord& record, const YearFacts& facts);

YearAmount MarkNonDepreciable(WorkingRecord& record);

// DBPercent as a part of one, over Period.
double AnnualRate(const WorkingRecord& record);

// Sets MaxDepr and AddlDepr from the basis.
void TakeMaxDepr(WorkingRecord& record);
// The additional first-year step of modified ACRS, which decides whether AddlDepr stays.
void ResolveAdditionalDepr(WorkingRecord& record, const YearFacts& facts);

// The row of the law that an automobile of modified ACRS is held to; nullptr for any other asset. One of before the law's first
// day has no limit. Failure::ItemNotFound, with the date, where the tables end before it.
const AutomobileLimits* AutoLimitsByLaw(const Law& law, const AssetRecord& record, int book);

// Holds a passenger automobile to the year's dollar limit: sets DeprLimit, may cut Section179 and AddlDepr, and returns the
// amount that the method keeps.
CurrencyAmount HoldToAutoLimit(WorkingRecord& record, CurrencyAmount amount);

}  // namespace tallymar
