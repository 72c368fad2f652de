#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/FixedText.h"
#include "platform/runtime/PerBook.h"

namespace tallymar {

// The working copy of one asset: the only thing that subsystems hand to each other. It holds no reference into the database.
// Amounts, percentages (100 meaning 100%) and lives in years are CurrencyAmounts; date 0 is no date.
struct AssetRecord {
    FixedText<16> Division;
    FixedText<16> Department;
    FixedText<6> AssetNum;
    FixedText<6> AssocAsset;
    std::string Description;
    std::string Descrip2;
    std::string PictureName;
    std::string SerialNum;
    std::string AccountNum;
    std::string CodeSection;
    std::string TaxGroup;
    Date DateSold;
    FixedText<1> NewUsed;   // "N" or "U"
    std::string AssetType;  // "PP", "RL" or "IN"
    PerBook<CurrencyAmount> Salvage;
    CurrencyAmount SoldAmount;
    CurrencyAmount SoldExpense;
    CurrencyAmount BusinessUse;  // percent
    CurrencyAmount FairMktValue;
    CurrencyAmount ClassLife;          // years
    std::int16_t FedLife = 0;          // the whole part of ClassLife
    PerBook<std::int16_t> DeprType;    // index into DeprTypeCode's table
    PerBook<std::int16_t> DeprMethod;  // index into DeprMethodCode's table
    PerBook<CurrencyAmount> Basis;
    PerBook<CurrencyAmount> PrevDepr;
    PerBook<CurrencyAmount> CurrDepr;
    PerBook<CurrencyAmount> AddlDepr;
    PerBook<CurrencyAmount> ADPct;  // percent
    PerBook<CurrencyAmount> DeprLimit;
    PerBook<CurrencyAmount> TaxCredit;
    PerBook<CurrencyAmount> TaxCreditUsed;
    PerBook<CurrencyAmount> Section179;
    PerBook<CurrencyAmount> SwitchBasis;
    PerBook<CurrencyAmount> Period;  // years
    PerBook<std::int16_t> SwitchYear;
    PerBook<std::int16_t> SwitchPeriod;
    PerBook<std::int16_t> YearThru;
    PerBook<std::int16_t> DBPercent;  // 200, 175, 150, 125 or 0
    PerBook<std::int16_t> TaxCreditYear;
    PerBook<Date> DateDeprToo;
    PerBook<FixedText<1>> IRSConvUsed;  // "Y", "Q", "M", "N" or "X"
    PerBook<bool> Agri;
    PerBook<bool> Auto;
    PerBook<bool> Listed;
    bool PropertyTax = false;
    bool Casualty = false;
    bool Sold = false;
    bool LikeKind = false;
    bool Notice4 = false;
    bool Abandoned = false;
    Date InService;
    Date Purchased;

    friend bool operator==(const AssetRecord&, const AssetRecord&) = default;
};

// An empty property group as rows hold it once they are rewritten: the column's full width of blanks.
inline constexpr std::string_view kBlankTaxGroup = "      ";

}  // namespace tallymar
