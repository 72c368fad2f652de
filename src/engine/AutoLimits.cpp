#include <algorithm>

#include "engine/AutoLimitTable.h"
#include "engine/EngineMath.h"
#include "engine/LawDates.h"
#include "engine/Methods.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr auto kRowEnds = [] {
    std::array<double, kAutoLimits.size()> ends{};
    std::transform(kAutoLimits.begin(), kAutoLimits.end(), ends.begin(), EndOfRow);
    return ends;
}();
static_assert(std::is_sorted(kRowEnds.begin(), kRowEnds.end()));

const AutomobileLimits kNoLimits{};

CurrencyAmount BusinessPart(int dollars, const WorkingRecord& record) {
    return ToAmount(Real(Units(dollars) * record.BusinessUse) / 100.0);
}

int DollarsOfYear(const WorkingRecord& record) {
    if (record.AutoLimits != nullptr) {
        return record.AutoLimits->Limit(record.YearThru + 1, record.AddlDepr > CurrencyAmount());
    }
    if (record.InService > kDayBeforeAdditionalDepreciation && record.YearThru == 0) return kFirstYearLimitWithAdditional;
    const int year = std::min(record.YearThru + 1, 4);
    return AutoLimitsFor(record.InService).Limits.at(static_cast<std::size_t>(year - 1));
}

// A later year by law: of the special allowance only what the first year's limit left of it was allowed. The rest is recovered
// like all unrecovered basis, after the recovery period (IRC section 280F(a)(1)(B)); until then the method goes on from what it
// would have left if all of it had been allowed.
CurrencyAmount TakeBackLostAllowance(WorkingRecord& record, CurrencyAmount amount) {
    const CurrencyAmount firstYear = BusinessPart(record.AutoLimits->Limit(1, true), record);
    const CurrencyAmount allowed = std::clamp(firstYear - record.Section179, CurrencyAmount(), record.AddlDepr);
    amount = std::min(amount, record.MaxDepr - record.PrevDepr);
    record.MaxDepr += record.AddlDepr - allowed;
    record.AddlDepr = allowed;
    return amount;
}

}  // namespace

const AutomobileLimits* AutoLimitsByLaw(const Law& law, const AssetRecord& record, int book) {
    if (record.DeprType[book] != kMcrs || !record.Auto[book] || record.InService.IsNone()) return nullptr;
    const Date acquired = record.Purchased.IsNone() ? record.InService : record.Purchased;
    const AutomobileLimits* limits = law.Automobile(KindOfGroup(record.TaxGroup), acquired, record.InService);
    if (limits != nullptr) return limits;
    if (record.InService < law.FirstLimitedDay()) return &kNoLimits;
    throw PlatformError(Failure::ItemNotFound,
                        "law/automobiles.txt has no limits for an automobile in service on " + FormatIsoDate(record.InService));
}

const AutoLimitRow& AutoLimitsFor(Date inService) {
    const auto end = std::upper_bound(kRowEnds.begin(), kRowEnds.end() - 1, inService.Serial());
    return kAutoLimits[static_cast<std::size_t>(end - kRowEnds.begin())];
}

CurrencyAmount HoldToAutoLimit(WorkingRecord& record, CurrencyAmount amount) {
    CurrencyAmount& limit = record.DeprLimit;
    CurrencyAmount& section179 = record.Section179;
    CurrencyAmount& additional = record.AddlDepr;
    limit = CurrencyAmount();
    if (record.DeprType != kMcrs || !record.Auto) return amount;

    limit = BusinessPart(DollarsOfYear(record), record);
    if (limit <= CurrencyAmount()) return amount;

    if (record.YearThru > 0) {
        // COMPAT: as delivered, what the first year's limit has cut of the additional amount is not recovered.
        if (record.AutoLimits != nullptr && additional > CurrencyAmount()) amount = TakeBackLostAllowance(record, amount);
        amount = std::min(amount, limit);
        // After its recovery period the automobile goes on at the limit, until the cap at what is left stops it.
        if (record.Period < Units(record.YearThru)) amount = limit;
    } else if (additional.IsZero()) {
        if (section179 > limit) {
            section179 = limit;
            amount = CurrencyAmount();
        }
        if (amount + section179 > limit) amount = limit - section179;
    } else if (additional > CurrencyAmount()) {
        // The three amounts share the first year's limit in the order Section 179, additional, method. Where all three fit
        // together the last three tests still bite on a negative amount.
        if (section179 > limit) {
            section179 = limit;
            additional = CurrencyAmount();
            amount = CurrencyAmount();
        } else if (section179 + additional > limit) {
            additional = limit - section179;
            amount = CurrencyAmount();
        } else if (amount + section179 + additional > limit) {
            amount = limit - section179 - additional;
        } else if (additional > limit) {
            additional = limit;
            amount = CurrencyAmount();
        } else if (additional + amount > limit || section179 + amount > limit) {
            amount = limit - section179 - additional;
        }
    }
    return amount;
}

}  // namespace tallymar
