#include <iostream>
#include <memory>

#include "cli/Commands.h"
#include "law/Law.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::string Day;
    std::string Acquired;
    std::filesystem::path Check;
};

Date DayOf(const std::string& text) {
    const auto day = ParseIsoDate(text);
    if (!day) throw PlatformError(Failure::InvalidCall, "\"" + FromArgument(text) + "\" is no date like 2018-01-31");
    return *day;
}

std::string Dollars(int dollars) {
    return Format(static_cast<long long>(dollars), "###,##0");
}

std::string DollarsOrNone(std::optional<int> dollars) {
    return dollars ? Dollars(*dollars) : "none";
}

void Print(const std::string& text) {
    std::cout << ToUtf8(text) << '\n';
}

void PrintSource(const LawSource& source) {
    Print("    " + source.Text + " (" + source.File + ", line " + std::to_string(source.Line) + ")");
    if (!source.Mark.empty()) Print("    " + source.Mark);
}

std::string SpanText(const DaySpan& days) {
    const bool fromEver = days.First.IsNone();
    const bool forEver = days.Last.Year() == 9999;
    if (fromEver && forEver) return "at any time";
    if (fromEver) return "until " + FormatIsoDate(days.Last);
    if (forEver) return "from " + FormatIsoDate(days.First);
    return FormatIsoDate(days.First) + " to " + FormatIsoDate(days.Last);
}

void PrintAllowance(const AllowanceRate& rate) {
    Print("Special allowance: " + std::to_string(rate.Percent) + "%, acquired " + SpanText(rate.Acquired) +
          (rate.Election.empty() ? "" : "; " + rate.Election));
    PrintSource(rate.Source);
}

void PrintAutomobile(const AutomobileLimits& limits) {
    Print("Automobile, " + std::string(KindName(limits.Kind)) + ": " + Dollars(limits.First) + " (with the allowance " +
          DollarsOrNone(limits.WithAllowance) + "), " + Dollars(limits.Second) + ", " + Dollars(limits.Third) + ", then " +
          Dollars(limits.Later) + "; acquired " + SpanText(limits.Acquired));
    PrintSource(limits.Source);
}

// Of rows that differ by the day of acquisition all are told, unless a day is given; of two for the same days only the first
// holds.
template <typename Row, typename Look>
void PrintHolding(const std::vector<Row>& rows, Look look, const char* none, void (*print)(const Row& row)) {
    bool any = false;
    for (const Row& row : rows) {
        if (!look(row)) continue;
        print(row);
        any = true;
    }
    if (!any) Print(none);
}

void PrintLaw(const Law& law, Date day, std::optional<Date> acquired) {
    if (const Section179Limits* limits = law.Section179(day.Year())) {
        Print("Section 179, tax years that begin in " + std::to_string(day.Year()) + ": limit " + Dollars(limits->Limit) +
              ", threshold " + Dollars(limits->Threshold) + ", heavy sport utility vehicle " + DollarsOrNone(limits->Suv));
        PrintSource(limits->Source);
    } else {
        Print("Section 179: no row holds for " + std::to_string(day.Year()));
    }
    // The day that a row is tried with: a row of an own file hides those that it goes before.
    const auto tried = [&](const DaySpan& days) { return acquired.value_or(days.First.IsNone() ? days.Last : days.First); };
    PrintHolding<AllowanceRate>(
        law.AllowanceRows,
        [&](const AllowanceRate& row) {
            return row.InService.Holds(day) && row.Acquired.Holds(tried(row.Acquired)) &&
                   law.Allowance(tried(row.Acquired), day) == &row;
        },
        "Special allowance: no row holds for the day", PrintAllowance);
    PrintHolding<AutomobileLimits>(
        law.AutomobileRows,
        [&](const AutomobileLimits& row) {
            return row.InService.Holds(day) && row.Acquired.Holds(tried(row.Acquired)) &&
                   law.Automobile(row.Kind, tried(row.Acquired), day) == &row;
        },
        "Automobiles: no row holds for the day", PrintAutomobile);
    for (const PropertyClass* property : law.Classes(day)) {
        Print("Recovery period of " + std::to_string(property->Years) + " years: " + property->Property);
        PrintSource(property->Source);
    }
}

void CheckFile(const std::filesystem::path& file, std::span<const std::filesystem::path> folders) {
    const std::vector<LawFault> faults = CheckLawFile(file, folders);
    for (const LawFault& fault : faults) Print(fault.Message());
    if (faults.empty()) {
        Print(FromUtf8(file.string()) + " has no faults");
        return;
    }
    throw PlatformError(Failure::TypeMismatch, FromUtf8(file.string()) + " has " + std::to_string(faults.size()) +
                                                   (faults.size() == 1 ? " fault" : " faults"));
}

void Run(const Options& options, Context& context) {
    const auto folders = context.Paths().Folders();
    if (!options.Check.empty()) return CheckFile(options.Check, folders);
    if (options.Day.empty()) throw PlatformError(Failure::InvalidCall, "law wants a DATE, or --check FILE");
    const Date day = DayOf(options.Day);
    std::optional<Date> acquired;
    if (!options.Acquired.empty()) acquired = DayOf(options.Acquired);
    PrintLaw(ReadLaw(folders), day, acquired);
}

}  // namespace

void AddLawCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("law", "Print the limits that the law sets for a day, and where they come from");
    command->add_option("DATE", options->Day, "Day in service, YYYY-MM-DD; its year is the tax year of Section 179");
    command->add_option("--acquired", options->Acquired, "Day of acquisition; without it every row of the day is told");
    command->add_option("--check", options->Check, "Tell the faults of a file of own rows, line by line");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
