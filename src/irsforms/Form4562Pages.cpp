#include "irsforms/Form4562.h"

namespace tallymar {

namespace {

using Form = Form4562;
using Class = Form::ClassRow;
using Listed = Form::ListedRow;
using Elect = Form::ElectRow;
using Amort = Form::AmortRow;
template <typename Source>
using Field = PageField<Source>;
using L = FormLineOf;

constexpr CurrencyAmount kNothing;
constexpr CurrencyAmount kHalfUse = Units(50);
constexpr std::string_view kMoney = FormFile::kDefaultMask;
constexpr std::string_view kNarrowMoney = kMoney.substr(1);  // beside the months of line 19h and 19i
constexpr std::string_view kDollars5 = "#####.";
constexpr std::string_view kDollars6 = "######.";
constexpr std::string_view kDollars7 = "#######.";
constexpr std::string_view kDollars8 = "########.";
constexpr std::string_view kStatementDollars = "##,###,###.";
constexpr std::string_view kPercent = "###";
constexpr std::string_view kPercentTenths = "###.#";
constexpr int kNameWidth = 30;

bool Exceeds(const Form& form, int slot, int rows) {
    return form.Line(slot) > Units(rows);
}
bool TooManyElections(const Form& form) {
    return Exceeds(form, Form::kElections, 2);
}
bool TooManyListedAbove(const Form& form) {
    return Exceeds(form, Form::kListedAbove, 3);
}
bool TooManyListedBelow(const Form& form) {
    return Exceeds(form, Form::kListedBelow, 3);
}
bool TooManyAmortizations(const Form& form) {
    return form.HasAmortizationStatement();
}
template <char Mark, int Slot>
bool HeaderBegins(const Form& form) {
    return form.Header(Slot).starts_with(Mark);
}

// The name block of page 1 and of every statement.
constexpr auto kNameBlock = std::to_array<Field<Form>>({
    {10, 5, [](const Form& f) { return f.Header(1); }, kNameWidth},
    {10, 35, [](const Form& f) { return f.Header(3); }, kNameWidth},
    {10, 65, [](const Form& f) { return f.Header(2); }},
});

// ---- 245621: page 1

constexpr auto kPage1 = std::to_array<Field<Form>>({
    {12, 65, "FOR: "},
    {12, 70, [](const Form& f) { return f.Header(8) + f.Header(9); }},
    {14, 65, L{2}, kMoney, 'Y',
     [](const Form& f) { return f.Line(12) > kNothing || f.Line(8) > kNothing || f.Line(13) > kNothing; }},
    {16, 65, L{4}, kMoney, 'Y'},
    {18, 65, L{5}, kMoney, 'Y'},
    {20, 5, "SEE ATTACHED STATEMENT", 0, TooManyElections},
    {20, 39, L{Form::kElectedCost}, kMoney, 'N', TooManyElections},
    {20, 52, L{6}, kMoney, 'N', TooManyElections},
    {22, 52, L{7}, kMoney},
    {23, 65, L{8}, kMoney},
    {24, 65, L{9}, kMoney},
    {25, 65, L{10}, kMoney},
    {26, 65, L{11}, kMoney},
    {27, 65, L{12}, kMoney},
    {28, 52, L{13}, kMoney, 'Y'},
    {32, 65, L{14}, kMoney},
    {33, 65, L{15}, kMoney},
    {34, 65, L{16}, kMoney},
    {37, 65, L{17}, kMoney},
    {39, 60, [](const Form& f) { return std::string(f.Header(6) == "Y" ? "X" : " "); }},
    {59, 65, L{21}, kMoney},
    {61, 65, L{22}, kMoney},
    {63, 52, L{23}, kMoney},
});

constexpr auto kElectionRow1 = std::to_array<Field<Elect>>({
    {20, 5, &Elect::ElectDesc, 33},
    {20, 39, &Elect::ElectCost, kMoney},
    {20, 52, &Elect::ElectAmount, kMoney},
});
constexpr auto kElectionRow2 = std::to_array<Field<Elect>>({
    {21, 6, &Elect::ElectDesc, 33},
    {21, 39, &Elect::ElectCost, kMoney},
    {21, 52, &Elect::ElectAmount, kMoney},
});

// Lines 19a to 20c, each row of the class table under its own few fields. Lines are counted from that of row 1.
bool HasBasis(const Class& row) {
    return row.RowBasis > kNothing;
}
bool HasNegativeBasis(const Class& row) {
    return row.RowBasis < kNothing;
}
bool HasAnyBasis(const Class& row) {
    return !row.RowBasis.IsZero();
}
constexpr auto kPersonalClass = std::to_array<Field<Class>>({
    {0, 30, &Class::RowBasis, kMoney, 'N', HasBasis},
    {0, 44, &Class::RowPeriod, 0, HasBasis},
    {0, 52, &Class::RowConvention, 0, HasBasis},
    {0, 59, &Class::RowMethod, 0, HasBasis},
    {0, 65, &Class::RowDepr, kMoney, 'N', HasBasis},
});
constexpr auto k25YearClass = std::to_array<Field<Class>>({
    {0, 30, &Class::RowBasis, kMoney, 'N', HasBasis},
    {0, 51, &Class::RowConvention, 0, HasBasis},
    {0, 65, &Class::RowDepr, kMoney, 'N', HasBasis},
    {0, 30, "STM119", 0, HasNegativeBasis},
    {0, 65, &Class::RowDepr, kMoney, 'N', HasNegativeBasis},
});
constexpr auto kBuilding = std::to_array<Field<Class>>({
    {0, 23, &Class::RowPlaced},
    {0, 31, &Class::RowBasis, kNarrowMoney},
    {0, 65, &Class::RowDepr, kMoney},
});
constexpr auto kSecondNonresidential = std::to_array<Field<Class>>({
    {0, 23, &Class::RowPlaced},
    {0, 31, &Class::RowBasis, kNarrowMoney},
    {0, 44, &Class::RowPeriod, 0, HasBasis},
    {0, 65, &Class::RowDepr, kMoney},
});
constexpr auto kClassLife = std::to_array<Field<Class>>({
    {0, 31, &Class::RowBasis, kMoney},
    {0, 44, &Class::RowPeriod},
    {0, 52, &Class::RowConvention, 0, HasAnyBasis},
    {0, 65, &Class::RowDepr, kMoney, 'N', HasAnyBasis},
});
constexpr auto k12Year = std::to_array<Field<Class>>({
    {0, 31, &Class::RowBasis, kMoney},
    {0, 52, &Class::RowConvention, 0, HasAnyBasis},
    {0, 65, &Class::RowDepr, kMoney, 'N', HasAnyBasis},
});
constexpr auto k40Year = std::to_array<Field<Class>>({
    {0, 23, &Class::RowPlaced},
    {0, 31, &Class::RowBasis, kMoney},
    {0, 65, &Class::RowDepr, kMoney},
});

struct ClassLine {
    int Row;
    int Line;
    std::span<const Field<Class>> Fields;
};
constexpr auto kClassLines = std::to_array<ClassLine>({
    {1, 43, kPersonalClass},
    {2, 44, kPersonalClass},
    {3, 45, kPersonalClass},
    {4, 46, kPersonalClass},
    {5, 47, kPersonalClass},
    {6, 48, kPersonalClass},
    {7, 49, k25YearClass},
    {8, 50, kBuilding},
    {9, 51, kBuilding},
    {10, 52, kBuilding},
    {11, 53, kSecondNonresidential},
    {12, 55, kClassLife},
    {13, 56, k12Year},
    {14, 57, k40Year},
});

PageSheet Page1(const Form& form) {
    PageSheet page("245621");
    page.Lay(kNameBlock, form);
    page.Lay(kPage1, form);
    if (!TooManyElections(form)) {
        const auto& rows = form.Election();
        page.Lay(kElectionRow1, rows.empty() ? Elect() : rows[0]);
        page.Lay(kElectionRow2, rows.size() < 2 ? Elect() : rows[1]);
    }
    for (const ClassLine& line : kClassLines) page.Lay(line.Fields, form.Class(line.Row), line.Line);
    return page;
}

// ---- 245622: page 2

constexpr auto kPage2 = std::to_array<Field<Form>>({
    {5, 21, [](const Form& f) { return f.Header(1) + " " + f.Header(2); }},
    {11, 42, "X", 0, HeaderBegins<'Y', 4>},
    {11, 46, "X", 0, HeaderBegins<'N', 4>},
    {11, 71, "X", 0, HeaderBegins<'Y', 5>},
    {11, 75, "X", 0, HeaderBegins<'N', 5>},
    {16, 63, L{25}, kDollars7},
    {18, 1, "   SEE ATTACHED", 0, TooManyListedAbove},
    {22, 1, "   SEE ATTACHED", 0, TooManyListedBelow},
    {25, 63, L{28}, kDollars7},
    {26, 70, L{29}, kDollars7},
    // COMPAT: the sums beside it have never been filled; they stand on the statement, and line 44 has them.
    {60, 4, "SEE ATTACHMENT", 0, TooManyAmortizations},
    {62, 69, L{43}, kDollars8},
    {63, 69, L{44}, kDollars8},
});

constexpr auto kListedAboveRow = std::to_array<Field<Listed>>({
    {0, 4, &Listed::ListedDesc},
    {0, 14, &Listed::ListedDate},
    {0, 24, &Listed::ListedPct, kPercentTenths},
    {0, 32, &Listed::ListedCost, kDollars7},
    {0, 42, &Listed::ListedBasis, kDollars7},
    {0, 50, &Listed::ListedLife, 4},
    {0, 55, &Listed::ListedMethod, 7},
    {0, 63, &Listed::ListedDepr, kDollars7},
    {0, 72, &Listed::ListedElected, kDollars5},
});
constexpr auto kListedBelowRow = std::to_array<Field<Listed>>({
    {0, 4, &Listed::ListedDesc},
    {0, 15, &Listed::ListedDate},
    {0, 24, &Listed::ListedPct, kPercentTenths},
    {0, 32, &Listed::ListedCost, kDollars7},
    {0, 42, &Listed::ListedBasis, kDollars7},
    {0, 50, &Listed::ListedLife, 4},
    {0, 58, &Listed::ListedMethod, 7},
    {0, 63, &Listed::ListedDepr, kDollars7},
});
constexpr auto kAmortizationRow = std::to_array<Field<Amort>>({
    {0, 4, &Amort::AmortDesc},
    {0, 26, &Amort::AmortDate},
    {0, 40, &Amort::AmortCost, kDollars8},
    {0, 50, &Amort::AmortCode},
    {0, 59, &Amort::AmortLife, 6},
    {0, 69, &Amort::AmortAmount, kDollars8},
});

bool IsAboveHalf(const Listed& row) {
    return !row.ListedDesc.empty() && row.ListedPct > kHalfUse;
}
bool IsHalfOrLess(const Listed& row) {
    return !row.ListedDesc.empty() && row.ListedPct <= kHalfUse;
}

template <typename Row>
std::vector<Row> RowsThat(const std::vector<Row>& rows, bool (*belongs)(const Row&)) {
    std::vector<Row> chosen;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(chosen), belongs);
    return chosen;
}

template <typename Row, typename Table>
void LayRows(PageSheet& page, const Table& fields, const std::vector<Row>& rows, int firstLine) {
    int line = firstLine;
    for (const Row& row : rows) page.Lay(fields, row, line++);
}

PageSheet Page2(const Form& form) {
    PageSheet page("245622");
    page.Lay(kPage2, form);
    if (!TooManyListedAbove(form)) LayRows(page, kListedAboveRow, RowsThat(form.Listed(), IsAboveHalf), 18);
    if (!TooManyListedBelow(form)) LayRows(page, kListedBelowRow, RowsThat(form.Listed(), IsHalfOrLess), 22);
    if (!TooManyAmortizations(form)) {
        std::vector<Amort> rows = form.ShownAmortizations();
        rows.resize(Form::kAmortizationsOnPage);
        LayRows(page, kAmortizationRow, rows, 60);
    }
    return page;
}

// ---- The statements: rows, then blank lines down to the totals

constexpr auto kElectionStatement = std::to_array<Field<Elect>>({
    {0, 4, &Elect::ElectDesc},
    {0, 53, &Elect::ElectCost, kStatementDollars, 'Y'},
    {0, 66, &Elect::ElectAmount, kStatementDollars, 'Y'},
});
constexpr auto kElectionTotals = std::to_array<Field<Form>>({
    {0, 53, L{Form::kElectedCost}, kStatementDollars, 'Y'},
    {0, 66, L{6}, kStatementDollars, 'Y'},
});

constexpr auto kListedAboveStatement = std::to_array<Field<Listed>>({
    {0, 4, &Listed::ListedDesc, 14},
    {0, 15, &Listed::ListedDate},
    {0, 25, &Listed::ListedPct, kPercent, 'Y'},
    {0, 32, &Listed::ListedCost, kDollars7, 'Y'},
    {0, 42, &Listed::ListedBasis, kDollars7, 'Y'},
    {0, 52, &Listed::ListedLife},
    {0, 56, &Listed::ListedMethod},
    {0, 63, &Listed::ListedDepr, kDollars7, 'Y'},
    {0, 71, &Listed::ListedElected, kDollars6, 'Y'},
});
constexpr auto kListedAboveTotals = std::to_array<Field<Listed>>({
    {0, 63, &Listed::ListedDepr, kDollars7, 'Y'},
    {0, 71, &Listed::ListedElected, kDollars6, 'Y'},
});

constexpr auto kListedBelowStatement = std::to_array<Field<Listed>>({
    {0, 4, &Listed::ListedDesc, 18},
    {0, 23, &Listed::ListedDate},
    {0, 35, &Listed::ListedPct, kPercent, 'Y'},
    {0, 40, &Listed::ListedCost, kDollars7, 'Y'},
    {0, 50, &Listed::ListedBasis, kDollars7, 'Y'},
    {0, 59, &Listed::ListedLife},
    {0, 66, &Listed::ListedMethod},
    {0, 71, &Listed::ListedDepr, kDollars6, 'Y'},
});
constexpr auto kListedBelowTotals = std::to_array<Field<Listed>>({
    {0, 70, &Listed::ListedDepr, kDollars7, 'Y'},
});

constexpr auto kAmortizationStatement = std::to_array<Field<Amort>>({
    {0, 4, &Amort::AmortDesc, 20},
    {0, 26, &Amort::AmortDate},
    {0, 39, &Amort::AmortCost, kDollars8, 'Y'},
    {0, 50, &Amort::AmortCode},
    {0, 58, &Amort::AmortLife},
    {0, 69, &Amort::AmortAmount, kDollars7, 'Y'},
});
constexpr auto kAmortizationTotals = std::to_array<Field<Amort>>({
    {0, 40, &Amort::AmortCost, kDollars7, 'Y'},
    {0, 69, &Amort::AmortAmount, kDollars7, 'Y'},
});

struct StatementShape {
    std::string_view Code;
    int FirstLine;
    int TotalsLine;  // the rows push it down when there are more than fit
};

template <typename Row, typename RowFields, typename TotalFields, typename Totals>
void WriteStatement(FormOutput& output, const Form& form, const StatementShape& shape, const RowFields& fields,
                    const std::vector<Row>& rows, const TotalFields& totalFields, const Totals& totals) {
    PageSheet page(shape.Code);
    page.Lay(kNameBlock, form);
    LayRows(page, fields, rows, shape.FirstLine);
    page.Lay(totalFields, totals, std::max(shape.TotalsLine, shape.FirstLine + static_cast<int>(rows.size())));
    output.WritePage(std::string(shape.Code), page);
}

Listed TotalOf(const std::vector<Listed>& rows) {
    Listed total;
    for (const Listed& row : rows) {
        total.ListedDepr += row.ListedDepr;
        total.ListedElected += row.ListedElected;
    }
    return total;
}

Amort TotalOf(const std::vector<Amort>& rows) {
    Amort total;
    for (const Amort& row : rows) {
        total.AmortCost += row.AmortCost;
        total.AmortAmount += row.AmortAmount;
    }
    return total;
}

bool BelongsToStatement(const Elect& row) {
    return !row.ElectDesc.empty() || row.ElectCost > kNothing;
}

}  // namespace

void Form4562::Write(FormOutput& output) {
    output.WriteWorkFile("F45621.001", WorkFileText());
    output.WritePage("245621", Page1(*this));
    output.WritePage("245622", Page2(*this));
    if (TooManyElections(*this)) {
        WriteStatement(output, *this, {"245623", 12, 62}, kElectionStatement, RowsThat(election_, BelongsToStatement),
                       kElectionTotals, *this);
    }
    if (TooManyListedAbove(*this)) {
        const auto rows = RowsThat(listed_, IsAboveHalf);
        WriteStatement(output, *this, {"245624", 15, 64}, kListedAboveStatement, rows, kListedAboveTotals, TotalOf(rows));
    }
    if (TooManyListedBelow(*this)) {
        const auto rows = RowsThat(listed_, IsHalfOrLess);
        WriteStatement(output, *this, {"245625", 15, 64}, kListedBelowStatement, rows, kListedBelowTotals, TotalOf(rows));
    }
    if (TooManyAmortizations(*this)) {
        const std::vector<Amort> rows = ShownAmortizations();
        WriteStatement(output, *this, {"245626", 16, 64}, kAmortizationStatement, rows, kAmortizationTotals, TotalOf(rows));
    }
}

}  // namespace tallymar
