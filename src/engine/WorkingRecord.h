#pragma once

#include <cstdint>
#include <string>

#include "law/Law.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/FixedText.h"
#include "store/AssetRecord.h"

namespace tallymar {

// The working copy that the computations read and change: the common fields that matter to them and one book. The caller's record
// gets its new values from here at the very end, so that a failure half way leaves it as it was.
struct WorkingRecord {
    std::string AssetType;
    FixedText<1> NewUsed;
    Date InService;
    Date DateSold;
    CurrencyAmount SoldAmount;
    CurrencyAmount SoldExpense;
    CurrencyAmount BusinessUse;
    CurrencyAmount ClassLife;
    bool Abandoned = false;
    bool Casualty = false;
    bool Sold = false;
    bool LikeKind = false;
    bool Notice4 = false;

    // The book.
    std::int16_t DeprType = 0;
    std::int16_t DeprMethod = 0;
    std::int16_t DBPercent = 0;
    std::int16_t SwitchYear = 0;
    std::int16_t SwitchPeriod = 0;
    bool Auto = false;
    CurrencyAmount Period;
    CurrencyAmount Basis;
    CurrencyAmount Salvage;
    CurrencyAmount PrevDepr;
    CurrencyAmount ADPct;
    CurrencyAmount TaxCredit;

    const AutomobileLimits* AutoLimits = nullptr;  // by law; nullptr: those of the program

    CurrencyAmount MaxDepr;  // what may be depreciated; each computation forms it

    // What a computation may change of the book.
    CurrencyAmount CurrDepr;
    CurrencyAmount AddlDepr;
    CurrencyAmount Section179;
    CurrencyAmount SwitchBasis;
    CurrencyAmount DeprLimit;
    std::int16_t YearThru = 0;
    FixedText<1> IRSConvUsed;

    char Convention() const { return IRSConvUsed.View().front(); }
    bool IsPersonalProperty() const { return AssetType == "PP"; }
    bool IsRealProperty() const { return AssetType == "RL"; }

    void TakeFrom(const AssetRecord& record, int book);
    void GiveTo(AssetRecord& record, int book) const;
};

}  // namespace tallymar
