#include <cmath>

#include "engine/AcrsPercentages.h"
#include "engine/EngineMath.h"
#include "engine/Methods.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

YearAmount StraightLineDisposal(const WorkingRecord& record, const YearFacts& facts) {
    CurrencyAmount yearFraction = Units(1);
    if (facts.SaleYear == 1) {
        const bool midMonth = record.Convention() == 'Y' || record.Convention() == 'M';
        yearFraction =
            midMonth ? ToAmount(Real(facts.SaleMonth) / 12.0 - 1.0 / 24.0) : ToAmount(Real(facts.SaleMonth - 1) / 12.0);
    }
    return {ToAmount(Real(record.MaxDepr) / Real(record.Period) * Real(yearFraction)), kStatusDepreciatedToSale};
}

// Straight line over the periods left, from a basis that the user has entered.
YearAmount Switched(const WorkingRecord& record) {
    if (record.SwitchBasis < Units(1)) return {CurrencyAmount(), kStatusNoSwitchBasis};
    const std::int64_t periodsLeft = record.Period.WholePart() - record.SwitchPeriod + 1;
    if (periodsLeft < 1) return {CurrencyAmount(), kStatusSwitchYearError};
    // To the cent from the ratio in double, like every ratio here: 5,147.07 over 6 lies below its half cent and gives 857.84.
    const double cents = Real(record.SwitchBasis) / static_cast<double>(periodsLeft) * 100.0;
    return {ToAmount(std::floor(cents + 0.5) / 100.0)};
}

CurrencyAmount ByPercentage(const WorkingRecord& record, int yearOfLife) {
    const std::int64_t wholePeriod = record.Period.WholePart();
    for (const AcrsClass& entry : kAcrsClasses) {
        if (entry.Period != wholePeriod || yearOfLife > static_cast<int>(entry.Percent.size())) continue;
        return PercentageToCent(record.MaxDepr, Units(entry.Percent.at(static_cast<std::size_t>(yearOfLife - 1))));
    }
    return {};
}

CurrencyAmount ByMethod(const WorkingRecord& record, const YearFacts& facts) {
    const bool straightLine = record.DeprMethod == kSl;
    CurrencyAmount amount = straightLine ? ToAmount(Real(record.MaxDepr) / Real(record.Period))  //
                                         : ByPercentage(record, facts.YearOfLife);
    if (record.Convention() == 'N' && facts.Disposed) amount = ToAmount(Real(amount) / 12.0 * Real(facts.SaleMonth));
    const bool firstOrLast = facts.YearOfLife == 1 || facts.YearOfLife == (record.Period + Units(1)).WholePart();
    if (straightLine && record.Convention() == 'Y' && firstOrLast) amount = ToAmount(Real(amount) / 2.0);
    return amount;
}

}  // namespace

YearAmount ComputeAcrs(WorkingRecord& record, const YearFacts& facts, DepreciationTables& tables) {
    const std::int16_t method = record.DeprMethod;
    if (method == kMi || method == kXx) return MarkNonDepreciable(record);
    if (facts.Disposed && !record.IsRealProperty() && method == kSl) return StraightLineDisposal(record, facts);
    if (record.SwitchYear > 0 && facts.AsOfYear >= record.SwitchYear) return Switched(record);
    if (method != kAc && method != kSl && method != kLh && method != kUt) return {CurrencyAmount(), kStatusNotAcrsMethod};
    if (record.DeprType == kAcam || record.ClassLife > Units(10)) return ComputeFromTable(record, facts, tables);
    return {ByMethod(record, facts)};
}

}  // namespace tallymar
