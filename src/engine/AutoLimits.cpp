#include <algorithm>

#include "engine/ADepre.h"
#include "engine/AutoLimitTable.h"
#include "engine/EngineMath.h"
#include "engine/LawDates.h"
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

void ADepre::ApplyAutoLimits() {
    CurrencyAmount& limit = record_.DeprLimit;
    CurrencyAmount& section179 = record_.Section179;
    CurrencyAmount& additional = record_.AddlDepr;
    limit = CurrencyAmount();
    if (record_.DeprType != kMcrs || !record_.Auto) return;

    const int year = std::min(record_.YearThru + 1, 4);
    int dollars = AutoLimitsFor(record_.InService).Limits.at(static_cast<std::size_t>(year - 1));
    if (record_.InService > kDayBeforeAdditionalDepreciation && record_.YearThru == 0) dollars = kFirstYearLimitWithAdditional;
    limit = ToAmount(Real(Units(dollars) * record_.BusinessUse) / 100.0);
    if (limit <= CurrencyAmount()) return;

    if (record_.YearThru > 0) {
        yearResult_ = std::min(yearResult_, limit);
        // Behind its recovery period the automobile goes on at the limit, until the cap at what is left stops it.
        if (record_.Period < Units(record_.YearThru)) yearResult_ = limit;
    } else if (additional.IsZero()) {
        if (section179 > limit) {
            section179 = limit;
            yearResult_ = CurrencyAmount();
        }
        if (yearResult_ + section179 > limit) yearResult_ = limit - section179;
    } else if (additional > CurrencyAmount()) {
        // The three amounts share the first year's limit in the order Section 179, additional, method. Where all three fit
        // together the last three tests still bite on a negative amount.
        if (section179 > limit) {
            section179 = limit;
            additional = CurrencyAmount();
            yearResult_ = CurrencyAmount();
        } else if (section179 + additional > limit) {
            additional = limit - section179;
            yearResult_ = CurrencyAmount();
        } else if (yearResult_ + section179 + additional > limit) {
            yearResult_ = limit - section179 - additional;
        } else if (additional > limit) {
            additional = limit;
            yearResult_ = CurrencyAmount();
        } else if (additional + yearResult_ > limit || section179 + yearResult_ > limit) {
            yearResult_ = limit - section179 - additional;
        }
    }
}

}  // namespace tallymar
