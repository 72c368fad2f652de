#include "batch/ChangeAssets.h"

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetPass.h"

namespace tallymar {

std::int64_t ChangeAssets(CompanySession& session, Prompts& prompts, const std::function<bool(AssetRecord&)>& change) {
    std::int64_t changed = 0;
    try {
        recordset::RunBatch(session.Database(), recordset::OnFailure::KeepDone, [&] {
            AssetRecord asset;
            AssetPass(session, prompts).ForEach(asset, [&] {
                if (!change(asset)) return;
                session.WriteAssetRecord(asset);
                ++changed;
            });
        });
    } catch (const recordset::BatchTakenBack&) {
        throw;  // it says itself that nothing was kept
    } catch (const PlatformError& failure) {
        throw PlatformError(failure.Code(),
                            std::string(failure.what()) + "; assets changed before it: " + std::to_string(changed));
    }
    return changed;
}

bool SelectsYear(std::string_view year) {
    constexpr double kYearOfEveryAsset = 0;
    return Trim(year).empty() || Val(year) == kYearOfEveryAsset;
}

void RequireBook(int book, std::string_view field) {
    if (book >= kFirstBook && book <= kLastBook) return;
    throw PlatformError(Failure::InvalidCall, std::string(field) + " must be 1 thru 4");
}

std::string NumberChangedText(std::int64_t count) {
    return "Number of Assets changed " + std::to_string(count);
}

}  // namespace tallymar
