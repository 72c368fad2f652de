#include "assets/EntryProblem.h"

#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

// The description of the other asset that has the number; nullopt when none has.
std::optional<std::string> OwnerOf(CompanySession& company, const std::string& number, const std::string& bookmark) {
    recordset::Recordset assets = company.Database().OpenRecordset("Assets");
    assets.SetIndex("AssetNum");
    assets.Seek(number);
    if (assets.NoMatch() || assets.Bookmark() == bookmark) return std::nullopt;
    const std::string description(RTrim(assets.Get("Description").ToText()));
    return description.empty() ? "another asset" : description;
}

std::optional<EntryProblem> TooLong(AssetFieldValues values) {
    for (const AssetFieldDef& field : AssetFields()) {
        if (field.Kind != FieldKind::Text || !field.Stored) continue;
        const auto width = static_cast<std::size_t>(ColumnOf(*field.Stored).Width());
        if (FieldValue<std::string>(values, field, 0).size() <= width) continue;
        return EntryProblem{field.Id, std::string(field.Label) + " holds " + std::to_string(width) + " characters"};
    }
    return std::nullopt;
}

}  // namespace

std::optional<EntryProblem> FindEntryProblem(CompanySession& company, const AssetFieldValues& values, const std::string& bookmark,
                                             const PlatformError& refusal) {
    const std::string label(FieldDef(AssetField::AssetNum).Label);
    switch (refusal.Code()) {
        case Failure::DuplicateKey:
            if (const auto owner = OwnerOf(company, values.AssetNum, bookmark)) {
                return EntryProblem{AssetField::AssetNum, label + " " + values.AssetNum + " belongs to " + *owner};
            }
            return std::nullopt;
        case Failure::ZeroLengthNotAllowed:
        case Failure::NullKey:
            return EntryProblem{AssetField::AssetNum, label + " is empty"};
        case Failure::FieldTooSmall:
            return TooLong(values);
        default:
            return std::nullopt;
    }
}

}  // namespace tallymar
