#include "batch/Resequence.h"

#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"
#include "store/AssetPass.h"
#include "store/CompanyLimits.h"
#include "store/Helpers.h"

namespace tallymar {

namespace {

constexpr std::size_t kNumberWidth = ColumnOf(&AssetRecord::AssetNum).Width();

bool SameText(std::string_view a, std::string_view b, bool ignoreCase) {
    return ignoreCase ? UCase(a) == UCase(b) : a == b;
}

bool Selects(const ResequenceOptions& options, const AssetRecord& record) {
    if (options.CopyOnly == "N") return true;
    if (options.CopyOnly != "Y") return false;
    const std::string_view division = record.Division.Trimmed();
    if (!options.Division.empty() && !SameText(options.Division, division, options.IgnoreCase)) return false;
    // COMPAT: the department is looked for in the division and must differ from it; the asset's own department plays no part.
    return options.Department.empty() || !SameText(options.Department, division, options.IgnoreCase);
}

// So many digits that prefix and number have six characters; without a prefix the count as it is.
std::string_view NumberPad(std::size_t prefixLength) {
    switch (prefixLength) {
        case 1:
            return pictures::kNumberPad5;
        case 2:
            return pictures::kNumberPad4;
        case 3:
            return pictures::kNumberPad3;
        case 4:
            return pictures::kNumberPad2;
        default:
            return {};
    }
}

std::string NewNumber(const std::string& prefix, std::int64_t sequence) {
    const std::string_view pad = NumberPad(prefix.size());
    std::string number = prefix + (pad.empty() ? std::to_string(sequence) : Format(CurrencyAmount::FromInteger(sequence), pad));
    // The record would cut it, and a cut number could be another asset's.
    if (number.size() > kNumberWidth) {
        throw PlatformError(Failure::FieldTooSmall, "number " + number + ": " + std::string(FailureText(Failure::FieldTooSmall)));
    }
    return number;
}

// The company that is copied into.
class Target {
 public:
    explicit Target(recordset::Database& database) : assets_(database.OpenRecordset("Assets")), access_(assets_) {
        assets_.SetIndex("AssetNum");
    }

    void Store(const AssetRecord& record, ResequenceCounts& counts) {
        assets_.Seek(record.AssetNum.View());
        if (assets_.NoMatch()) {
            ++counts.Added;
            access_.AddAssetRecord(record);
        } else {
            ++counts.Changed;
            access_.ReplaceAssetRecord(record);
        }
    }

 private:
    recordset::Recordset assets_;
    AssetRecordAccess access_;
};

}  // namespace

std::string ResequenceCounts::Text() const {
    return std::to_string(Added) + " Assets added and " + std::to_string(Changed) + " Assets changed";
}

int PrefixLimit(std::int64_t assetCount) {
    return assetCount > 99 ? 3 : 4;
}

std::string PrefixLimitText(std::int64_t assetCount) {
    return "Static Characters limited to " + std::to_string(PrefixLimit(assetCount)) + " characters";
}

FileDialog ResequenceDialog(const std::filesystem::path& initialFolder) {
    return CompanyFileDialog("New Resequenced Database Name", initialFolder);
}

std::optional<ResequenceCounts> Resequence(CompanySession& session, const ResequenceOptions& options,
                                           const std::filesystem::path& target, Prompts& prompts) {
    if (options.Prefix.size() > static_cast<std::size_t>(PrefixLimit(session.AssetCount()))) {
        throw PlatformError(Failure::InvalidCall, PrefixLimitText(session.AssetCount()));
    }
    RequireNumberPrefix(options.Prefix);
    if (IsSameFile(target, session.DatabaseFileName())) {
        throw PlatformError(Failure::InvalidCall, "The new database must be another file than the open company");
    }
    const auto company = session.ChosenCompany(target, prompts);
    if (!company) return std::nullopt;
    ResequenceCounts counts;
    const auto fill = [&](recordset::Database& database) {
        recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] {
            Target into(database);
            std::int64_t sequence = 0;
            AssetRecord asset;
            AssetPass(session, prompts, "InService").ForEach(asset, [&] {
                if (!Selects(options, asset)) return;
                ++sequence;
                if (options.Renumber) asset.AssetNum = NewNumber(options.Prefix, sequence);
                into.Store(asset, counts);
            });
        });
    };
    std::error_code error;
    if (std::filesystem::exists(*company, error)) {
        recordset::Database database = recordset::Database::Open(*company);
        fill(database);
    } else {
        // A company that is made for them computes as the one that they come from.
        const Limits limits = LimitsOf(session.Database());
        CompanySession::MakeCompany(*company, [&](recordset::Database& database) {
            SetLimits(database, limits);
            fill(database);
        });
    }
    return counts;
}

}  // namespace tallymar
