#include "irsforms/FormSchD.h"

#include "irsforms/FormTables.h"
#include "platform/runtime/Rounding.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using Form = FormSchD;

constexpr CurrencyAmount kNothing;
constexpr std::size_t kSaleRows = 200;
constexpr int kLastShortDay = 365;
constexpr int kLastLongDay = 1826;
constexpr std::string_view kNoFiveYearGain = "4";

constexpr std::array<std::string_view, 4> kPages = {"2D1", "2D2", "2D1C1", "2D1C2"};

std::string_view TermOf(int days) {
    if (days > kLastLongDay) return "5";
    return days > kLastShortDay ? "L" : "S";
}

Form::TermTotals TotalsOf(const std::vector<Form::SaleRow>& rows, bool shortTerm) {
    Form::TermTotals totals;
    for (const Form::SaleRow& row : rows) {
        if (row.IsShort() != shortTerm) continue;
        ++totals.Rows;
        totals.Price += row.ItemPrice;
        totals.Cost += row.ItemCost;
        totals.Gain += row.ItemGain;
        totals.Gain28 += row.ItemGain28;
    }
    return totals;
}

constexpr auto kSlots = std::to_array<LineStep<Form>>({
    {Form::kItems, [](const Form& f) { return CurrencyAmount::FromInteger(std::ssize(f.SaleTable())); }},
    {Form::kFiveYearGain,
     [](const Form& f) {
         CurrencyAmount gain;
         for (const Form::SaleRow& row : f.SaleTable()) {
             const bool counts = row.ItemTerm == "5" && row.ItemGain > kNothing && row.ColumnCode() != kNoFiveYearGain;
             if (counts) gain += row.ItemGain;
         }
         return gain;
     }},
    {Form::kNetLongTerm, [](const Form& f) { return f.LongTerm().Gain; }},
    {Form::kNetLongTermLoss, [](const Form& f) { return std::min(f.SchDLine(Form::kNetLongTerm), kNothing); }},
});

// Lines 4 to 6, 11 to 14 and the tax computation of page 2 are the preparer's.
// COMPAT: line 18 takes the loss of the long-term sales alone, without line 7 and without the limit of 3,000.
constexpr auto kLines = std::to_array<LineStep<Form>>({
    {3, [](const Form& f) { return f.ShortTerm().Price; }},
    {7, [](const Form& f) { return f.ShortTerm().Gain; }},
    {10, [](const Form& f) { return f.LongTerm().Price; }},
    {15, [](const Form& f) { return f.LongTerm().Gain28; }},
    {16, [](const Form& f) { return f.SchDLine(Form::kNetLongTerm); }},
    {17, [](const Form& f) { return f.Line(7) + f.Line(16); }},
    {18, [](const Form& f) { return f.SchDLine(Form::kNetLongTermLoss); }},
    {29, [](const Form& f) { return f.SchDLine(Form::kFiveYearGain); }},
});

using SaleColumn = RowColumn<Form::SaleRow>;
constexpr auto kSaleColumns = std::to_array<SaleColumn>({{"ItemDesc", &Form::SaleRow::ItemDesc},
                                                         {"ItemBought", &Form::SaleRow::ItemBought},
                                                         {"ItemSold", &Form::SaleRow::ItemSold},
                                                         {"ItemPrice", &Form::SaleRow::ItemPrice},
                                                         {"ItemCost", &Form::SaleRow::ItemCost},
                                                         {"ItemGain", &Form::SaleRow::ItemGain},
                                                         {"ItemGain28", &Form::SaleRow::ItemGain28},
                                                         {"ItemTerm", &Form::SaleRow::ItemTerm},
                                                         {"ItemCode", &Form::SaleRow::ItemCode}});

}  // namespace

const FormInfo FormSchD::kInfo = {.Name = "D",
                                  .Title = "Schedule D",
                                  .Window = "frmCreateSchD",
                                  .WindowTitle = "Create Schedule D",
                                  .CreateButton = "cmdCreateSchD",
                                  .CreateCaption = "Create Sch.D",
                                  .EditButton = "cmdEditSchD",
                                  .EditCaption = "Edit Schedule D",
                                  .TypeCaption = {},
                                  .Pages = kPages};

