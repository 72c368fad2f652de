#include "store/AssetPlace.h"

#include "platform/runtime/PlatformError.h"

namespace tallymar {

AssetPlace::AssetPlace(recordset::Recordset& assets, std::string_view index)
    : assets_(assets), bookmark_(assets.HasCurrentRow() ? assets.Bookmark() : std::string()) {
    assets_.SetIndex(index);
}

AssetPlace::~AssetPlace() {
    try {
        assets_.SetIndex("AssetNum");
        if (!bookmark_.empty()) assets_.SetBookmark(bookmark_);
    } catch (const PlatformError&) {
        // The failure that the command itself met is the one to tell.
    }
}

}  // namespace tallymar
