#include "irsforms/Form4562.h"
#include "irsforms/FormTables.h"

namespace tallymar {

namespace {

using Form = Form4562;
using Step = LineStep<Form>;

constexpr CurrencyAmount kNothing;
constexpr CurrencyAmount kHalfUse = Units(50);

template <typename Rows, typename Value>
CurrencyAmount SumOf(const Rows& rows, Value value) {
    CurrencyAmount sum;
    for (const auto& row : rows) sum += value(row);
    return sum;
}

// Rows that match, as the counting slots of the form hold it.
template <typename Rows, typename Test>
CurrencyAmount CountOf(const Rows& rows, Test test) {
    return CurrencyAmount::FromInteger(std::count_if(rows.begin(), rows.end(), test));
}

CurrencyAmount SumOfClasses(const Form& form, int first, int last, CurrencyAmount Form::ClassRow::*column) {
    CurrencyAmount sum;
    for (int row = first; row <= last; ++row) sum += form.Class(row).*column;
    return sum;
}

// The business part of listed property placed in service in the form's year.
CurrencyAmount ListedCostOfYear(const Form& form) {
    return SumOf(form.Listed(), [](const Form::ListedRow& row) {
        if (!row.ListedDate.ends_with(kFormYear)) return kNothing;
        return CurrencyAmount::FromDouble((row.ListedCost * row.ListedPct).ToDouble() / 100.0);
    });
}

// COMPAT: property that could be elected is that of the classes of 3 to 10 years, whatever the assets' own lines, and never
// counts below what was elected of it.
CurrencyAmount Section179Property(const Form& form) {
    return ListedCostOfYear(form) + SumOfClasses(form, 1, 4, &Form::ClassRow::RowBasis) + form.Class(12).RowBasis +
           SumOf(form.Election(), [](const Form::ElectRow& row) { return std::min(row.ElectCost, row.ElectAmount); });
}

bool IsPartnership(const Form& form) {
    return form.Header(7) == "1120S" || form.Header(7) == "1065";
}

// In the order of their computation; a line that several steps set is put together from the former ones. Lines 10, 15 and 23 are
// the preparer's: they stay 0 until entered on the page.
// COMPAT: line 25, the special allowance of listed property, is in no total: line 28 has always begun at 0. The preparer adds it
// in the viewer; each such asset is told below the form.
constexpr auto kSteps = std::to_array<Step>({
    {1, [](const Form& f) { return f.ExpenseLimit(); }},
    {3, [](const Form& f) { return f.ExpenseThreshold(); }},
    {Form::kListedAbove,
     [](const Form& f) {
         return CountOf(f.Listed(), [](const auto& row) { return !row.ListedDesc.empty() && row.ListedPct > kHalfUse; });
     }},
    {Form::kListedBelow,
     [](const Form& f) {
         return CountOf(f.Listed(), [](const auto& row) { return !row.ListedDesc.empty() && row.ListedPct <= kHalfUse; });
     }},
    {28, [](const Form& f) { return SumOf(f.Listed(), [](const auto& row) { return row.ListedDepr; }); }},
    {29, [](const Form& f) { return SumOf(f.Listed(), [](const auto& row) { return row.ListedElected; }); }},
    {2, Section179Property},
    {7, [](const Form& f) { return f.Line(29); }},
    {21, [](const Form& f) { return f.Line(28); }},
    {4, [](const Form& f) { return NotBelowZero(f.Line(2) - f.Line(3)); }},
    {5, [](const Form& f) { return NotBelowZero(f.Line(1) - f.Line(4)); }},
    {11, [](const Form& f) { return f.Line(5); }},
    {Form::kElections,
     [](const Form& f) {
         return CountOf(f.Election(), [](const auto& row) { return !row.ElectCost.IsZero() || row.ElectAmount > kNothing; });
     }},
    {Form::kElectedCost, [](const Form& f) { return SumOf(f.Election(), [](const auto& row) { return row.ElectCost; }); }},
    {6, [](const Form& f) { return SumOf(f.Election(), [](const auto& row) { return row.ElectAmount; }); }},
    {8, [](const Form& f) { return f.Line(6) + f.Line(7); }},
    {9, [](const Form& f) { return std::min(f.Line(5), f.Line(8)); }},
    {12, [](const Form& f) { return std::min(f.Line(9) + f.Line(10), f.Line(11)); }},
    {13, [](const Form& f) { return NotBelowZero(f.Line(9) + f.Line(10) - f.Line(12)); }},
    {18, [](const Form&) { return kNothing; }},
    {19, [](const Form& f) { return SumOfClasses(f, 1, 11, &Form::ClassRow::RowDepr); }},
    {20, [](const Form& f) { return SumOfClasses(f, 12, 14, &Form::ClassRow::RowDepr); }},
    // Partners and shareholders take the deduction of line 12 themselves.
    {22,
     [](const Form& f) {
         CurrencyAmount total = IsPartnership(f) ? kNothing : f.Line(12);
         for (int line = 14; line <= 21; ++line) total += f.Line(line);
         return total;
     }},
    {Form::kAmortizations,
     [](const Form& f) { return CountOf(f.Amortization(), [](const auto& row) { return row.AmortCost > kNothing; }); }},
    {44, [](const Form& f) { return f.Line(43) + SumOf(f.Amortization(), [](const auto& row) { return row.AmortAmount; }); }},
});

using ClassColumn = RowColumn<Form::ClassRow>;
using ListedColumn = RowColumn<Form::ListedRow>;
using ElectColumn = RowColumn<Form::ElectRow>;
using AmortColumn = RowColumn<Form::AmortRow>;

constexpr auto kClassColumns = std::to_array<ClassColumn>({{"RowPlaced", &Form::ClassRow::RowPlaced},
                                                           {"RowBasis", &Form::ClassRow::RowBasis},
                                                           {"RowPeriod", &Form::ClassRow::RowPeriod},
                                                           {"RowConvention", &Form::ClassRow::RowConvention},
                                                           {"RowMethod", &Form::ClassRow::RowMethod},
                                                           {"RowDepr", &Form::ClassRow::RowDepr}});
constexpr auto kListedColumns = std::to_array<ListedColumn>({{"ListedDesc", &Form::ListedRow::ListedDesc},
                                                             {"ListedDate", &Form::ListedRow::ListedDate},
                                                             {"ListedPct", &Form::ListedRow::ListedPct},
                                                             {"ListedCost", &Form::ListedRow::ListedCost},
                                                             {"ListedBasis", &Form::ListedRow::ListedBasis},
                                                             {"ListedLife", &Form::ListedRow::ListedLife},
                                                             {"ListedMethod", &Form::ListedRow::ListedMethod},
                                                             {"ListedDepr", &Form::ListedRow::ListedDepr},
                                                             {"ListedElected", &Form::ListedRow::ListedElected}});
constexpr auto kElectColumns = std::to_array<ElectColumn>({{"ElectDesc", &Form::ElectRow::ElectDesc},
                                                           {"ElectDate", &Form::ElectRow::ElectDate},
                                                           {"ElectCost", &Form::ElectRow::ElectCost},
                                                           {"ElectAmount", &Form::ElectRow::ElectAmount}});
constexpr auto kAmortColumns = std::to_array<AmortColumn>({{"AmortDesc", &Form::AmortRow::AmortDesc},
                                                           {"AmortDate", &Form::AmortRow::AmortDate},
                                                           {"AmortCost", &Form::AmortRow::AmortCost},
                                                           {"AmortCode", &Form::AmortRow::AmortCode},
                                                           {"AmortLife", &Form::AmortRow::AmortLife},
                                                           {"AmortAmount", &Form::AmortRow::AmortAmount}});

// The form line of each class row that has one.
constexpr std::array<std::string_view, 15> kClassLines = {"",    "19a", "19b", "19c", "19d", "19e", "19f", "19g",
                                                          "19h", "19h", "19i", "19i", "20a", "20b", "20c"};

}  // namespace

std::span<const int> Form4562::SlotsBesideLines() const {
    static constexpr int kSlots[] = {kAmortizations, kElectedCost, kElections, kListedAbove, kListedBelow};
    return kSlots;
}

std::vector<Form4562::AmortRow> Form4562::ShownAmortizations() const {
    const auto most =
        static_cast<std::size_t>(HasAmortizationStatement() ? Line(kAmortizations).WholePart() : kAmortizationsOnPage);
    return {amortization_.begin(), amortization_.begin() + static_cast<std::ptrdiff_t>(std::min(most, amortization_.size()))};
}

void Form4562::NameLostAmortizations() {
    for (std::size_t row = ShownAmortizations().size(); row < amortization_.size(); ++row) {
        LeaveOut(amortization_[row].AssetNum, "an amortization before it has no cost: in line 44 and on no row");
    }
}

// A book without a year end has no tax year, and keeps the limits of the form's year.
void Form4562::TakeLimits(const FormSettings& settings) {
    expenseLimit_ = Units(24000);
    expenseThreshold_ = Units(200000);
    if (settings.LimitsByLaw == nullptr || settings.YearEnd.IsNone()) return;
    const int year = TaxYearOf(settings.YearEnd);
    const Section179Limits* limits = settings.LimitsByLaw->Section179(year);
    if (limits == nullptr) {
        throw PlatformError(Failure::ItemNotFound, "law/section179.txt has no limits of the tax year " + std::to_string(year));
    }
    expenseLimit_ = Units(limits->Limit);
    expenseThreshold_ = Units(limits->Threshold);
}

void Form4562::RoundColumns(const FormSettings& settings) {
    const FormRounding round(settings.RoundText);
    for (ListedRow& row : listed_) {
        for (CurrencyAmount* amount : {&row.ListedPct, &row.ListedCost, &row.ListedDepr, &row.ListedElected})
            round.Apply(*amount);
    }
    for (ElectRow& row : election_) {
        for (CurrencyAmount* amount : {&row.ElectCost, &row.ElectAmount}) round.Apply(*amount);
    }
    for (std::size_t row = 1; row < kClassLines.size(); ++row) {
        for (CurrencyAmount* amount : {&class_[row].RowBasis, &class_[row].RowDepr}) round.Apply(*amount);
    }
    for (int line = 14; line <= 17; ++line) round.Apply(lines_[line]);
}

std::optional<DepreciationSums> Form4562::Sums() const {
    DepreciationSums sums{.InBook = inBook_, .OnForm = onForm_, .LeftOut = {}};
    for (const LeftOut& one : NotOnForm()) sums.LeftOut += one.Amount;
    return sums;
}

void Form4562::ComputeLines(const FormSettings& settings) {
    const auto onForm = [this] {
        return SumOfClasses(*this, 1, 14, &ClassRow::RowDepr) + lines_[16] + lines_[17] + lines_[43] +
               SumOf(listed_, [](const auto& row) { return row.ListedDepr; }) +
               SumOf(amortization_, [](const auto& row) { return row.AmortAmount; });
    };
    onForm_ = onForm() + lostInRounding_;
    RoundColumns(settings);
    lostInRounding_ = onForm_ - onForm();

    TakeLimits(settings);
    lines_[25] = listedAllowance_;
    header_[1] = header_[3] = company_;
    header_[2] = id_;
    header_[7] = settings.Options.Type;
    RunSteps<Form4562>(kSteps, *this, lines_);
    if (lines_[28] > kNothing || lines_[29] > kNothing) header_[4] = header_[5] = "Y";
    NameLostAmortizations();
}

void Form4562::ExchangeWorkFile(WorkFile& file) {
    std::string company = header_[1];
    file.Item(company);
    for (const int line : {12, 22}) file.Item(lines_[line]);
    file.Line(lines_[44]);
    for (int line = 1; line <= lines_.Last(); ++line) file.Line(lines_[line]);
    for (std::size_t slot = 1; slot < header_.size(); ++slot) file.Line(header_[slot]);
    std::vector<ClassRow> classes(class_.begin() + 1, class_.end());
    file.Rows<ClassRow>(classes, kClassColumns, class_.size() - 1);
    classes.resize(class_.size() - 1);
    std::copy(classes.begin(), classes.end(), class_.begin() + 1);
    file.Rows<ListedRow>(listed_, kListedColumns, 40);
    file.Rows<ElectRow>(election_, kElectColumns, 40);
    file.Rows<AmortRow>(amortization_, kAmortColumns, 10);
    for (int row = 0; row < 6; ++row) {
        std::string unused;
        file.Line(unused);
    }
    for (int value = 0; value < 40; ++value) {
        CurrencyAmount unused;
        file.Line(unused);
    }
}

void Form4562::WriteTables(JsonWriter& json) const {
    WriteJsonTable<ElectRow>(json, "Election", election_, kElectColumns);
    WriteJsonTable<ListedRow>(json, "Listed", listed_, kListedColumns);
    WriteJsonTable<AmortRow>(json, "Amortization", amortization_, kAmortColumns);
    json.BeginArray("Class");
    for (std::size_t row = 1; row < kClassLines.size(); ++row) {
        if (class_[row] == ClassRow()) continue;
        json.BeginObject();
        json.Text("line", kClassLines[row]);
        json.BeginArray("AssetNum");
        for (const std::string& number : class_[row].AssetNums) json.Text({}, number);
        json.End();
        WriteJsonCells<ClassRow>(json, class_[row], kClassColumns);
        json.End();
    }
    json.End();
}

}  // namespace tallymar
