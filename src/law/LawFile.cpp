#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <set>

#include "law/Law.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/FindFile.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

// More than any table of law has: what is larger is none.
constexpr std::size_t kMostBytes = 1 << 18;
constexpr std::size_t kMostRows = 2000;
constexpr std::size_t kMostFaults = 100;
constexpr std::size_t kLongestShown = 40;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 9998;
constexpr int kMostDollars = 999'999'999;

// What a line is told to be wrong with.
struct BadLine {
    std::string Text;
};

std::string Shown(std::string_view text) {
    return "\"" + std::string(text.substr(0, kLongestShown)) + (text.size() > kLongestShown ? "..." : "") + "\"";
}

int WholeNumber(std::string_view text, int least, int most, const std::string& what) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || number < least || number > most) {
        throw BadLine{Shown(text) + " is no " + what};
    }
    return number;
}

int Dollars(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        if (c != ',') digits += c;
    }
    return WholeNumber(digits, 0, kMostDollars, "amount of whole dollars");
}

std::optional<int> DollarsOrNone(std::string_view text) {
    if (text == "-") return std::nullopt;
    return Dollars(text);
}

Date Day(std::string_view text) {
    const auto date = ParseIsoDate(text);
    if (!date || date->Year() < kFirstYear || date->Year() > kLastYear) {
        throw BadLine{Shown(text) + " is no date like 2018-01-31"};
    }
    return *date;
}

const Date kFirstDay = Date::FromSerial(0.0);
const Date kLastDay = Date::FromYmd(9999, 12, 31);

DaySpan Days(std::string_view text) {
    if (text == "any") return {kFirstDay, kLastDay};
    const std::size_t dots = text.find("..");
    if (dots == std::string_view::npos) throw BadLine{Shown(text) + " is no span of dates like 2018-01-01..2018-12-31"};
    const std::string_view first = text.substr(0, dots);
    const std::string_view last = text.substr(dots + 2);
    const DaySpan days{first.empty() ? kFirstDay : Day(first), last.empty() ? kLastDay : Day(last)};
    if (days.Last < days.First) throw BadLine{Shown(text) + " ends before it begins"};
    return days;
}

VehicleKind Kind(std::string_view text) {
    for (const VehicleKind kind : {VehicleKind::Car, VehicleKind::Truck, VehicleKind::Electric}) {
        if (text == KindName(kind)) return kind;
    }
    throw BadLine{Shown(text) + " is none of car, truck and electric"};
}

using Cells = std::vector<std::string_view>;

template <typename Row, typename Same>
void Add(std::vector<Row>& rows, Row row, Same same) {
    for (const Row& other : rows) {
        if (other.Source.File == row.Source.File && same(other, row)) {
            throw BadLine{"line " + std::to_string(other.Source.Line) + " holds for the same dates"};
        }
    }
    rows.push_back(std::move(row));
}

void AddSection179(const Cells& cells, LawSource source, Law& law) {
    const std::string_view years = cells[0];
    const std::size_t dash = years.find('-');
    const int first = WholeNumber(years.substr(0, dash), kFirstYear, kLastYear, "year");
    const int last = dash == std::string_view::npos ? first : WholeNumber(years.substr(dash + 1), kFirstYear, kLastYear, "year");
    if (last < first) throw BadLine{Shown(years) + " ends before it begins"};
    Section179Limits row{first, last, Dollars(cells[1]), Dollars(cells[2]), DollarsOrNone(cells[3]), std::move(source)};
    Add(law.Section179Rows, std::move(row),
        [](const auto& a, const auto& b) { return a.FirstYear <= b.LastYear && b.FirstYear <= a.LastYear; });
}

void AddAllowance(const Cells& cells, LawSource source, Law& law) {
    AllowanceRate row{Days(cells[0]), Days(cells[1]), WholeNumber(cells[2], 0, 100, "percentage of 0 to 100"),
                      std::string(cells[3] == "-" ? "" : cells[3]), std::move(source)};
    Add(law.AllowanceRows, std::move(row),
        [](const auto& a, const auto& b) { return a.InService.Meets(b.InService) && a.Acquired.Meets(b.Acquired); });
}

void AddAutomobile(const Cells& cells, LawSource source, Law& law) {
    AutomobileLimits row{Kind(cells[0]),    Days(cells[1]),    Days(cells[2]),    Dollars(cells[3]), DollarsOrNone(cells[4]),
                         Dollars(cells[5]), Dollars(cells[6]), Dollars(cells[7]), std::move(source)};
    Add(law.AutomobileRows, std::move(row), [](const auto& a, const auto& b) {
        return a.Kind == b.Kind && a.InService.Meets(b.InService) && a.Acquired.Meets(b.Acquired);
    });
}

