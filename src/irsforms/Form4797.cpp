#include "irsforms/Form4797.h"

#include "irsforms/FormTables.h"
#include "store/Disposal.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using Form = Form4797;

constexpr CurrencyAmount kNothing;
constexpr std::size_t kSaleRows = 100;
constexpr std::size_t kRecaptureRows = 36;
constexpr std::size_t kPropertyColumns = 4;
constexpr int kLastShortDay = 365;
constexpr int kLastShortDayOfFarm = 730;

constexpr std::array<std::string_view, 4> kPages = {"247971", "247972", "247973", "247974"};
constexpr std::string_view kSection1245 = "1245";
constexpr std::array<std::string_view, 5> kRecaptureSections = {kSection1245, "1250", "1252", "1254", "1255"};

CurrencyAmount DepreciationAllowed(const AssetRecord& asset, int book) {
    return asset.PrevDepr[book] + asset.Section179[book] + asset.CurrDepr[book] + asset.AddlDepr[book];
}

template <typename Rows, typename Member>
CurrencyAmount SumOf(const Rows& rows, Member member) {
    CurrencyAmount sum;
    for (const auto& row : rows) sum += row.*member;
    return sum;
}

CurrencyAmount GainOfTerm(const Form& form, std::string_view term) {
    CurrencyAmount sum;
    for (const Form::SaleRow& row : form.LongTable()) {
        if (row.SaleTerm == term || row.SaleTerm == "M") sum += row.SaleGain;
    }
    return sum;
}

// Lines 1, 3 to 5, 8 and 14 to 17 are the preparer's and stay 0 here. A partnership and an S corporation go no further than line
// 7 in Part I.
constexpr auto kSteps = std::to_array<LineStep<Form>>({
    {30, [](const Form& f) { return SumOf(f.RecaptureTable(), &Form::RecaptureRow::RecapGain); }},
    {31, [](const Form& f) { return SumOf(f.RecaptureTable(), &Form::RecaptureRow::RecapFinal); }},
    {32, [](const Form& f) { return f.Line(30) - f.Line(31); }},
    {2, [](const Form& f) { return GainOfTerm(f, "L"); }},
    {6, [](const Form& f) { return NotBelowZero(f.Line(32)); }},
    {7, [](const Form& f) { return f.Line(2) + f.Line(3) + f.Line(4) + f.Line(5) + f.Line(6); }},
    {9, [](const Form& f) { return f.IsPartnership() ? kNothing : NotBelowZero(f.Line(7) - f.Line(8)); }},
    {10, [](const Form& f) { return GainOfTerm(f, "S"); }},
    {11, [](const Form& f) { return f.IsPartnership() ? kNothing : NotBelowZero(-f.Line(7)); }},
    {12,
     [](const Form& f) {
         if (f.IsPartnership() || f.Line(8).IsZero() || f.Line(7) <= kNothing) return kNothing;
         return f.Line(9).IsZero() ? f.Line(7) : f.Line(8);
     }},
    {13, [](const Form& f) { return f.Line(31); }},
    {18,
     [](const Form& f) {
         CurrencyAmount total = f.Line(10) - f.Line(11);
         for (int line = 12; line <= 17; ++line) total += f.Line(line);
         return total;
     }},
});

using SaleColumn = RowColumn<Form::SaleRow>;
using RecaptureColumn = RowColumn<Form::RecaptureRow>;
constexpr auto kSaleColumns = std::to_array<SaleColumn>({{"SaleDesc", &Form::SaleRow::SaleDesc},
                                                         {"SaleAcquired", &Form::SaleRow::SaleAcquired},
                                                         {"SaleSold", &Form::SaleRow::SaleSold},
                                                         {"SalePrice", &Form::SaleRow::SalePrice},
                                                         {"SaleDepr", &Form::SaleRow::SaleDepr},
                                                         {"SaleCost", &Form::SaleRow::SaleCost},
                                                         {"SaleGain", &Form::SaleRow::SaleGain},
                                                         {"SaleLoss", &Form::SaleRow::SaleLoss},
                                                         {"SaleTerm", &Form::SaleRow::SaleTerm},
                                                         {"SaleFlag", &Form::SaleRow::SaleFlag}});
