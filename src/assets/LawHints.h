#pragma once

#include <string>

#include "assets/AssetFieldValues.h"
#include "assets/AssetFields.h"
#include "law/Law.h"

namespace tallymar {

// What the law proposes for the dates of the asset on the form, after the field's own hint: nothing is entered by itself. Empty
// where it has nothing to say of the field, or the asset has no date in service yet. yearEnd is the book's.
std::string LawHint(const Law& law, const AssetFieldValues& values, AssetField field, Date yearEnd);

// The most that a field takes of a company that goes by the law: a special allowance can be all of it.
CurrencyAmount MaximumOf(const AssetFieldDef& field, bool byLaw);

}  // namespace tallymar
