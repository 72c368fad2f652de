#include "store/Helpers.h"

#include <algorithm>

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

void RoundAmount(CurrencyAmount& amount, std::string_view roundFlag) {
    amount = CurrencyAmount::FromDouble(static_cast<double>(WholePartOfProduct(amount, Units(100))) / 100.0);
    if (roundFlag == "Y") amount = CurrencyAmount::FromInteger(WholePartOfProduct(amount, Units(1)));
}

CurrencyAmount PercentOf(CurrencyAmount value) {
    return CurrencyAmount::FromDouble(value.ToDouble() / 100.0);
}

Date TextToDate(std::string_view text) {
    return ParseDate(text).value_or(Date());
}

YearMonthCount YearsAndMonths(Date from, Date to) {
    const int fromYear = from.Year();
    const int toYear = to.Year();
    if (fromYear > toYear) return {};
    int months = from.Month() - to.Month();
    int carry = 0;
    if (months < 1) {
        months += 12;
        carry = 1;
    }
    return {static_cast<std::int16_t>(toYear + carry - fromYear), static_cast<std::int16_t>(months)};
}

std::int32_t DaysBetween(Date from, Date to) {
    if (from.Year() > to.Year()) return 0;
    return ToLong(to.Serial() - from.Serial());
}

void SplitCityState(std::string& city, std::string& state) {
    const std::string line = UCase(RTrim(city));
    if (line.size() < 3 || line[line.size() - 3] != ' ') return;
    const std::string_view ending = std::string_view(line).substr(line.size() - 2);
    for (const std::string_view code : kStateCodes) {
        if (ending == code) {
            state = ending;
            city.resize(line.size() - 3);
            return;
        }
    }
}

std::int16_t ScaledInteger(float first, float second) {
    return ToInteger(static_cast<double>(first / second));
}

void RequireNumberPrefix(std::string_view prefix) {
    const bool isPlain =
        std::all_of(prefix.begin(), prefix.end(), [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
    if (!isPlain) throw PlatformError(Failure::InvalidCall, "An asset number prefix is of letters A-Z and digits");
}

}  // namespace tallymar
