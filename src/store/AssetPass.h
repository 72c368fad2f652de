#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/prompts/Prompts.h"
#include "platform/runtime/PlatformError.h"
#include "store/AssetPlace.h"
#include "store/CompanySession.h"

namespace tallymar {

// The one way over all assets. However it ends, the session's recordset stands where it stood (AssetPlace).
//
// A command that goes over the assets more than once makes one AssetPass and calls ForEach as often.
class AssetPass {
 public:
    AssetPass(CompanySession& session, Prompts& prompts, std::string_view index = "AssetNum");

    // Reads every asset into the record, in the order of the index, and calls visit() each time. The asset is the session's
    // current row meanwhile, and WriteAssetRecord rewrites it; what is written must not change the index's own columns, or the
    // asset is met again or never. A progress bar runs along. A failure ends the pass; one of reading or visiting an asset has
    // its number before its text, and `what` after the number: "Asset 000205, Federal: Overflow".
    template <typename Visit>
    void ForEach(AssetRecord& asset, Visit&& visit, std::string_view what = {}) {
        ProgressScope progress(prompts_, Start());
        for (; !assets_.Eof(); assets_.MoveNext()) {
            progress.Step();
            try {
                session_.ReadAssetRecord(asset);
                visit();
            } catch (const PlatformError& failure) {
                throw failure.WithPrefix(PlaceOfFailure(what));
            }
            ++done_;
        }
    }

    // How many assets the last ForEach has read and visited, all of them or those before the one that failed.
    std::int64_t Done() const { return done_; }

 private:
    std::int64_t Start();  // on the first asset; returns how many there are
    std::string PlaceOfFailure(std::string_view what) const;

    CompanySession& session_;
    Prompts& prompts_;
    recordset::Recordset& assets_;
    AssetPlace place_;
    std::int64_t done_ = 0;
};

}  // namespace tallymar
