#include "batch/ChangeDept.h"

#include "batch/ChangeAssets.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

// COMPAT: the labels say "Blank for ALL", but a blank From matches nothing: there would be no telling a rename of everything from
// a field left alone.
template <typename Text>
bool Rename(const FieldChange& change, std::string_view value, Text& field) {
    const std::string_view from = RTrim(change.From);
    if (from.empty() || from != RTrim(value)) return false;
    field = std::string_view(change.To);
    return true;
}

// The record would cut a longer text without a word.
void RequireFits(const FieldChange& change, const AssetColumn& column) {
    if (RTrim(change.To).size() <= static_cast<std::size_t>(column.Width())) return;
    throw PlatformError(Failure::FieldTooSmall,
                        std::string(column.Name) + " holds " + std::to_string(column.Width()) + " characters");
}

}  // namespace

std::int64_t ChangeDept(CompanySession& session, const ChangeDeptOptions& options, Prompts& prompts) {
    RequireFits(options.Division, ColumnOf(&AssetRecord::Division));
    RequireFits(options.Department, ColumnOf(&AssetRecord::Department));
    RequireFits(options.AccountNum, ColumnOf(&AssetRecord::AccountNum));
    return ChangeAssets(session, prompts, [&](AssetRecord& record) {
        if (!SelectsYear(options.Year)) return false;
        bool changed = Rename(options.Division, record.Division.View(), record.Division);
        changed |= Rename(options.Department, record.Department.View(), record.Department);
        changed |= Rename(options.AccountNum, record.AccountNum, record.AccountNum);
        return changed;
    });
}

}  // namespace tallymar
