#pragma once

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// The items of an asset that tell whether it has left the books.
struct DisposalMarks {
    CurrencyAmount SoldAmount;
    CurrencyAmount SoldExpense;
    bool Abandoned = false;
    bool Casualty = false;
    bool Sold = false;
    bool LikeKind = false;
    bool Notice4 = false;
};

// With an amount of sale or expense an asset has left the books, marked or not, unless it went in an exchange under Notice
// 2000-4: that goes on depreciating. Without one the marks tell, and Notice4 alone is none of them. Asset: anything with these
// items.
template <typename Asset>
bool CheckDisposed(const Asset& asset) {
    constexpr CurrencyAmount kNothing;
    if (asset.SoldAmount > kNothing || asset.SoldExpense > kNothing) return !asset.Notice4;
    return asset.Abandoned || asset.Casualty || asset.Sold || asset.LikeKind;
}

}  // namespace tallymar
