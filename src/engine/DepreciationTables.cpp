#include "engine/DepreciationTables.h"

#include "store/Vocabularies.h"

namespace tallymar {

const DepreciationTableFile* DepreciationTables::Table(std::int16_t deprType, std::int16_t deprMethod, CurrencyAmount period,
                                                       std::string_view assetType) {
    const std::int64_t years = DepreciationTableFile::YearsInName(period);
    const auto known = tables_.find(KeyView{deprType, deprMethod, years, assetType});
    if (known != tables_.end()) return known->second.get();

    const std::filesystem::path path = find_(NameOf(deprType, deprMethod, period, assetType));
    auto table = path.empty() ? nullptr : std::make_unique<DepreciationTableFile>(path);
    return tables_.emplace(Key{deprType, deprMethod, years, std::string(assetType)}, std::move(table)).first->second.get();
}

std::string DepreciationTables::NameOf(std::int16_t deprType, std::int16_t deprMethod, CurrencyAmount period,
                                       std::string_view assetType) {
    return DepreciationTableFile::NameFor(DeprTypeCode(deprType), DeprMethodCode(deprMethod), period, assetType);
}

}  // namespace tallymar
