#pragma once

#include <string>
#include <string_view>

#include "assets/AssetFieldValues.h"
#include "assets/AssetFields.h"
#include "store/AssetRecord.h"
#include "store/UserProfile.h"

// The rules by which one field of the asset form changes others while it is being edited. They help with entry and check nothing:
// any type may stand with any method, life and convention. The tax rules are the engine's.
namespace tallymar {

// The user's choices for new assets that the rules and the new-asset command start from.
struct NewAssetDefaults {
    std::string DeprType = "MCRS";
    std::string DeprMethod = "DB";
    std::string NewUsed = "NEW";  // a word; its first letter counts
    bool NumericNumbers = false;
};
NewAssetDefaults DefaultsOf(const UserProfile& profile);

struct FieldRuleContext {
    bool NewAssetPending = false;  // Federal entries spread to the other books
    NewAssetDefaults Defaults;
};

// What a double becomes when it is shown in a field of the form and read back: two decimals, halves away from zero.
CurrencyAmount ThroughField(double value);
CurrencyAmount ThroughField(CurrencyAmount value);

// Moves a list to an entry; an unknown one leaves the list where it stood.
void MoveList(AssetFieldValues& values, AssetField list, int book, std::string_view entry);

// The starting values of the asset type chosen.
void ApplyAssetType(AssetFieldValues& values, const NewAssetDefaults& defaults);
// "SL" has no declining balance percent, "DB" has one.
void ApplyDeprMethod(AssetFieldValues& values, int book);
// Not more than half in business: straight line in every book. Nothing brings the old method back.
void ApplyBusinessUse(AssetFieldValues& values);
inline constexpr std::string_view kBusinessUseSetMethods = "Below 51% business use: method set to SL in all books";
// On leaving the class life: books without a period take it.
void ApplyClassLife(AssetFieldValues& values);
// On entering the Federal method of a new asset: a stock or collectible does not depreciate in any book.
void ApplyStockAndCollectible(AssetFieldValues& values, bool newAssetPending);
// Checking one disposition clears the other four.
void ApplyDisposition(AssetFieldValues& values, AssetField checked);
// On entering the in-service date: without one it takes the date of purchase. True when it did.
bool ApplyInServiceFocus(AssetFieldValues& values);

// AddlDepr and AdjBasis of a book from its cost, salvage, Section 179, percentages and credit. In double, each result passing
// through its field.
void ComputeAdjBasis(AssetFieldValues& values, int book);
// GainLoss. The depreciation and cost are the Federal ones of `record`: as loaded or last saved.
void ComputeGainLoss(AssetFieldValues& values, const AssetRecord& record);

// All that a change of one field, typed or chosen, leads to.
void ApplyChange(AssetFieldValues& values, AssetField field, int book, const FieldRuleContext& context,
                 const AssetRecord& record);

// The status line of an asset: its disposition as checked now, else how far `record` is depreciated in the Federal book.
std::string_view AssetStatusText(const AssetFieldValues& values, const AssetRecord& record);
inline constexpr std::string_view kInitialStatusText = "Active Asset";

}  // namespace tallymar
