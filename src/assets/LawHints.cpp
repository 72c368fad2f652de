#include "assets/LawHints.h"

#include "platform/runtime/DateText.h"
#include "platform/runtime/Format.h"
#include "store/Helpers.h"

namespace tallymar {

namespace {

constexpr CurrencyAmount kAll = Units(100);

std::string Dollars(int dollars) {
    return Format(static_cast<long long>(dollars), "###,##0");
}

std::string AllowanceHint(const Law& law, Date acquired, Date inService) {
    const AllowanceRate* rate = law.Allowance(acquired, inService);
    if (rate == nullptr) return "The law's table has no percentage for " + FormatShortDate(inService);
    std::string hint = "By law " + std::to_string(rate->Percent) + "%";
    if (!rate->Election.empty()) hint += " (" + rate->Election + ")";
    return hint;
}

std::string ExpenseHint(const Law& law, Date inService, Date yearEnd) {
    const int year = TaxYearOfDay(inService, yearEnd);
    const Section179Limits* limits = law.Section179(year);
    if (limits == nullptr) return "The law's table has no limit of " + std::to_string(year);
    std::string hint = "By law " + Dollars(limits->Limit) + " in all for " + std::to_string(year);
    if (limits->Suv) hint += ", heavy SUV " + Dollars(*limits->Suv);
    return hint;
}

std::string AutomobileHint(const Law& law, VehicleKind kind, Date acquired, Date inService) {
    const AutomobileLimits* limits = law.Automobile(kind, acquired, inService);
    if (limits == nullptr) return "The law's table has no limits for " + FormatShortDate(inService);
    std::string hint = "By law " + Dollars(limits->First);
    if (limits->WithAllowance) hint += " (" + Dollars(*limits->WithAllowance) + " with the allowance)";
    return hint + ", " + Dollars(limits->Second) + ", " + Dollars(limits->Third) + ", then " + Dollars(limits->Later) + ": " +
           std::string(KindName(limits->Kind));
}

// Classes of one period stand together: the hint has one line.
std::string ClassesHint(const Law& law, Date inService) {
    std::string hint;
    int years = 0;
    for (const PropertyClass* property : law.Classes(inService)) {
        if (property->Years != years) {
            years = property->Years;
            hint += (hint.empty() ? "By law " : "; ") + std::to_string(years) + " years: ";
        } else {
            hint += ", ";
        }
        hint += property->Property;
    }
    return hint;
}

}  // namespace

std::string LawHint(const Law& law, const AssetFieldValues& values, AssetField field, Date yearEnd) {
    if (field == AssetField::TaxGroup) return "TRUCK, VAN, SUV or ELEC: limits of such an automobile";
    const Date inService = TextToDate(values.InService);
    if (inService.IsNone()) return {};
    const Date purchased = TextToDate(values.Purchased);
    const Date acquired = purchased.IsNone() ? inService : purchased;
    switch (field) {
        case AssetField::ADPct:
            return AllowanceHint(law, acquired, inService);
        case AssetField::Section179:
            return ExpenseHint(law, inService, yearEnd);
        case AssetField::Auto:
            return AutomobileHint(law, KindOfGroup(values.TaxGroup), acquired, inService);
        case AssetField::ClassLife:
            return ClassesHint(law, inService);
        default:
            return {};
    }
}

CurrencyAmount MaximumOf(const AssetFieldDef& field, bool byLaw) {
    return byLaw && field.Id == AssetField::ADPct ? kAll : field.Maximum;
}

}  // namespace tallymar
