#include "reports/Section179Warning.h"

#include "platform/runtime/Format.h"

namespace tallymar {

std::string WarningText(const WarningRow& row) {
    return "*** WARNING - Current Year 179 Expense EXCEEDS $" + Format(static_cast<long long>(row.Limit), "###,##0") + " ***";
}

}  // namespace tallymar