void AddClass(const Cells& cells, LawSource source, Law& law) {
    if (cells[0].empty()) throw BadLine{"the property has no name"};
    PropertyClass row{std::string(cells[0]), Days(cells[1]), WholeNumber(cells[2], 1, 99, "number of years"), std::move(source)};
    Add(law.ClassRows, std::move(row),
        [](const auto& a, const auto& b) { return a.Property == b.Property && a.InService.Meets(b.InService); });
}

struct Table {
    std::string_view Name;
    std::size_t Columns;  // before the source and its mark
    void (*AddRow)(const Cells& cells, LawSource source, Law& law);
};
constexpr auto kTables = std::to_array<Table>({{"section179", 4, AddSection179},
                                               {"allowance", 4, AddAllowance},
                                               {"automobiles", 8, AddAutomobile},
                                               {"classes", 3, AddClass}});

Cells Split(std::string_view line) {
    Cells cells;
    for (;;) {
        const std::size_t bar = line.find('|');
        cells.push_back(Trim(line.substr(0, bar)));
        if (bar == std::string_view::npos) return cells;
        line.remove_prefix(bar + 1);
    }
}

const Table& TableOf(std::string_view line) {
    constexpr std::string_view kWord = "table ";
    if (line.starts_with(kWord)) {
        const std::string_view name = Trim(line.substr(kWord.size()));
        const auto found = std::find_if(kTables.begin(), kTables.end(), [=](const Table& table) { return table.Name == name; });
        if (found != kTables.end()) return *found;
    }
    throw BadLine{"the first line must be \"table section179\", \"table allowance\", \"table automobiles\" or \"table classes\""};
}

void AddLine(const Table& table, std::string_view line, LawSource source, Law& law) {
    const Cells cells = Split(line);
    if (cells.size() != table.Columns + 1 && cells.size() != table.Columns + 2) {
        throw BadLine{std::to_string(cells.size()) + " columns; a row of this table has " + std::to_string(table.Columns) +
                      ", its source and its mark"};
    }
    source.Text = cells[table.Columns];
    if (source.Text.empty()) throw BadLine{"the row has no source"};
    if (cells.size() == table.Columns + 2) source.Mark = cells.back();
    table.AddRow(cells, std::move(source), law);
}

std::string DayText(Date day) {
    return FormatIsoDate(day);
}

// The days of a table's rows, as areas of days in service and days of acquisition.
struct Area {
    DaySpan InService;
    DaySpan Acquired;
    const LawSource* Source;
};

// The first gap before each row, if the rows of an area of time leave one.
void FindGaps(const std::vector<Area>& areas, const std::string& what, std::vector<LawFault>& faults) {
    std::set<Date> starts;
    for (const Area& area : areas) {
        starts.insert(area.InService.First);
        if (area.InService.Last < kLastDay) starts.insert(area.InService.Last.AddDays(1.0));
    }
    for (const Date day : starts) {
        std::vector<const Area*> holding;
        const Area* next = nullptr;
        for (const Area& area : areas) {
            if (area.InService.Holds(day)) holding.push_back(&area);
            if (area.InService.First > day && (next == nullptr || area.InService.First < next->InService.First)) next = &area;
        }
        if (holding.empty()) {
            if (next == nullptr) continue;  // after the last row
            faults.push_back(
                {next->Source->File, next->Source->Line,
                 "no row of " + what + " holds for " + DayText(day) + " to " + DayText(next->InService.First.AddDays(-1.0))});
            continue;
        }
        // A firm's row may lie over a delivered one.
        std::sort(holding.begin(), holding.end(),
                  [](const Area* a, const Area* b) { return a->Acquired.First < b->Acquired.First; });
        Date reached = kFirstDay;
        for (const Area* area : holding) {
            if (area->Acquired.First > reached) {
                faults.push_back(
                    {area->Source->File, area->Source->Line,
                     "no row of " + what + " holds for " + DayText(day) + ", acquired before " + DayText(area->Acquired.First)});
            }
            if (area->Acquired.Last >= kLastDay) {
                reached = kLastDay;
            } else {
                reached = std::max(reached, area->Acquired.Last.AddDays(1.0));
            }
        }
        if (reached < kLastDay) {
            faults.push_back({holding.front()->Source->File, holding.front()->Source->Line,
                              "no row of " + what + " holds for " + DayText(day) + ", acquired from " + DayText(reached)});
        }
    }
}

void ReadFile(const fs::path& path, const std::string& shownName, Law& law, std::vector<LawFault>& faults) {
    {
        const InputFile file(path);
        if (file.Size() > kMostBytes) {
            faults.push_back({shownName, 0, "the file is too large to be a table of law"});
            return;
        }
    }
    ReadLawText(FromUtf8(ReadWholeFile(path)), shownName, law, faults);
}

}  // namespace

