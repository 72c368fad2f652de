#include "irsforms/Form4255.h"

#include "irsforms/FormTables.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using Form = Form4255;
using Column = Form::GridColumn;
using L = FormLineOf;

constexpr CurrencyAmount kNothing;
constexpr std::size_t kGridColumns = 37;
constexpr std::array<std::string_view, 1> kPages = {"242551"};

// ---- Recapture percentages by whole years held

struct RecapturePercent {
    int FromYears;
    double Percent;
};

// Recovery property of the 3-year class: former section 47(a)(5)(B), 95 Stat. 233.
constexpr RecapturePercent kThreeYear[] = {{0, 100}, {1, 66}, {2, 33}, {3, 0}};
// Other recovery property, the same, and property under section 50(a)(1)(B), 104 Stat. 1388-547.
constexpr RecapturePercent kOther[] = {{0, 100}, {1, 80}, {2, 60}, {3, 40}, {4, 20}, {5, 0}};
// Non-recovery property (before 1981): what former sections 46(c)(2) and 47(a)(1) take back of the credit when it is refigured
// with the life actually reached, by the life that it was taken for.
constexpr RecapturePercent kLifeSeven[] = {{0, 100}, {3, 66.67}, {5, 33.33}, {7, 0}};
constexpr RecapturePercent kLifeFive[] = {{0, 100}, {3, 50}, {5, 0}};
constexpr RecapturePercent kLifeThree[] = {{0, 100}, {3, 0}};
constexpr RecapturePercent kNoCredit[] = {{0, 0}};

std::span<const RecapturePercent> PercentsOf(const AssetRecord& asset, int book) {
    switch (asset.DeprType[book]) {
        case kAcrs:
            if (asset.ClassLife < Units(5)) return kThreeYear;
            return kOther;
        case kAcam:
            if (asset.ClassLife >= Units(7)) return kLifeSeven;
            if (asset.ClassLife >= Units(5)) return kLifeFive;
            if (asset.ClassLife >= Units(3)) return kLifeThree;
            return kNoCredit;
        default:
            return kOther;
    }
}

CurrencyAmount PercentFor(std::span<const RecapturePercent> percents, std::int64_t yearsHeld) {
    double percent = 0;
    for (const RecapturePercent& row : percents) {
        if (yearsHeld >= row.FromYears) percent = row.Percent;
    }
    return CurrencyAmount::FromDouble(percent);
}

std::string_view SuffixOf(const AssetRecord& asset, int book) {
    if (asset.DeprType[book] == kAcrs) return " - RECOVERY PROPERTY";
    if (asset.DeprType[book] == kAcam) return " - NON-RECOVERY PROPERTY";
    return {};
}

CurrencyAmount WholeOf(double value) {
    return CurrencyAmount::FromInteger(CurrencyAmount::FromDouble(value).WholePart());
}

CurrencyAmount Ratio(CurrencyAmount amount, CurrencyAmount of) {
    return of.IsZero() ? kNothing : CurrencyAmount::FromDouble(amount.ToDouble() * 100.0 / of.ToDouble());
}

CurrencyAmount SumOfRecapture(const Form& form) {
    CurrencyAmount sum;
    for (const Column& column : form.RecaptureGrid()) sum += column.Recapture;
    return sum;
}

// Lines 10 and 12 are the preparer's.
constexpr auto kSteps = std::to_array<LineStep<Form>>({
    {9, SumOfRecapture},
    {11, [](const Form& f) { return f.Line(9) + f.Line(10); }},
    {13, [](const Form& f) { return f.Line(11) - f.Line(12); }},
});

using GridRow = RowColumn<Column>;
constexpr auto kGridRows = std::to_array<GridRow>({{"description", &Column::Description},
                                                   {"life", &Column::Life},
                                                   {"in_service", &Column::InService},
                                                   {"sold", &Column::Sold},
                                                   {"days", &Column::Days},
                                                   {"YearsHeld", &Column::YearsHeld},
                                                   {"credit_at_base", &Column::CreditAtBase},
                                                   {"credit_at_full_basis", &Column::CreditAtFullBasis},
                                                   {"line1", &Column::RateOfCredit},
                                                   {"line2", &Column::Basis},
                                                   {"line3", &Column::Credit},
                                                   {"line7", &Column::RecaptureRate},
                                                   {"line8", &Column::Recapture},
                                                   {"earned", &Column::Earned}});

