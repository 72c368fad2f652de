#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/CompanySession.h"

namespace tallymar {

struct CopyAssetOptions {
    std::string Copies;       // the number of copies, as typed
    std::string Prefix;       // the asset number prefix
    std::string AssetNumber;  // the source, when the recordset stands on no row
};

// The number of copy k: the prefix and k, which prefixes of two to four characters fill up with zeros to six.
std::string CopyNumber(std::string_view prefix, long long k);

// The number that the copy form shows as the asset being copied: the current row's, else the given one.
std::string CopySource(CompanySession& session, const std::string& given);

// Copies the current asset, all of it but the number, asking before each copy; returns the numbers added and leaves the recordset
// on the source. A number already in use is passed over. Numbers are not checked for width: one that the column cannot hold fails
// at the database with FieldTooSmall, and the copies before it stay.
std::vector<std::string> StartCopy(CompanySession& session, const CopyAssetOptions& options, Prompts& prompts);

}  // namespace tallymar
