#include "assets/CopyAsset.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

std::string_view PictureFor(std::size_t prefixLength) {
    switch (prefixLength) {
        case 2:
            return "0000";
        case 3:
            return "000";
        case 4:
            return "00";
        default:
            return "0";
    }
}

std::string FreeNumber(recordset::Recordset& assets, std::string_view prefix, long long k) {
    for (;; ++k) {
        std::string number = CopyNumber(prefix, k);
        assets.Seek(number);
        if (assets.NoMatch()) return number;
    }
}

}  // namespace

std::string CopyNumber(std::string_view prefix, long long k) {
    return std::string(prefix) + Format(k, PictureFor(prefix.size()));
}

// COMPAT: the row as it is stored is what is copied, whatever stands in the asset form.
std::string CopySource(CompanySession& session, const std::string& given) {
    const recordset::Recordset& assets = session.AssetsRecordset();
    const std::string current = assets.HasCurrentRow() ? assets.Get("AssetNum").ToText() : std::string();
    return std::string(RTrim(current.empty() ? given : current));
}

std::vector<std::string> StartCopy(CompanySession& session, const CopyAssetOptions& options, Prompts& prompts) {
    recordset::Recordset& assets = session.AssetsRecordset();
    if (!assets.HasCurrentRow() && !options.AssetNumber.empty()) assets.Seek(options.AssetNumber);
    AssetRecord record;
    session.ReadAssetRecord(record);
    const std::string source(record.AssetNum.Trimmed());

    // A copy that fails must not leave the recordset between the assets.
    struct Return {
        recordset::Recordset& Assets;
        const std::string& Source;
        ~Return() {
            try {
                Assets.Seek(Source);
            } catch (const PlatformError&) {
                // The failure that ended the copying is the one to tell.
            }
        }
    } const backToSource{assets, source};

    std::vector<std::string> added;
    const double copies = Val(options.Copies);
    for (long long k = 1; static_cast<double>(k) <= copies; ++k) {
        const std::string number = FreeNumber(assets, options.Prefix, k);
        if (!prompts.AskYesNo("Add copy of Asset " + source + " as " + number, "Confirm - Copy Asset")) continue;
        // The record would cut it, and a cut number could be another asset's.
        if (number.size() > record.AssetNum.View().size()) {
            throw PlatformError(Failure::FieldTooSmall,
                                "Asset number " + number + ": " + std::string(FailureText(Failure::FieldTooSmall)));
        }
        record.AssetNum = number;
        session.AddAssetRecord(record);
        added.push_back(number);
    }
    return added;
}

}  // namespace tallymar