// ---- The page

constexpr std::string_view kPercentMask = "###.##";
constexpr std::string_view kAmountMask = "###,###.##";
constexpr std::string_view kYearsMask = "###";

constexpr auto kPage = std::to_array<PageField<Form>>({
    {10, 5, [](const Form& f) { return f.Company(); }, 54},
    {10, 65, [](const Form& f) { return f.Id(); }},
    {35, 68, L{9}, kAmountMask},
    {37, 68, L{10}, kAmountMask},
    {38, 68, L{11}, kAmountMask},
    {42, 68, L{12}, kAmountMask},
    {45, 68, L{13}, kAmountMask},
    {47, 8, "ADDITIONAL FORMS 4255 ATTACHED", 0, [](const Form& f) { return f.RecaptureGrid().size() > Form::kColumnsOnPage; }},
});
// Properties A to D, and none after them: with four columns there is no place for a word that refers to a page before.
// Their names stand one below the other, their lines in columns side by side.
constexpr auto kPropertyName = std::to_array<PageField<Column>>({
    {13, 8, &Column::Description, 58},
    {13, 68, &Column::Life, 8},
});
constexpr int kColumnWidth = 11;
constexpr auto kPropertyLines = std::to_array<PageField<Column>>({
    {21, 39, &Column::RateOfCredit, kPercentMask, 'Y'},
    {22, 35, &Column::Basis, kAmountMask, 'Y'},
    {24, 35, &Column::Credit, kAmountMask, 'Y'},
    {25, 35, &Column::InService},
    {27, 35, &Column::Sold},
    {29, 42, &Column::YearsHeld, kYearsMask, 'Y'},
    {31, 39, &Column::RecaptureRate, kPercentMask, 'Y'},
    {33, 35, &Column::Recapture, kAmountMask, 'Y'},
});

}  // namespace

const FormInfo Form4255::kInfo = {.Name = "4255",
                                  .Title = "Form 4255",
                                  .Window = "frmCreate4255",
                                  .WindowTitle = "Create Form 4255",
                                  .CreateButton = "cmdCreate4255",
                                  .CreateCaption = "Create 4255",
                                  .EditButton = "cmdEdit4255",
                                  .EditCaption = "Edit Form 4255",
                                  .TypeCaption = {},
                                  .Pages = kPages};

Form4255::Form4255() : IrsForm(13) {}

std::string Form4255::Message() const {
    return std::to_string(AssetsRead) + " Assets processed and " + std::to_string(grid_.size()) + " Asset(s) recaptured";
}

