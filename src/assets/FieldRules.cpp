#include "assets/FieldRules.h"

#include <algorithm>
#include <array>

#include "platform/runtime/Format.h"
#include "store/Helpers.h"

namespace tallymar {

namespace {

constexpr CurrencyAmount kMoreThanHalf = Units(51);
constexpr int kLastYearWithoutCreditReduction = 1982;

struct TypeStart {
    std::string_view AssetType;
    CurrencyAmount Life;
    bool UserDefaults;  // type and method from the user's defaults; else straight line
    std::string_view Convention;
};

constexpr TypeStart kTypeStarts[] = {
    {.AssetType = "PP", .Life = Units(5), .UserDefaults = true, .Convention = "Y"},
    {.AssetType = "RL", .Life = CurrencyAmount::FromTenThousandths(315000), .UserDefaults = false, .Convention = "M"},
    {.AssetType = "IN", .Life = Units(7), .UserDefaults = false, .Convention = "M"},
};

struct Disposition {
    AssetField Field;
    bool AssetFieldValues::*Checked;
    std::string_view Status;
};

// In the order in which the status line looks at them.
constexpr std::array<Disposition, 5> kDispositions = {{
    {AssetField::Notice4, &AssetFieldValues::Notice4, "Asset was Notice-4 exchanged"},
    {AssetField::LikeKind, &AssetFieldValues::LikeKind, "Asset was Like-Kind exchanged"},
    {AssetField::Casualty, &AssetFieldValues::Casualty, "Asset was a Causalty Loss"},
    {AssetField::Abandoned, &AssetFieldValues::Abandoned, "Asset has been Abandoned"},
    {AssetField::Sold, &AssetFieldValues::Sold, "Asset has been Sold"},
}};

void ChooseMethod(AssetFieldValues& values, int book, std::string_view method) {
    MoveList(values, AssetField::DeprMethod, book, method);
    ApplyDeprMethod(values, book);
}

int YearOf(std::string_view dateText) {
    const Date date = TextToDate(dateText);
    return date.IsNone() ? 0 : date.Year();
}

// What follows a change of a book's amount within the book.
bool FeedsAdjBasis(AssetField field) {
    switch (field) {
        case AssetField::Basis:
        case AssetField::Salvage:
        case AssetField::Section179:
        case AssetField::TaxCredit:
        case AssetField::ADPct:
            return true;
        default:
            return false;
    }
}

template <typename T>
void Spread(AssetFieldValues& values, T BookFieldValues::*item, bool feedsAdjBasis) {
    for (int book = kFirstBook + 1; book <= kLastBook; ++book) {
        T& target = values.Book[book].*item;
        if (target == values.Book[kFirstBook].*item) continue;
        target = values.Book[kFirstBook].*item;
        if (feedsAdjBasis) ComputeAdjBasis(values, book);
    }
}

void SpreadFromFederal(AssetFieldValues& values, AssetField field) {
    const bool feeds = FeedsAdjBasis(field);
    switch (field) {
        case AssetField::Basis:
            return Spread(values, &BookFieldValues::Basis, feeds);
        case AssetField::Salvage:
            return Spread(values, &BookFieldValues::Salvage, feeds);
        case AssetField::Section179:
            return Spread(values, &BookFieldValues::Section179, feeds);
        case AssetField::TaxCredit:
            return Spread(values, &BookFieldValues::TaxCredit, feeds);
        case AssetField::TaxCreditUsed:
            return Spread(values, &BookFieldValues::TaxCreditUsed, feeds);
        case AssetField::TaxCreditYear:
            return Spread(values, &BookFieldValues::TaxCreditYear, feeds);
        default:
            return;
    }
}

}  // namespace

NewAssetDefaults DefaultsOf(const UserProfile& profile) {
    return {.DeprType = profile.DefaultDeprType,
            .DeprMethod = profile.DefaultDeprMethod,
            .NewUsed = profile.DefaultNewUsed,
            .NumericNumbers = profile.NumericAssetNumbers};
}

CurrencyAmount ThroughField(double value) {
    return CurrencyAmount::Parse(Format(value, "0.00")).value_or(CurrencyAmount());
}

CurrencyAmount ThroughField(CurrencyAmount value) {
    return CurrencyAmount::Parse(Format(value, "0.00")).value_or(CurrencyAmount());
}

void MoveList(AssetFieldValues& values, AssetField list, int book, std::string_view entry) {
    const AssetFieldDef& field = FieldDef(list);
    if (std::find(field.Entries.begin(), field.Entries.end(), entry) == field.Entries.end()) return;
    FieldValue<std::string>(values, field, book) = entry;
}

void ApplyAssetType(AssetFieldValues& values, const NewAssetDefaults& defaults) {
    const auto start = std::find_if(std::begin(kTypeStarts), std::end(kTypeStarts),
                                    [&values](const TypeStart& type) { return type.AssetType == values.AssetType; });
    if (start == std::end(kTypeStarts)) return;
    values.ClassLife = start->Life;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        ChooseMethod(values, book, start->UserDefaults ? std::string_view(defaults.DeprMethod) : "SL");
        if (start->UserDefaults) {
            MoveList(values, AssetField::DeprType, book, defaults.DeprType);
            if (defaults.DeprMethod == "DB") values.Book[book].DBPercent = "200";
        }
        values.Book[book].IRSConvUsed = start->Convention;
        values.Book[book].Period = start->Life;
    }
}

