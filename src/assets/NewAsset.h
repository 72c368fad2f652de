#pragma once

#include <string>

#include "assets/FieldRules.h"
#include "store/CompanySession.h"

namespace tallymar {

// The number of the next new asset: "NEW001" and up, or counted on from the last asset. Moves the recordset. Failure::Overflow
// when a numeric number leaves the signed 16 bits that numbers are counted in.
std::string ChooseAssetNumber(recordset::Recordset& assets, bool numeric);

// Adds the row of a new asset with its starting values and makes it the current one; returns its number. A failure of the
// database (a number too wide for its column, a full disk) reaches the caller, and no row is added.
std::string AddNewAsset(CompanySession& session, const NewAssetDefaults& defaults);

}  // namespace tallymar
