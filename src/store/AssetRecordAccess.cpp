#include "store/AssetRecordAccess.h"

#include <string>
#include <string_view>
#include <type_traits>

#include "platform/runtime/PerBook.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "store/TaxGroup.h"

namespace tallymar {

namespace {

using R = AssetRecord;

constexpr CurrencyAmount kLongClassLife = Units(11);
constexpr std::string_view kShortLifeSection = "1245";

// Every column of the table and the record's item for it, in the order in which a row is written: for each, visit(name, item,
// book), the book being 0 for the common columns.
template <typename Record, typename Visit>
void VisitColumns(Record& r, Visit&& visit) {
    visit("Division", r.Division, 0);
    visit("Department", r.Department, 0);
    visit("AssetNum", r.AssetNum, 0);
    visit("AssocAsset", r.AssocAsset, 0);
    visit("Description", r.Description, 0);
    visit("Descrip2", r.Descrip2, 0);
    visit("SerialNum", r.SerialNum, 0);
    visit("AccountNum", r.AccountNum, 0);
    visit("CodeSection", r.CodeSection, 0);
    visit("TaxGroup", r.TaxGroup, 0);
    visit("PictureName", r.PictureName, 0);
    visit("DateSold", r.DateSold, 0);
    visit("NewUsed", r.NewUsed, 0);
    visit("AssetType", r.AssetType, 0);
    visit("SoldAmount", r.SoldAmount, 0);
    visit("SoldExpense", r.SoldExpense, 0);
    visit("BusinessUse", r.BusinessUse, 0);
    visit("ClassLife", r.ClassLife, 0);
    visit("FairMktValue", r.FairMktValue, 0);
    visit("FedLife", r.FedLife, 0);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        visit("DeprType", r.DeprType[book], book);
        visit("DeprMethod", r.DeprMethod[book], book);
        visit("Basis", r.Basis[book], book);
        visit("PrevDepr", r.PrevDepr[book], book);
        visit("CurrDepr", r.CurrDepr[book], book);
        visit("AddlDepr", r.AddlDepr[book], book);
        visit("ADPct", r.ADPct[book], book);
        visit("DeprLimit", r.DeprLimit[book], book);
        visit("TaxCredit", r.TaxCredit[book], book);
        visit("TaxCreditUsed", r.TaxCreditUsed[book], book);
        visit("Section179", r.Section179[book], book);
        visit("SwitchBasis", r.SwitchBasis[book], book);
        visit("Period", r.Period[book], book);
        visit("SwitchYear", r.SwitchYear[book], book);
        visit("SwitchPeriod", r.SwitchPeriod[book], book);
        visit("YearThru", r.YearThru[book], book);
        visit("DBPercent", r.DBPercent[book], book);
        visit("TaxCreditYear", r.TaxCreditYear[book], book);
        visit("DateDeprToo", r.DateDeprToo[book], book);
        visit("IRSConvUsed", r.IRSConvUsed[book], book);
        visit("Agri", r.Agri[book], book);
        visit("Auto", r.Auto[book], book);
        visit("Listed", r.Listed[book], book);
        visit("Salvage", r.Salvage[book], book);
    }
    visit("Sold", r.Sold, 0);
    visit("Casualty", r.Casualty, 0);
    visit("LikeKind", r.LikeKind, 0);
    visit("Notice4", r.Notice4, 0);
    visit("Abandoned", r.Abandoned, 0);
    visit("InService", r.InService, 0);
    visit("Purchased", r.Purchased, 0);
    visit("PropertyTax", r.PropertyTax, 0);
}

// Rows have always been read through text: a Null is then nothing, and a number of another type than the column's, as a file of
// another program may hold, still reads as a number.
double NumberOf(const recordset::Value& value) {
    return Val(value.ToText());
}

void Load(const recordset::Value& value, std::string& item) {
    if (value.Type() == recordset::Value::Kind::Text) {
        item.assign(value.Text());
    } else {
        item = value.ToText();
    }
}

template <std::size_t N>
void Load(const recordset::Value& value, FixedText<N>& item) {
    if (value.Type() == recordset::Value::Kind::Text) {
        item = value.Text();
    } else {
        item = value.ToText();
    }
}

void Load(const recordset::Value& value, CurrencyAmount& item) {
    const bool plain = value.Type() == recordset::Value::Kind::Currency;
    item = CurrencyAmount::FromDouble(plain ? value.Currency().ToDouble() : NumberOf(value));
}

void Load(const recordset::Value& value, std::int16_t& item) {
    item = value.Type() == recordset::Value::Kind::Integer ? value.Integer() : ToInteger(NumberOf(value));
}

void Load(const recordset::Value& value, Date& item) {
    item = value.IsDate() ? value.AsDate() : Date();
}

void Load(const recordset::Value& value, bool& item) {
    item = value.Boolean();
}

template <std::size_t N>
recordset::Value ValueOf(const FixedText<N>& item) {
    return item.View();
}

template <typename T>
recordset::Value ValueOf(const T& item) {
    return item;
}

}  // namespace

AssetRecordAccess::AssetRecordAccess(recordset::Recordset& assets) : assets_(&assets) {
    R record;
    VisitColumns(record, [this](std::string_view name, const auto&, int book) {
        std::string column(name);
        if (book != 0) column += "(" + std::to_string(book) + ")";
        ordinals_.push_back(assets_->Ordinal(column));
    });
}

void AssetRecordAccess::ReadAssetRecord(AssetRecord& record) {
    auto ordinal = ordinals_.cbegin();
    VisitColumns(record, [&](const char*, auto& item, int) { Load(assets_->Get(*ordinal++), item); });
    record.FedLife = ToInteger(static_cast<double>(record.ClassLife.WholePart()));
    if (record.CodeSection.empty() && record.ClassLife < kLongClassLife) record.CodeSection = kShortLifeSection;
}

void AssetRecordAccess::WriteAssetRecord(const AssetRecord& record) {
    assets_->Edit();
    Store(record, true);
}

void AssetRecordAccess::AddAssetRecord(const AssetRecord& record) {
    assets_->AddNew();
    Store(record, false);
}

void AssetRecordAccess::Store(const AssetRecord& record, bool blankTaxGroup) {
    try {
        auto ordinal = ordinals_.cbegin();
        VisitColumns(record, [&](const char*, const auto& item, int) {
            const bool blank = blankTaxGroup && static_cast<const void*>(&item) == &record.TaxGroup && record.TaxGroup.empty();
            assets_->Set(*ordinal++, blank ? recordset::Value(kBlankTaxGroup) : ValueOf(item));
        });
        assets_->Update();
    } catch (...) {
        assets_->CancelUpdate();
        throw;
    }
}

}  // namespace tallymar