FormSchD::FormSchD() : IrsForm(40), schDLine_(40) {}

std::string FormSchD::Message() const {
    return "Number of Schedule D items saved " + std::to_string(saleTable_.size());
}

void FormSchD::Take(const AssetRecord& asset, FormScan& scan) {
    const int book = scan.Settings.Options.Book;
    const int type = asset.DeprType[book];
    if (type != kColl && type != kStck) return;
    if (asset.SoldAmount <= kNothing && !asset.Sold) {
        if (!asset.DateSold.IsNone()) LeaveOut(asset, "a date sold, but no amount and not marked sold");
        return;
    }
    if (saleTable_.size() == kSaleRows) throw PlatformError(Failure::SubscriptOutOfRange);
    SaleRow row{.AssetNum = std::string(asset.AssetNum.Trimmed()),
                .ItemDesc = asset.Description,
                .ItemBought = FormDate(asset.Purchased),
                .ItemSold = FormDate(asset.DateSold),
                .ItemPrice = asset.SoldAmount - asset.SoldExpense,
                .ItemCost = asset.Basis[book],
                .ItemGain = {},
                .ItemGain28 = {},
                .ItemTerm = std::string(TermOf(ToLong(asset.DateSold.Serial() - asset.InService.Serial()))),
                .ItemCode = {}};
    row.ItemGain = row.ItemPrice - row.ItemCost;
    if (type == kColl) row.ItemGain28 = row.ItemGain;
    // COMPAT: without the date the holding counts from day 0.
    if (asset.Purchased.IsNone() && !row.ItemDesc.empty())
        LeaveOut(asset, "no date purchased: taken as held more than five years");
    saleTable_.push_back(std::move(row));
}

// COMPAT: the term goes by the dates that stand on the form, the purchase among them, where the first look went by the date in
// service; a row without a description keeps its first term.
void FormSchD::LookAgainAtTerms() {
    for (SaleRow& row : saleTable_) {
        if (!row.ItemDesc.empty()) row.ItemTerm = TermOf(DaysBetween(TextToDate(row.ItemBought), TextToDate(row.ItemSold)));
    }
}

void FormSchD::SumTerms() {
    short_ = TotalsOf(saleTable_, true);
    long_ = TotalsOf(saleTable_, false);
}

void FormSchD::ComputeLines(const FormSettings& settings) {
    round_ = settings.RoundText;
    LookAgainAtTerms();
    const FormRounding round(settings.RoundText);
    for (SaleRow& row : saleTable_) {
        for (CurrencyAmount* amount : {&row.ItemPrice, &row.ItemCost, &row.ItemGain, &row.ItemGain28}) round.Apply(*amount);
    }
    SumTerms();
    RunSteps<FormSchD>(kSlots, *this, schDLine_);
    RunSteps<FormSchD>(kLines, *this, lines_);
}

void FormSchD::ExchangeWorkFile(WorkFile& file) {
    file.Item(company_);
    for (const int line : {7, 16}) file.Item(lines_[line]);
    file.Line(lines_[17]);
    for (int line = 1; line <= lines_.Last(); ++line) file.Line(lines_[line]);
    for (int slot = 0; slot <= schDLine_.Last(); ++slot) file.Line(schDLine_[slot]);
    for (std::string* text : {&company_, &id_, &round_}) file.Line(*text);
    file.Rows<SaleRow>(saleTable_, kSaleColumns, kSaleRows);
    SumTerms();
}

void FormSchD::WriteTables(JsonWriter& json) const {
    WriteJsonTable<SaleRow>(json, "SaleTable", saleTable_, kSaleColumns);
    static constexpr int kCounts[] = {kItems};
    WriteJsonLines(json, "SchDLine", schDLine_, kCounts);
}

}  // namespace tallymar
