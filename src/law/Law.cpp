#include "law/Law.h"

#include <algorithm>
#include <array>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

struct GroupWord {
    std::string_view Word;
    VehicleKind Kind;
};
// For the limits a van, minivan or sport utility vehicle on a truck's chassis is a truck (Rev. Proc. 2003-75, section 2).
constexpr auto kGroupWords = std::to_array<GroupWord>(
    {{"TRUCK", VehicleKind::Truck}, {"VAN", VehicleKind::Truck}, {"SUV", VehicleKind::Truck}, {"ELEC", VehicleKind::Electric}});

template <typename Rows, typename Test>
auto FirstOf(const Rows& rows, Test test) -> decltype(rows.data()) {
    const auto found = std::find_if(rows.begin(), rows.end(), test);
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

std::string_view KindName(VehicleKind kind) {
    constexpr std::array<std::string_view, 3> kNames = {"car", "truck", "electric"};
    return kNames[static_cast<std::size_t>(kind)];
}

VehicleKind KindOfGroup(std::string_view propertyGroup) {
    const std::string word = UCase(Trim(propertyGroup));
    for (const GroupWord& known : kGroupWords) {
        if (word == known.Word) return known.Kind;
    }
    return VehicleKind::Car;
}

int AutomobileLimits::Limit(int yearOfRecovery, bool takesAllowance) const {
    if (yearOfRecovery <= 1) return takesAllowance ? WithAllowance.value_or(First) : First;
    if (yearOfRecovery == 2) return Second;
    return yearOfRecovery == 3 ? Third : Later;
}

const Section179Limits* Law::Section179(int taxYear) const {
    return FirstOf(Section179Rows, [=](const auto& row) { return row.FirstYear <= taxYear && taxYear <= row.LastYear; });
}

const AllowanceRate* Law::Allowance(Date acquired, Date inService) const {
    return FirstOf(AllowanceRows,
                   [=](const auto& row) { return row.InService.Holds(inService) && row.Acquired.Holds(acquired); });
}

const AutomobileLimits* Law::Automobile(VehicleKind kind, Date acquired, Date inService) const {
    const auto find = [&](VehicleKind wanted) {
        return FirstOf(AutomobileRows, [=](const auto& row) {
            return row.Kind == wanted && row.InService.Holds(inService) && row.Acquired.Holds(acquired);
        });
    };
    const AutomobileLimits* own = find(kind);
    return own != nullptr || kind == VehicleKind::Car ? own : find(VehicleKind::Car);
}

std::vector<const PropertyClass*> Law::Classes(Date inService) const {
    std::vector<const PropertyClass*> classes;
    for (const PropertyClass& row : ClassRows) {
        const auto isSame = [&row](const PropertyClass* other) { return other->Property == row.Property; };
        const bool isReplaced = std::any_of(classes.begin(), classes.end(), isSame);
        if (row.InService.Holds(inService) && !isReplaced) classes.push_back(&row);
    }
    return classes;
}

Date Law::FirstLimitedDay() const {
    Date first = Date::FromYmd(9999, 12, 31);
    for (const AutomobileLimits& row : AutomobileRows) first = std::min(first, row.InService.First);
    return first;
}

int TaxYearOf(Date yearEnd) {
    return yearEnd.Month() == 12 ? yearEnd.Year() : yearEnd.Year() - 1;
}

int TaxYearOfDay(Date day, Date yearEnd) {
    const int lastMonth = yearEnd.IsNone() ? 12 : yearEnd.Month();
    return lastMonth == 12 || day.Month() > lastMonth ? day.Year() : day.Year() - 1;
}

}  // namespace tallymar