void Form4255::Take(const AssetRecord& asset, FormScan& scan) {
    const int book = scan.Settings.Options.Book;
    const int type = asset.DeprType[book];
    if (type == kStck || type == kColl || type == kXxxx) return;
    const CurrencyAmount taxCredit = asset.TaxCredit[book];
    const std::string soldText = FormatShortDate(asset.DateSold);
    if (taxCredit.IsZero()) return;
    if (asset.DateSold.IsNone() || soldText.starts_with("12:00")) {
        if (asset.Sold) LeaveOut(asset, "sold with a tax credit, but without a date sold");
        return;
    }
    scan.Tell("Processing Asset - " + std::string(Trim(asset.Description)) + " - Sold on " + soldText);
    if (grid_.size() == kGridColumns) throw PlatformError(Failure::SubscriptOutOfRange);
    if (grid_.size() >= kColumnsOnPage) LeaveOut(asset, "the 5th property or later: in the totals and in no column");
    const CurrencyAmount basis = asset.Basis[book];
    totals_.Basis += basis;
    totals_.PrevDepr += asset.PrevDepr[book];
    totals_.CurrDepr += asset.CurrDepr[book];

    const int days = DaysBetween(asset.InService, asset.DateSold);
    const int yearsHeld = days / (days < 1 ? 366 : 365);  // sold before its service began, within the year: 0
    const CurrencyAmount halfCredit = WholeOf(taxCredit.ToDouble() / 2);
    Column column{.AssetNum = std::string(asset.AssetNum.Trimmed()),
                  .Description = asset.Description + std::string(SuffixOf(asset, book)),
                  .Life = asset.ClassLife.ToText() + " YRS",
                  .InService = FormDate(asset.InService),
                  .Sold = FormDate(asset.DateSold),
                  .Days = CurrencyAmount::FromInteger(days),
                  .YearsHeld = CurrencyAmount::FromInteger(yearsHeld),
                  .CreditAtBase = WholeOf((halfCredit + basis).ToDouble() / 10),
                  .CreditAtFullBasis = WholeOf(basis.ToDouble() / 10),
                  .RateOfCredit = {},
                  .Basis = basis,
                  .Credit = taxCredit,
                  .RecaptureRate = PercentFor(PercentsOf(asset, book), yearsHeld),
                  .Recapture = {},
                  .Earned = {}};
    // COMPAT: where half of the credit makes no difference, the basis is taken as reduced by it (former section 48(q)), and it is
    // added back.
    if (column.CreditAtBase == column.CreditAtFullBasis) column.Basis = WholeOf(basis.ToDouble() + taxCredit.ToDouble() / 2);
    column.RateOfCredit = Ratio(column.Credit, column.Basis);
    column.Recapture = CurrencyAmount::FromDouble(column.Credit.ToDouble() * column.RecaptureRate.ToDouble() / 100.0);
    grid_.push_back(std::move(column));
}

void Form4255::ComputeLines(const FormSettings& settings) {
    const FormRounding round(settings.RoundText);
    for (Column& column : grid_) {
        // Line 9 adds up what line 8 shows.
        if (!round.IsOn()) RoundAmount(column.Recapture, {});
        column.Earned = column.Credit - column.Recapture;
        for (CurrencyAmount* amount :
             {&column.RateOfCredit, &column.Basis, &column.Credit, &column.RecaptureRate, &column.Recapture, &column.Earned}) {
            round.Apply(*amount);
        }
    }
    RunSteps<Form4255>(kSteps, *this, lines_);
}

void Form4255::ExchangeWorkFile(WorkFile& file) {
    file.Item(company_);
    for (const int line : {9, 11}) file.Item(lines_[line]);
    file.Line(lines_[13]);
    for (int line = 1; line <= lines_.Last(); ++line) file.Line(lines_[line]);
    for (std::string* text : {&company_, &id_}) file.Line(*text);
    for (CurrencyAmount* total : {&totals_.Basis, &totals_.PrevDepr, &totals_.CurrDepr}) file.Line(*total);
    file.Rows<Column>(grid_, kGridRows, kGridColumns);
}

void Form4255::Write(FormOutput& output) {
    output.WriteWorkFile("F42551.001", WorkFileText());

    PageSheet page(kPages.front());
    page.Lay(kPage, *this);
    for (std::size_t i = 0; i < std::min(grid_.size(), kColumnsOnPage); ++i) {
        page.Lay(kPropertyName, grid_[i], static_cast<int>(i));
        page.Lay(kPropertyLines, grid_[i], 0, static_cast<int>(i) * kColumnWidth);
    }
    output.WritePage(std::string(kPages.front()), page);
}

void Form4255::WriteTables(JsonWriter& json) const {
    WriteJsonTable<Column>(json, "RecaptureGrid", grid_, kGridRows);
    json.BeginObject("totals");
    json.Text("Basis", DecimalText(totals_.Basis));
    json.Text("PrevDepr", DecimalText(totals_.PrevDepr));
    json.Text("CurrDepr", DecimalText(totals_.CurrDepr));
    json.End();
}

}  // namespace tallymar