void ApplyDeprMethod(AssetFieldValues& values, int book) {
    BookFieldValues& fields = values.Book[book];
    if (fields.DeprMethod == "SL") fields.DBPercent.clear();
    if (fields.DeprMethod == "DB" && fields.DBPercent.empty()) fields.DBPercent = "200";
}

// COMPAT: each keystroke counts, so that the first digits of a 100 do it too.
void ApplyBusinessUse(AssetFieldValues& values) {
    if (values.BusinessUse >= kMoreThanHalf) return;
    for (int book = kFirstBook; book <= kLastBook; ++book) ChooseMethod(values, book, "SL");
}

void ApplyClassLife(AssetFieldValues& values) {
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        if (values.Book[book].Period.IsZero()) values.Book[book].Period = values.ClassLife;
    }
}

void ApplyStockAndCollectible(AssetFieldValues& values, bool newAssetPending) {
    const std::string type = values.Book[kFirstBook].DeprType;
    if (!newAssetPending || (type != "STCK" && type != "COLL")) return;
    values.ClassLife = CurrencyAmount();
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        BookFieldValues& fields = values.Book[book];
        fields.Period = CurrencyAmount();
        fields.IRSConvUsed = "X";
        fields.DeprMethod = "XX";
        fields.DeprType = type;
        fields.DBPercent.clear();
    }
}

void ApplyDisposition(AssetFieldValues& values, AssetField checked) {
    const auto chosen = std::find_if(kDispositions.begin(), kDispositions.end(),
                                     [checked](const Disposition& disposition) { return disposition.Field == checked; });
    if (chosen == kDispositions.end() || !(values.*chosen->Checked)) return;
    for (const Disposition& disposition : kDispositions) values.*disposition.Checked = disposition.Field == checked;
}

bool ApplyInServiceFocus(AssetFieldValues& values) {
    if (!TextToDate(values.InService).IsNone()) return false;
    values.InService = values.Purchased;
    return true;
}

void ComputeAdjBasis(AssetFieldValues& values, int book) {
    BookFieldValues& fields = values.Book[book];
    const CurrencyAmount fraction = PercentOf(values.BusinessUse);
    const double cost = fields.Basis.ToDouble() * fraction.ToDouble();
    fields.AdjBasis = ThroughField(cost - fields.Salvage.ToDouble() - fields.Section179.ToDouble());
    fields.AddlDepr = ThroughField(fields.ADPct.ToDouble() * fields.AdjBasis.ToDouble() / 100.0);
    fields.AdjBasis = ThroughField(fields.AdjBasis.ToDouble() - fields.AddlDepr.ToDouble());

    // COMPAT: the basis falls by half of an investment credit. Two separate tests: a class life between 4 and 5 can take both.
    const double credit = fields.TaxCredit.ToDouble();
    if (YearOf(values.InService) <= kLastYearWithoutCreditReduction || fields.TaxCredit <= CurrencyAmount()) return;
    const auto halveCredit = [&fields, credit](double limit) {
        if (fields.AdjBasis.ToDouble() * limit < credit)
            fields.AdjBasis = ThroughField(fields.AdjBasis.ToDouble() - credit * 0.5);
    };
    if (values.ClassLife > Units(4)) halveCredit(0.09);
    if (values.ClassLife < Units(5)) halveCredit(0.05);
}

// COMPAT: the Federal amounts are those stored, not those on the screen.
void ComputeGainLoss(AssetFieldValues& values, const AssetRecord& record) {
    values.GainLoss = CurrencyAmount();
    if (values.SoldAmount <= CurrencyAmount() && values.SoldExpense <= CurrencyAmount()) return;
    const CurrencyAmount recovered = values.SoldAmount + record.PrevDepr[kFirstBook] + record.AddlDepr[kFirstBook] +
                                     record.CurrDepr[kFirstBook] + record.Section179[kFirstBook];
    values.GainLoss = ThroughField(recovered.ToDouble() - values.SoldExpense.ToDouble() - record.Basis[kFirstBook].ToDouble());
}

void ApplyChange(AssetFieldValues& values, AssetField field, int book, const FieldRuleContext& context,
                 const AssetRecord& record) {
    switch (field) {
        case AssetField::AssetType:
            return ApplyAssetType(values, context.Defaults);
        case AssetField::DeprMethod:
            return ApplyDeprMethod(values, book);
        case AssetField::BusinessUse:
            return ApplyBusinessUse(values);
        case AssetField::SoldAmount:
        case AssetField::SoldExpense:
            return ComputeGainLoss(values, record);
        default:
            break;
    }
    ApplyDisposition(values, field);
    if (FieldDef(field).Place != FieldPlace::Book) return;
    const bool spreads = context.NewAssetPending && book == kFirstBook;
    if (spreads && field == AssetField::Basis) SpreadFromFederal(values, field);
    if (FeedsAdjBasis(field)) ComputeAdjBasis(values, book);
    if (spreads && field != AssetField::Basis) SpreadFromFederal(values, field);
}

std::string_view AssetStatusText(const AssetFieldValues& values, const AssetRecord& record) {
    for (const Disposition& disposition : kDispositions) {
        if (values.*disposition.Checked) return disposition.Status;
    }
    const CurrencyAmount cost = record.Basis[kFirstBook];
    const CurrencyAmount expensed = record.Section179[kFirstBook];
    if (cost == expensed) return "Asset was Sec.179 expensed";
    if (cost != record.PrevDepr[kFirstBook] + expensed) return "Asset is still depreciating";
    return "Asset is fully depreciated";
}

}  // namespace tallymar