std::string LawFault::Message() const {
    return Line > 0 ? File + ", line " + std::to_string(Line) + ": " + Text : File + ": " + Text;
}

void ReadLawText(std::string_view contents, const std::string& file, Law& law, std::vector<LawFault>& faults) {
    if (contents.size() > kMostBytes) {
        faults.push_back({file, 0, "the file is too large to be a table of law"});
        return;
    }
    const Table* table = nullptr;
    std::size_t rows = 0;
    const std::size_t faultsBefore = faults.size();
    for (int number = 1; !contents.empty(); ++number) {
        const std::size_t end = contents.find('\n');
        std::string_view line = contents.substr(0, end);
        contents.remove_prefix(end == std::string_view::npos ? contents.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        std::string text(line);
        std::replace(text.begin(), text.end(), '\t', ' ');
        line = Trim(text);
        if (line.empty() || line.front() == '#') continue;
        try {
            if (std::any_of(line.begin(), line.end(), IsControl)) throw BadLine{"a control character stands in it"};
            if (table == nullptr) {
                table = &TableOf(line);
            } else if (++rows > kMostRows) {
                throw BadLine{"the table has too many rows"};
            } else {
                AddLine(*table, line, {.Text = {}, .Mark = {}, .File = file, .Line = number}, law);
            }
        } catch (const BadLine& bad) {
            faults.push_back({file, number, bad.Text});
            if (table == nullptr || rows > kMostRows || faults.size() - faultsBefore >= kMostFaults) return;
        }
    }
    if (table == nullptr) faults.push_back({file, 0, "there is no table in it"});
}

std::vector<LawFault> GapsOf(const Law& law) {
    std::vector<LawFault> faults;
    std::vector<Area> areas;
    for (const Section179Limits& row : law.Section179Rows) {
        areas.push_back(
            {{Date::FromYmd(row.FirstYear, 1, 1), Date::FromYmd(row.LastYear, 12, 31)}, {kFirstDay, kLastDay}, &row.Source});
    }
    FindGaps(areas, "section179", faults);
    areas.clear();
    for (const AllowanceRate& row : law.AllowanceRows) areas.push_back({row.InService, row.Acquired, &row.Source});
    FindGaps(areas, "allowance", faults);
    for (const VehicleKind kind : {VehicleKind::Car, VehicleKind::Truck, VehicleKind::Electric}) {
        areas.clear();
        for (const AutomobileLimits& row : law.AutomobileRows) {
            if (row.Kind == kind) areas.push_back({row.InService, row.Acquired, &row.Source});
        }
        FindGaps(areas, "automobiles (" + std::string(KindName(kind)) + ")", faults);
    }
    return faults;
}

std::span<const fs::path> LawFileNames() {
    static const std::array<fs::path, 4> names = {"law/section179.txt", "law/allowance.txt", "law/automobiles.txt",
                                                  "law/classes.txt"};
    return names;
}

Law ReadLaw(std::span<const fs::path> folders) {
    Law law;
    std::vector<LawFault> faults;
    for (const fs::path& name : LawFileNames()) {
        std::set<fs::path> read;  // a portable copy has one folder for both
        for (const fs::path& folder : folders) {
            const fs::path file = FindAnyCase(folder, name);
            if (file.empty() || !read.insert(file).second) continue;
            ReadFile(file, FromUtf8(file.string()), law, faults);
        }
        if (read.empty()) throw PlatformError::About(Failure::FileNotFound, name.string());
        if (!faults.empty()) throw PlatformError(Failure::TypeMismatch, faults.front().Message());
    }
    return law;
}

std::vector<LawFault> CheckLawFile(const fs::path& file, std::span<const fs::path> folders) {
    Law law;
    std::vector<LawFault> faults;
    const std::string name = FromUtf8(file.string());
    ReadFile(file, name, law, faults);
    if (!faults.empty()) return faults;
    // Beside the delivered rows; those of an own file of the same table are the ones being checked, or will be.
    Law delivered = ReadLaw(folders);
    const auto append = [](auto& rows, const auto& more) { rows.insert(rows.end(), more.begin(), more.end()); };
    append(law.Section179Rows, delivered.Section179Rows);
    append(law.AllowanceRows, delivered.AllowanceRows);
    append(law.AutomobileRows, delivered.AutomobileRows);
    append(law.ClassRows, delivered.ClassRows);
    for (const LawFault& gap : GapsOf(law)) {
        if (gap.File == name) faults.push_back(gap);
    }
    return faults;
}

}  // namespace tallymar
