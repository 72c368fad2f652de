#include "assets/NewAsset.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "platform/runtime/Format.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr std::int16_t kDefaultLife = 5;
constexpr std::int16_t kDefaultDBPercent = 200;
constexpr std::size_t kFullWidth = 6;

// A new asset's number is counted on from the digits that the last one begins with; what follows them, an "E" too, does not
// count.
long long LeadingDigits(std::string_view text) {
    const auto end = std::find_if(text.begin(), text.end(), [](char c) { return c < '0' || c > '9'; });
    return std::llround(Val(text.substr(0, static_cast<std::size_t>(end - text.begin()))));
}

bool IsTaken(recordset::Recordset& assets, const std::string& number) {
    assets.Seek(number);
    return !assets.NoMatch();
}

std::string NextPrefixedNumber(recordset::Recordset& assets) {
    for (long long k = 1;; ++k) {
        std::string number = "NEW" + Format(k, "000");
        if (!IsTaken(assets, number)) return number;
    }
}

std::string NextNumericNumber(recordset::Recordset& assets) {
    assets.MoveLast();
    const std::string last = assets.HasCurrentRow() ? assets.Get("AssetNum").ToText() : std::string();
    const std::string_view trimmed = RTrim(last);
    const std::string plain = std::to_string(LeadingDigits(trimmed) + 1);
    std::string number = plain;
    if (trimmed.size() == kFullWidth) {
        number = "00000" + plain;
        number = number.substr(number.size() - kFullWidth);
    }
    // COMPAT: 16 bits, and six digits from the second try on.
    std::int16_t k = ToInteger(Val(number));
    while (IsTaken(assets, number)) {
        k = ToInteger(k + 1.0);
        number = Format(static_cast<long long>(k), "000000");
    }
    return number;
}

// The letter of a word; the column holds nothing but these two.
std::string_view NewUsedLetter(std::string_view word) {
    return !word.empty() && ToUpper(word.front()) == 'U' ? "U" : "N";
}

// The index that a default writes to a book, or below 0 for a default that is no code: that column then stays empty.
int TypeIndex(std::string_view code, int book) {
    const auto found = std::find(kDeprTypes.begin(), kDeprTypes.end(), code);
    if (found == kDeprTypes.end()) return -1;
    const int index = static_cast<int>(found - kDeprTypes.begin());
    // COMPAT: a collectible starts as not depreciated in the A.M.T. book, as the assets of existing companies do.
    return index == kColl && book == kLastBook ? kXxxx : index;
}

int MethodIndex(std::string_view code) {
    const auto found = std::find(kDeprMethods.begin(), kDeprMethods.end(), code);
    return found == kDeprMethods.end() ? -1 : static_cast<int>(found - kDeprMethods.begin());
}

void SetBooks(recordset::Recordset& assets, int book, const NewAssetDefaults& defaults) {
    const std::string suffix = "(" + std::to_string(book) + ")";
    assets.Set("IRSConvUsed" + suffix, "Y");
    if (defaults.DeprMethod == "DB") assets.Set("DBPercent" + suffix, kDefaultDBPercent);
    if (const int type = TypeIndex(defaults.DeprType, book); type >= 0)
        assets.Set("DeprType" + suffix, static_cast<std::int16_t>(type));
    if (const int method = MethodIndex(defaults.DeprMethod); method >= 0) {
        assets.Set("DeprMethod" + suffix, static_cast<std::int16_t>(method));
    }
}

}  // namespace

std::string ChooseAssetNumber(recordset::Recordset& assets, bool numeric) {
    return numeric ? NextNumericNumber(assets) : NextPrefixedNumber(assets);
}

std::string AddNewAsset(CompanySession& session, const NewAssetDefaults& defaults) {
    recordset::Recordset& assets = session.AssetsRecordset();
    assets.SetIndex("AssetNum");
    const std::string number = ChooseAssetNumber(assets, defaults.NumericNumbers);
    assets.AddNew();
    try {
        assets.Set("AssetNum", number);
        assets.Set("CodeSection", "1245");
        assets.Set("TaxGroup", kBlankTaxGroup);
        assets.Set("AssetType", "PP");
        assets.Set("FedLife", kDefaultLife);
        assets.Set("ClassLife", Units(kDefaultLife));
        assets.Set("BusinessUse", Units(100));
        assets.Set("NewUsed", NewUsedLetter(defaults.NewUsed));
        for (int book = kFirstBook; book <= kLastBook; ++book) SetBooks(assets, book, defaults);
        assets.Update();
    } catch (...) {
        assets.CancelUpdate();
        throw;
    }
    assets.Seek(number);
    return number;
}

}  // namespace tallymar
