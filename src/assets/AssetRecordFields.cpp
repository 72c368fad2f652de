#include "assets/AssetRecordFields.h"

#include <algorithm>

#include "assets/AssetFields.h"
#include "assets/FieldRules.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

std::string DateText(Date date) {
    return date.IsNone() ? std::string() : FormatShortDate(date);
}

std::string_view OrBlankGroup(std::string_view taxGroup) {
    return RTrim(taxGroup).empty() ? kBlankTaxGroup : taxGroup;
}

template <typename Codes>
void StoreIndex(const Codes& codes, std::string_view code, std::int16_t& index) {
    const auto found = std::find(codes.begin(), codes.end(), code);
    if (found != codes.end()) index = static_cast<std::int16_t>(found - codes.begin());
}

void BookToFields(const AssetRecord& r, int book, AssetFieldValues& values) {
    BookFieldValues& v = values.Book[book];
    v.DeprType = DeprTypeCode(r.DeprType[book]);
    v.DeprMethod = DeprMethodCode(r.DeprMethod[book]);
    v.DBPercent = r.DBPercent[book] != 0 ? std::to_string(r.DBPercent[book]) : std::string();
    MoveList(values, AssetField::IRSConvUsed, book, r.IRSConvUsed[book].View());
    v.Period = ThroughField(r.Period[book]);
    v.ADPct = ThroughField(r.ADPct[book]);
    v.Listed = r.Listed[book];
    v.Auto = r.Auto[book];
    v.Agri = r.Agri[book];
    v.Basis = ThroughField(r.Basis[book]);
    v.Salvage = ThroughField(r.Salvage[book]);
    v.Section179 = ThroughField(r.Section179[book]);
    v.PrevDepr = ThroughField(r.PrevDepr[book]);
    v.CurrDepr = ThroughField(r.CurrDepr[book]);
    v.DateDeprToo = DateText(r.DateDeprToo[book]);
    v.YearThru = r.YearThru[book];
    v.SwitchBasis = ThroughField(r.SwitchBasis[book]);
    v.SwitchYear = r.SwitchYear[book];
    v.SwitchPeriod = r.SwitchPeriod[book];
    v.TaxCredit = ThroughField(r.TaxCredit[book]);
    v.TaxCreditUsed = ThroughField(r.TaxCreditUsed[book]);
    v.TaxCreditYear = r.TaxCreditYear[book];
}

void FieldsToBook(const BookFieldValues& v, int book, AssetRecord& r) {
    StoreIndex(kDeprTypes, v.DeprType, r.DeprType[book]);
    StoreIndex(kDeprMethods, v.DeprMethod, r.DeprMethod[book]);
    r.DBPercent[book] = ToInteger(Val(v.DBPercent));
    r.IRSConvUsed[book] = v.IRSConvUsed;
    r.Period[book] = v.Period;
    r.ADPct[book] = v.ADPct;
    r.Listed[book] = v.Listed;
    r.Auto[book] = v.Auto;
    r.Agri[book] = v.Agri;
    r.Basis[book] = v.Basis;
    r.Salvage[book] = v.Salvage;
    r.Section179[book] = v.Section179;
    r.AddlDepr[book] = v.AddlDepr;
    r.PrevDepr[book] = v.PrevDepr;
    r.CurrDepr[book] = v.CurrDepr;
    r.DateDeprToo[book] = TextToDate(v.DateDeprToo);
    r.YearThru[book] = ToInteger(v.YearThru);
    r.SwitchBasis[book] = v.SwitchBasis;
    r.SwitchYear[book] = ToInteger(v.SwitchYear);
    r.SwitchPeriod[book] = ToInteger(v.SwitchPeriod);
    r.TaxCredit[book] = v.TaxCredit;
    r.TaxCreditUsed[book] = v.TaxCreditUsed;
    r.TaxCreditYear[book] = ToInteger(v.TaxCreditYear);
}

}  // namespace

void RecordToFields(const AssetRecord& r, AssetFieldValues& v) {
    v.AssetNum = r.AssetNum.Trimmed();
    if (r.NewUsed == "N") v.NewUsed = "New";
    if (r.NewUsed == "U") v.NewUsed = "Used";
    MoveList(v, AssetField::AssetType, 0, r.AssetType);
    v.ClassLife = ThroughField(r.ClassLife);
    v.Description = r.Description;
    v.Descrip2 = r.Descrip2;
    v.SerialNum = r.SerialNum;
    v.CodeSection = r.CodeSection;
    v.AccountNum = r.AccountNum;
    v.Division = r.Division.Trimmed();
    v.Department = r.Department.Trimmed();
    v.BusinessUse = ThroughField(r.BusinessUse);
    v.InService = DateText(r.InService);
    v.Purchased = DateText(r.Purchased);
    v.FairMktValue = ThroughField(r.FairMktValue);
    v.PictureName = r.PictureName;
    v.TaxGroup = r.TaxGroup.empty() ? std::string(kBlankTaxGroup) : r.TaxGroup;
    v.AssocAsset = r.AssocAsset.Trimmed();
    v.PropertyTax = r.PropertyTax;
    for (int book = kFirstBook; book <= kLastBook; ++book) BookToFields(r, book, v);
    v.DateSold = DateText(r.DateSold);
    v.SoldAmount = ThroughField(r.SoldAmount);
    v.SoldExpense = ThroughField(r.SoldExpense);
    v.Sold = r.Sold;
    v.Abandoned = r.Abandoned;
    v.Casualty = r.Casualty;
    v.LikeKind = r.LikeKind;
    v.Notice4 = r.Notice4;
}

void FieldsToRecord(const AssetFieldValues& v, AssetRecord& r) {
    r.AssetNum = v.AssetNum;
    r.NewUsed = v.NewUsed == "New" ? "N" : "U";
    r.AssetType = v.AssetType;
    r.ClassLife = v.ClassLife;
    r.FedLife = ToInteger(static_cast<double>(v.ClassLife.WholePart()));
    r.Description = v.Description;
    r.Descrip2 = v.Descrip2;
    r.SerialNum = v.SerialNum;
    r.CodeSection = v.CodeSection;
    r.AccountNum = v.AccountNum;
    r.Division = v.Division;
    r.Department = v.Department;
    r.BusinessUse = v.BusinessUse;
    r.InService = TextToDate(v.InService);
    r.Purchased = TextToDate(v.Purchased);
    r.FairMktValue = v.FairMktValue;
    r.PictureName = v.PictureName;
    r.TaxGroup = OrBlankGroup(v.TaxGroup);
    r.AssocAsset = v.AssocAsset;
    r.PropertyTax = v.PropertyTax;
    for (int book = kFirstBook; book <= kLastBook; ++book) FieldsToBook(v.Book[book], book, r);
    r.DateSold = TextToDate(v.DateSold);
    r.SoldAmount = v.SoldAmount;
    r.SoldExpense = v.SoldExpense;
    r.Sold = v.Sold;
    r.Abandoned = v.Abandoned;
    r.Casualty = v.Casualty;
    r.LikeKind = v.LikeKind;
    r.Notice4 = v.Notice4;
}

}  // namespace tallymar
