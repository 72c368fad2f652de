#include "reports/Section179Warning.h"

#include "platform/runtime/Format.h"

namespace tallymar {

std::string WarningText(int limit) {
    return "*** WARNING - Current Year 179 Expense EXCEEDS $" + Format(static_cast<long long>(limit), "###,##0") + " ***";
}

std::string UnknownLimitText(int taxYear) {
    return "*** WARNING - NO 179 Limit of " + std::to_string(taxYear) + " in law/section179.txt ***";
}

}  // namespace tallymar