constexpr auto kRecaptureColumns = std::to_array<RecaptureColumn>({{"RecapDesc", &Form::RecaptureRow::RecapDesc},
                                                                   {"RecapAcquired", &Form::RecaptureRow::RecapAcquired},
                                                                   {"RecapSold", &Form::RecaptureRow::RecapSold},
                                                                   {"RecapSection", &Form::RecaptureRow::RecapSection},
                                                                   {"RecapPrice", &Form::RecaptureRow::RecapPrice},
                                                                   {"RecapCost", &Form::RecaptureRow::RecapCost},
                                                                   {"RecapDepr", &Form::RecaptureRow::RecapDepr},
                                                                   {"RecapAdjusted", &Form::RecaptureRow::RecapAdjusted},
                                                                   {"RecapGain", &Form::RecaptureRow::RecapGain},
                                                                   {"RecapSec1245", &Form::RecaptureRow::RecapSec1245},
                                                                   {"RecapFinal", &Form::RecaptureRow::RecapFinal}});

std::string_view KindOfDisposal(const AssetRecord& asset) {
    if (asset.Casualty) return "casualty";
    if (asset.LikeKind) return "like-kind exchange";
    return asset.Abandoned ? "abandoned" : "an amount of sale";
}

// What a row's table could not hold ends the run.
template <typename Row>
void AddRow(std::vector<Row>& table, std::size_t limit, Row row) {
    if (table.size() == limit) throw PlatformError(Failure::SubscriptOutOfRange);
    table.push_back(std::move(row));
}

}  // namespace

const FormInfo Form4797::kInfo = {.Name = "4797",
                                  .Title = "Form 4797",
                                  .Window = "frmCreate4797",
                                  .WindowTitle = "Create Form 4797",
                                  .CreateButton = "cmdCreate4797",
                                  .CreateCaption = "Create 4797",
                                  .EditButton = "cmdEdit4797",
                                  .EditCaption = "Edit Form 4797",
                                  .TypeCaption = "Form 4797 Type (1040, 1120, etc)",
                                  .Pages = kPages};

Form4797::Form4797() : IrsForm(35) {}

std::string Form4797::Message() const {
    return "Number of Assets sold this fiscal year " + std::to_string(sold_);
}

// COMPAT: every sold asset of the book is reported, whatever the year of its sale; an asset sold in an earlier year is on the
// form until it is deleted.
void Form4797::Take(const AssetRecord& asset, FormScan& scan) {
    const int book = scan.Settings.Options.Book;
    if (asset.DeprType[book] == kStck || asset.DeprType[book] == kColl) return;
    if (!asset.Sold) {
        if (CheckDisposed(asset)) LeaveOut(asset, std::string(KindOfDisposal(asset)) + ", not marked sold");
        return;
    }
    ++sold_;
    SaleRow sale{.AssetNum = std::string(asset.AssetNum.Trimmed()),
                 .SaleDesc = FirstOf(asset.Description, 14),
                 .SaleAcquired = FormDate(asset.InService),
                 .SaleSold = FormDate(asset.DateSold),
                 .SalePrice = asset.SoldAmount,
                 .SaleDepr = DepreciationAllowed(asset, book),
                 .SaleCost = asset.Basis[book] + asset.SoldExpense,
                 .SaleGain = {},
                 .SaleLoss = {},
                 .SaleTerm = {}};
    sale.SaleGain = sale.SalePrice + sale.SaleDepr - sale.SaleCost;
    if (OnlyCounted(asset, sale)) return;
    const int days = DaysBetween(asset.InService, asset.DateSold);
    if (days <= (asset.Agri[book] ? kLastShortDayOfFarm : kLastShortDay)) {
        AddSale(asset, std::move(sale), "S");
    } else {
        TakeLong(asset, std::move(sale));
    }
}

