#pragma once

#include <string>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/PerBook.h"

namespace tallymar {

// What the fields of one book show. Dates are the text that stands in the control; a list is the text that it reads.
struct BookFieldValues {
    std::string DeprType;
    std::string DeprMethod;
    std::string DBPercent;  // "200", or empty for none
    std::string IRSConvUsed;
    CurrencyAmount Period;  // years
    CurrencyAmount ADPct;   // percent
    bool Listed = false;
    bool Auto = false;
    bool Agri = false;
    CurrencyAmount Basis;
    CurrencyAmount Salvage;
    CurrencyAmount Section179;
    CurrencyAmount AddlDepr;  // computed
    CurrencyAmount AdjBasis;  // computed, never stored
    CurrencyAmount PrevDepr;
    CurrencyAmount CurrDepr;
    std::string DateDeprToo;
    int YearThru = 0;
    CurrencyAmount SwitchBasis;
    int SwitchYear = 0;
    int SwitchPeriod = 0;
    CurrencyAmount TaxCredit;
    CurrencyAmount TaxCreditUsed;
    int TaxCreditYear = 0;

    friend bool operator==(const BookFieldValues&, const BookFieldValues&) = default;
};

// What the fields of the asset form show: the plain data that the field rules work on and that the window moves to and from its
// controls. Amounts are as shown, with the field's decimals.
struct AssetFieldValues {
    std::string AssetNum;
    std::string NewUsed;    // "New" or "Used"
    std::string AssetType;  // "PP", "RL" or "IN"
    CurrencyAmount ClassLife;
    std::string Description;
    std::string Descrip2;
    std::string SerialNum;
    std::string CodeSection;
    std::string AccountNum;
    std::string Division;
    std::string Department;
    CurrencyAmount BusinessUse;  // percent
    std::string InService;
    std::string Purchased;
    CurrencyAmount FairMktValue;
    std::string PictureName;
    std::string TaxGroup;
    std::string AssocAsset;
    bool PropertyTax = false;
    PerBook<BookFieldValues> Book;
    std::string DateSold;
    CurrencyAmount SoldAmount;
    CurrencyAmount SoldExpense;
    CurrencyAmount GainLoss;  // computed, never stored
    bool Sold = false;
    bool Abandoned = false;
    bool Casualty = false;
    bool LikeKind = false;
    bool Notice4 = false;

    friend bool operator==(const AssetFieldValues&, const AssetFieldValues&) = default;
};

}  // namespace tallymar
