#pragma once

#include <string>
#include <string_view>

#include "platform/recordset/Recordset.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

// A pass over the assets in the order of an index. However it ends, the recordset is in the order of AssetNum again and on the
// row where it stood: the asset form may be open over it, and what it is asked to copy or save is the asset on the screen.
class IndexScope {
 public:
    IndexScope(recordset::Recordset& assets, std::string_view index)
        : assets_(assets), bookmark_(assets.HasCurrentRow() ? assets.Bookmark() : std::string()) {
        assets_.SetIndex(index);
    }
    ~IndexScope() {
        try {
            assets_.SetIndex("AssetNum");
            if (!bookmark_.empty()) assets_.SetBookmark(bookmark_);
        } catch (const PlatformError&) {
            // The failure that the pass itself met is the one to tell.
        }
    }
    IndexScope(const IndexScope&) = delete;
    IndexScope& operator=(const IndexScope&) = delete;

 private:
    recordset::Recordset& assets_;
    std::string bookmark_;
};

}  // namespace tallymar