bool Form4797::OnlyCounted(const AssetRecord& asset, const SaleRow& sale) {
    if (asset.Casualty) {
        casualty_.push_back(sale);
        LeaveOut(asset, "casualty, on no row");
    } else if (asset.LikeKind) {
        likeKind_.push_back(sale);
        LeaveOut(asset, "like-kind exchange, on no row");
    }
    return asset.Casualty || asset.LikeKind;
}

void Form4797::AddSale(const AssetRecord& asset, SaleRow sale, std::string_view term) {
    if (sale.SaleDesc.empty()) LeaveOut(asset, "no description: in the totals and on no row");
    sale.SaleTerm = term;
    AddRow(longTable_, kSaleRows, std::move(sale));
}

void Form4797::TakeLong(const AssetRecord& asset, SaleRow sale) {
    const std::string section = FirstOf(asset.CodeSection, 4);
    const CurrencyAmount adjusted = sale.SaleCost - sale.SaleDepr;
    const bool hasSection = std::find(kRecaptureSections.begin(), kRecaptureSections.end(), section) != kRecaptureSections.end();
    if (sale.SalePrice <= adjusted || !hasSection) {
        AddSale(asset, std::move(sale), "L");
        return;
    }
    RecaptureRow row{.AssetNum = sale.AssetNum,
                     .RecapDesc = asset.Description,
                     .RecapAcquired = sale.SaleAcquired,
                     .RecapSold = sale.SaleSold,
                     .RecapSection = section,
                     .RecapPrice = sale.SalePrice,
                     .RecapCost = sale.SaleCost,
                     .RecapDepr = sale.SaleDepr,
                     .RecapAdjusted = adjusted,
                     .RecapGain = sale.SalePrice - adjusted,
                     .RecapSec1245 = {},
                     .RecapFinal = {}};
    if (section == kSection1245) {
        row.RecapSec1245 = std::min(row.RecapDepr, row.RecapGain);
        row.RecapFinal = row.RecapSec1245;
    } else {
        LeaveOut(asset, "section " + section + ": its recapture is the preparer's to enter");
    }
    if (recaptureTable_.size() >= kPropertyColumns) {
        LeaveOut(asset, "the 5th property of Part III or later: page 2 shows no property, only the totals");
    }
    AddRow(recaptureTable_, kRecaptureRows, std::move(row));
}

void Form4797::ComputeLines(const FormSettings& settings) {
    type_ = settings.Options.Type;
    round_ = settings.RoundText;
    const FormRounding round(settings.RoundText);
    for (SaleRow& row : longTable_) {
        for (CurrencyAmount* amount : {&row.SalePrice, &row.SaleDepr, &row.SaleCost, &row.SaleGain}) round.Apply(*amount);
    }
    for (RecaptureRow& row : recaptureTable_) {
        for (CurrencyAmount* amount : {&row.RecapPrice, &row.RecapCost, &row.RecapDepr, &row.RecapAdjusted, &row.RecapGain,
                                       &row.RecapSec1245, &row.RecapFinal}) {
            round.Apply(*amount);
        }
    }
    RunSteps<Form4797>(kSteps, *this, lines_);
}

void Form4797::ExchangeWorkFile(WorkFile& file) {
    file.Item(company_);
    for (const int line : {7, 18}) file.Item(lines_[line]);
    file.Line(lines_[32]);
    for (int line = 1; line <= lines_.Last(); ++line) file.Line(lines_[line]);
    for (std::string* text : {&company_, &id_, &type_, &round_}) file.Line(*text);
    file.Rows<SaleRow>(longTable_, kSaleColumns, kSaleRows);
    file.Rows<RecaptureRow>(recaptureTable_, kRecaptureColumns, kRecaptureRows);
}

void Form4797::WriteTables(JsonWriter& json) const {
    WriteJsonTable<SaleRow>(json, "LongTable", longTable_, kSaleColumns);
    WriteJsonTable<RecaptureRow>(json, "RecaptureTable", recaptureTable_, kRecaptureColumns);
    WriteJsonTable<SaleRow>(json, "casualty", casualty_, kSaleColumns);
    WriteJsonTable<SaleRow>(json, "likeKind", likeKind_, kSaleColumns);
}

}  // namespace tallymar
