#include <algorithm>

#include "engine/EngineMath.h"
#include "engine/Methods.h"
#include "store/Vocabularies.h"

// Modified ACRS by formula: the result agrees with the percentage tables of IRS Publication 946 within their rounding, and
// follows the remaining basis instead of a table.
namespace tallymar {

namespace {

constexpr CurrencyAmount Eighths(int eighths) {
    return CurrencyAmount::FromTenThousandths(CurrencyAmount::kScale / 8 * eighths);
}
constexpr CurrencyAmount kHalfYear = Eighths(4);
constexpr CurrencyAmount kWholeYear = Eighths(8);

// The part of the year up to the middle of a month's quarter, and the part after it.
struct QuarterParts {
    CurrencyAmount Before;
    CurrencyAmount After;
};
constexpr QuarterParts kQuarters[] = {
    {Eighths(1), Eighths(7)},
    {Eighths(3), Eighths(5)},
    {Eighths(5), Eighths(3)},
    {Eighths(7), Eighths(1)},
};

// nullptr for a month outside 1 to 12: a disposal without a date has none.
const QuarterParts* QuarterOf(int month) {
    return month >= 1 && month <= 12 ? &kQuarters[(month - 1) / 3] : nullptr;
}

CurrencyAmount StraightLine(const WorkingRecord& record, CurrencyAmount yearFraction) {
    return ToAmount(Real(record.MaxDepr) / Real(record.Period) * Real(yearFraction));
}

CurrencyAmount Declining(const WorkingRecord& record, CurrencyAmount yearFraction) {
    return ToAmount(Real(record.MaxDepr - record.PrevDepr) * AnnualRate(record) * Real(yearFraction));
}

// What is left over the years left: the switch to straight line, tested afresh each year. 0 when no years are left.
//
// The years left are counted at the start of the year computed, with the part that the convention has moved past the last whole
// year.
CurrencyAmount RestOverYearsLeft(const WorkingRecord& record, const YearFacts& facts) {
    CurrencyAmount yearsLeft = record.Period - Units(record.YearThru);
    switch (record.Convention()) {
        case 'Y':
        case 'M':
            yearsLeft += kHalfYear;
            break;
        case 'Q':
            if (const QuarterParts* quarter = QuarterOf(facts.ServiceMonth)) yearsLeft += quarter->Before;
            break;
        default:
            break;
    }
    return yearsLeft.IsZero() ? CurrencyAmount() : ToAmount(Real(record.MaxDepr - record.PrevDepr) / Real(yearsLeft));
}

YearAmount MidQuarterFirstYear(WorkingRecord& record, const YearFacts& facts) {
    record.IRSConvUsed = "Q";
    CurrencyAmount amount;
    if (record.DeprMethod == kSl) {
        amount = ToAmount(Real(record.MaxDepr) / Real(record.Period));
    } else if (record.DeprMethod == kDb) {
        amount = ToAmount(Real(record.MaxDepr) * AnnualRate(record));
    }
    if (const QuarterParts* quarter = QuarterOf(facts.ServiceMonth)) amount = amount * quarter->After;
    return {amount};
}

YearAmount PersonalStraightLine(WorkingRecord& record, const YearFacts& facts, CurrencyAmount yearFraction) {
    ResolveAdditionalDepr(record, facts);
    if (facts.UseMidQuarter && facts.YearOfLife == 1) return MidQuarterFirstYear(record, facts);
    return {StraightLine(record, yearFraction)};
}

YearAmount RealStraightLine(WorkingRecord& record, const YearFacts& facts, CurrencyAmount yearFraction) {
    if (facts.YearOfLife > 1 && !facts.Disposed) return {StraightLine(record, yearFraction)};
    if (facts.YearOfLife == 1) record.IRSConvUsed = "M";
    const double wholeYear = Real(record.MaxDepr) / Real(record.Period);
    return {ToAmount(wholeYear * Real(yearFraction) - wholeYear / 24.0)};  // the month in service counts half
}

YearAmount DecliningBalance(WorkingRecord& record, const YearFacts& facts, CurrencyAmount yearFraction) {
    // COMPAT: before the additional step, unlike the straight line.
    if (facts.UseMidQuarter && facts.YearOfLife == 1) return MidQuarterFirstYear(record, facts);
    if ((record.Period + kWholeYear + kHalfYear).WholePart() < facts.YearOfLife && !record.Auto) {
        return {CurrencyAmount(), kStatusPeriodCompleted};
    }
    ResolveAdditionalDepr(record, facts);
    const CurrencyAmount declining = Declining(record, yearFraction);
    if (facts.YearOfLife < 2) return {declining};
    return {std::max(declining, RestOverYearsLeft(record, facts))};
}

CurrencyAmount PersonalDisposalFraction(const WorkingRecord& record, int saleMonth) {
    const QuarterParts* quarter = QuarterOf(saleMonth);
    switch (record.Convention()) {
        case 'N':
            return ToAmount(Real(saleMonth - 1) / 12.0);
        case 'Y':
            return kHalfYear;
        case 'Q':
            return quarter != nullptr ? quarter->Before : kWholeYear;
        default:
            return kWholeYear;
    }
}

YearAmount PersonalDisposal(const WorkingRecord& record, const YearFacts& facts) {
    const CurrencyAmount yearFraction = PersonalDisposalFraction(record, facts.SaleMonth);
    if (record.DeprMethod == kSl) return {StraightLine(record, yearFraction), kStatusDepreciatedToSale};
    const CurrencyAmount declining = Declining(record, yearFraction);
    if (facts.YearOfLife < 2) return {declining};
    return {std::max(declining, RestOverYearsLeft(record, facts) * yearFraction), kStatusDepreciatedToSale};
}

YearAmount RealDisposal(const WorkingRecord& record, const YearFacts& facts) {
    CurrencyAmount yearFraction = kWholeYear;
    if (facts.SaleYear == 1) {
        yearFraction = record.Convention() == 'Y' ? ToAmount(Real(facts.SaleMonth) / 12.0 - 1.0 / 24.0)
                                                  : ToAmount(Real(facts.SaleMonth - 1) / 12.0);
    }
    const CurrencyAmount amount = record.DeprMethod == kSl ? StraightLine(record, yearFraction) : Declining(record, yearFraction);
    return {amount, kStatusDepreciatedToSale};
}

CurrencyAmount FirstYearFraction(const WorkingRecord& record, int serviceMonth) {
    CurrencyAmount yearFraction = kWholeYear;
    if (record.Convention() == 'N' || record.IsRealProperty()) yearFraction -= ToAmount(Real(serviceMonth - 1) / 12.0);
    if (record.IsPersonalProperty() && record.Convention() == 'Y') yearFraction = kHalfYear;
    return yearFraction;
}

}  // namespace

YearAmount ComputeMcrs(WorkingRecord& record, const YearFacts& facts) {
    if (facts.Disposed && facts.SaleYear >= 1) {
        if (record.IsPersonalProperty()) return PersonalDisposal(record, facts);
        if (record.IsRealProperty()) return RealDisposal(record, facts);
        return {};
    }
    const CurrencyAmount yearFraction = facts.YearOfLife == 1 ? FirstYearFraction(record, facts.ServiceMonth) : kWholeYear;
    switch (record.DeprMethod) {
        case kSl:
            if (record.IsPersonalProperty()) return PersonalStraightLine(record, facts, yearFraction);
            if (record.IsRealProperty()) return RealStraightLine(record, facts, yearFraction);
            return {};
        case kDb:
            return DecliningBalance(record, facts, yearFraction);
        case kMi:
        case kXx:
            return MarkNonDepreciable(record);
        default:
            return {CurrencyAmount(), kStatusIncorrectMethod};
    }
}

}  // namespace tallymar
