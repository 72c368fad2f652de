#include "store/AssetPass.h"

#include "platform/runtime/Windows1252.h"

namespace tallymar {

AssetPass::AssetPass(CompanySession& session, Prompts& prompts, std::string_view index)
    : session_(session), prompts_(prompts), assets_(session.AssetsRecordset()), place_(assets_, index) {}

std::int64_t AssetPass::Start() {
    done_ = 0;
    assets_.MoveFirst();
    return assets_.RecordCount();
}

std::string AssetPass::PlaceOfFailure(std::string_view what) const {
    std::string place = "Asset ";
    try {
        place += RTrim(assets_.Get("AssetNum").ToText());
    } catch (const PlatformError&) {
        return {};  // another program has deleted it: the failure says so itself
    }
    if (!what.empty()) place.append(", ").append(what);
    return place + ": ";
}

}  // namespace tallymar
