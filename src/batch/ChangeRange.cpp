#include "batch/ChangeRange.h"

#include <algorithm>
#include <span>

#include "batch/ChangeAssets.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

[[noreturn]] void Refuse(const std::string& text) {
    throw PlatformError(Failure::InvalidCall, text);
}

std::int16_t IndexOf(std::string_view code, std::span<const std::string_view> codes, const char* what) {
    const auto found = std::find(codes.begin(), codes.end(), code);
    if (found == codes.end()) Refuse(std::string("The TO ") + what + " is \"" + std::string(code) + "\", which is none");
    return static_cast<std::int16_t>(found - codes.begin());
}

// COMPAT: what is typed is compared at the full width of the record's field, so that only a text of all 16 characters matches.
// In the division and department alike.
bool SelectsAtFullWidth(std::string_view filter, std::string_view field) {
    return LTrim(filter).empty() || filter == field;
}

// To as the record holds it.
struct StoredSetUp {
    explicit StoredSetUp(const DepreciationSetUp& to)
        : DeprType(IndexOf(to.DeprType, kDeprTypes, "Depr Type")),
          DeprMethod(IndexOf(to.DeprMethod, kDeprMethods, "Depr Method")),
          DBPercent(ToInteger(Val(to.DBPercent))),
          FedLife(ToInteger(to.ClassLife.ToDouble())) {
        IndexOf(to.AssetType, kAssetTypes, "Asset Type");
    }

    std::int16_t DeprType;
    std::int16_t DeprMethod;
    std::int16_t DBPercent;
    std::int16_t FedLife;
};

bool Matches(const AssetRecord& record, const ChangeRangeOptions& options, std::int16_t fromLife) {
    const DepreciationSetUp& from = options.From;
    const int book = options.Book;
    return SelectsAtFullWidth(options.Division, record.Division.View()) &&
           SelectsAtFullWidth(options.Department, record.Department.View()) && SelectsYear(options.Year) &&
           from.DeprMethod == DeprMethodCode(record.DeprMethod[book]) && from.DeprType == DeprTypeCode(record.DeprType[book]) &&
           from.AssetType == record.AssetType && fromLife == record.FedLife && from.Period == record.Period[book] &&
           Val(from.DBPercent) == static_cast<double>(record.DBPercent[book]);
}

}  // namespace

std::int64_t ChangeRange(CompanySession& session, const ChangeRangeOptions& options, Prompts& prompts) {
    RequireBook(options.Book, "Which Book");
    const StoredSetUp to(options.To);
    const std::int16_t fromLife = ToInteger(options.From.ClassLife.ToDouble());
    return ChangeAssets(session, prompts, [&](AssetRecord& record) {
        if (!Matches(record, options, fromLife)) return false;
        record.DeprMethod[options.Book] = to.DeprMethod;
        record.DeprType[options.Book] = to.DeprType;
        record.DBPercent[options.Book] = to.DBPercent;
        record.Period[options.Book] = options.To.Period;
        record.AssetType = options.To.AssetType;
        record.FedLife = to.FedLife;
        return true;
    });
}

}  // namespace tallymar
