#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Date.h"

// The limits that the law sets year by year, as tables read from readable files (data/law): each row with the dates that it holds
// for and its source. Amounts are whole dollars, percentages have 100 meaning 100%.
namespace tallymar {

// Whole days, both ends included; an end that the table leaves open is date 0 or the last day of all.
struct DaySpan {
    Date First;
    Date Last;

    bool Holds(Date date) const { return First <= date && date < Last.AddDays(1.0); }
    bool Meets(const DaySpan& other) const { return First <= other.Last && other.First <= Last; }
};

// Where a row comes from.
struct LawSource {
    std::string Text;  // Public Law, section of the Code, Revenue Procedure
    std::string Mark;  // what of the row could not be confirmed; empty: nothing
    std::string File;
    int Line = 0;
};

// Expense of IRC section 179, by the calendar year in which the tax year begins.
struct Section179Limits {
    int FirstYear;
    int LastYear;
    int Limit;
    int Threshold;           // of the property placed in service, above which the limit falls
    std::optional<int> Suv;  // of a heavy sport utility vehicle
    LawSource Source;
};

// The special allowance of IRC section 168(k).
struct AllowanceRate {
    DaySpan InService;
    DaySpan Acquired;
    int Percent;
    std::string Election;  // what else may be chosen; empty: only the election out
    LawSource Source;
};

enum class VehicleKind { Car, Truck, Electric };  // a truck or van; an automobile that runs primarily on electricity
std::string_view KindName(VehicleKind kind);
// The kind that an asset's property group names ("TRUCK", "VAN", "SUV", "ELEC", in any letter case); any other is a car.
VehicleKind KindOfGroup(std::string_view propertyGroup);

// The limits of passenger automobiles, IRC section 280F(a), at 100% business use.
struct AutomobileLimits {
    VehicleKind Kind;
    DaySpan InService;
    DaySpan Acquired;
    int First;
    std::optional<int> WithAllowance;  // the first year's when the special allowance is taken
    int Second;
    int Third;
    int Later;
    LawSource Source;

    // yearOfRecovery counts from 1.
    int Limit(int yearOfRecovery, bool takesAllowance) const;
};

// A class of property that came after those of 1986.
struct PropertyClass {
    std::string Property;
    DaySpan InService;
    int Years;
    LawSource Source;
};

// What is wrong with a line of a file; line 0: with the file.
struct LawFault {
    std::string File;
    int Line;
    std::string Text;

    std::string Message() const;  // "section179.txt, line 12: ..."
};

// All tables. A look-up takes the first row that holds, so that a firm's own rows, which stand first, go before the delivered
// ones, row by row.
class Law {
 public:
    // nullptr when no row holds.
    const Section179Limits* Section179(int taxYear) const;
    const AllowanceRate* Allowance(Date acquired, Date inService) const;
    // A kind without a row of its own for the dates has the limits of a car.
    const AutomobileLimits* Automobile(VehicleKind kind, Date acquired, Date inService) const;
    std::vector<const PropertyClass*> Classes(Date inService) const;

    // Automobiles of before this day were held to no limit here.
    Date FirstLimitedDay() const;

    std::vector<Section179Limits> Section179Rows;
    std::vector<AllowanceRate> AllowanceRows;
    std::vector<AutomobileLimits> AutomobileRows;
    std::vector<PropertyClass> ClassRows;
};

// The calendar year in which the tax year of that end begins. The day plays no part: a year counts as twelve months.
int TaxYearOf(Date yearEnd);
// The calendar year in which the tax year that a day lies in begins, of a company whose years end in the month of yearEnd; date 0
// is the end of a calendar year.
int TaxYearOfDay(Date day, Date yearEnd);

// Adds the rows of one file's text to the law and its faults to the list. A line that has a fault gives no row. What holds for
// the same dates as an earlier row of the file is a fault, as is a file too large to be one.
void ReadLawText(std::string_view contents, const std::string& file, Law& law, std::vector<LawFault>& faults);
// Dates between the first and the last row of a table that no row holds for.
std::vector<LawFault> GapsOf(const Law& law);

// The tables, by their names below a data folder.
std::span<const std::filesystem::path> LawFileNames();
// The law of these folders, the rows of an earlier one before those of a later one. A file may be missing in any of them, but not
// in all. Failures: FileNotFound; TypeMismatch with the first fault of a file; those of reading files.
Law ReadLaw(std::span<const std::filesystem::path> folders);
// The faults of one file, and the gaps that its rows leave beside those of the folders.
std::vector<LawFault> CheckLawFile(const std::filesystem::path& file, std::span<const std::filesystem::path> folders);

}  // namespace tallymar
