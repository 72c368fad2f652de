#include "engine/WorkingRecord.h"

namespace tallymar {

void WorkingRecord::TakeFrom(const AssetRecord& record, int book) {
    AssetType = record.AssetType;
    NewUsed = record.NewUsed;
    InService = record.InService;
    DateSold = record.DateSold;
    SoldAmount = record.SoldAmount;
    SoldExpense = record.SoldExpense;
    BusinessUse = record.BusinessUse;
    ClassLife = record.ClassLife;
    Abandoned = record.Abandoned;
    Casualty = record.Casualty;
    Sold = record.Sold;
    LikeKind = record.LikeKind;
    Notice4 = record.Notice4;
    DeprType = record.DeprType[book];
    DeprMethod = record.DeprMethod[book];
    DBPercent = record.DBPercent[book];
    SwitchYear = record.SwitchYear[book];
    SwitchPeriod = record.SwitchPeriod[book];
    Auto = record.Auto[book];
    Period = record.Period[book];
    Basis = record.Basis[book];
    Salvage = record.Salvage[book];
    PrevDepr = record.PrevDepr[book];
    ADPct = record.ADPct[book];
    TaxCredit = record.TaxCredit[book];
    CurrDepr = record.CurrDepr[book];
    AddlDepr = record.AddlDepr[book];
    Section179 = record.Section179[book];
    SwitchBasis = record.SwitchBasis[book];
    DeprLimit = record.DeprLimit[book];
    YearThru = record.YearThru[book];
    IRSConvUsed = record.IRSConvUsed[book];
}

void WorkingRecord::GiveTo(AssetRecord& record, int book) const {
    record.CurrDepr[book] = CurrDepr;
    record.AddlDepr[book] = AddlDepr;
    record.Section179[book] = Section179;
    record.SwitchBasis[book] = SwitchBasis;
    record.DeprLimit[book] = DeprLimit;
    record.YearThru[book] = YearThru;
    record.IRSConvUsed[book] = IRSConvUsed;
}

}  // namespace tallymar
