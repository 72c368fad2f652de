#pragma once

#include <string>
#include <string_view>

#include "platform/recordset/Recordset.h"

namespace tallymar {

// While it stands, the session's recordset of assets is somebody's to move, in the order of an index; after it the recordset is
// in the order of AssetNum again and on the row where it stood, if that is still there. The asset form may be open over it, and
// what it is asked to copy or save next is the asset on the screen.
class AssetPlace {
 public:
    explicit AssetPlace(recordset::Recordset& assets, std::string_view index = "AssetNum");
    ~AssetPlace();
    AssetPlace(const AssetPlace&) = delete;
    AssetPlace& operator=(const AssetPlace&) = delete;

 private:
    recordset::Recordset& assets_;
    std::string bookmark_;  // empty: nowhere
};

}  // namespace tallymar
