#include <algorithm>

#include "engine/AutoLimitTable.h"
#include "engine/EngineMath.h"
#include "engine/LawDates.h"
#include "engine/Methods.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr auto kRowEnds = [] {
    std::array<double, kAutoLimits.size()> ends{};
    std::transform(kAutoLimits.begin(), kAutoLimits.end(), ends.begin(), EndOfRow);
    return ends;
}();
static_assert(std::is_sorted(kRowEnds.begin(), kRowEnds.end()));

}  // namespace

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

    const int year = std::min(record.YearThru + 1, 4);
    int dollars = AutoLimitsFor(record.InService).Limits.at(static_cast<std::size_t>(year - 1));
    if (record.InService > kDayBeforeAdditionalDepreciation && record.YearThru == 0) dollars = kFirstYearLimitWithAdditional;
    limit = ToAmount(Real(Units(dollars) * record.BusinessUse) / 100.0);
    if (limit <= CurrencyAmount()) return amount;

    if (record.YearThru > 0) {
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
