#include "interchange/FieldDefinition.h"

#include <algorithm>

#include "platform/runtime/FindFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::array<std::string_view, FieldDefinition::kFields + 1> kLabels = {
    "",
    "Asset Number",
    "Division",
    "Department",
    "Asset Description",
    "Serial Number",
    "G/L Account Number",
    "Purchased Date (mm/dd/yy)",
    "In-Service Date (mm/dd/yy)",
    "Date Sold (mm/dd/yy)",
    "Depreciated to Date",
    "IRS Code Section",
    "New or Used",
    "Asset Type (PP, RL, or IN)",
    "Depreciation Type (MCRS, etc)",
    "Depreciation Method (DB, SL, etc)",
    "Business Use % (0 to 100)",
    "Class Life (3, 5, 7, etc)",
    "Depreciation Period (3, 5, 7, etc)",
    "Asset Cost",
    "Asset Basis",
    "Salvage Value",
    "Previous Depreciation",
    "Current Depreciation",
    "Section 179 Expense amount",
    "Depreciation Limitation amount",
    "Sold Amount",
    "Selling Expenses",
    "Tax Credit amount",
    "Tax Credit Used",
    "DB Percentage (150, 200, etc)",
    "Automobile (Y or N)",
    "Listed Property (Y or N)",
    "IRS Convention (Y, M, Q, etc)",
    "Abandoned (Y or N)",
    "Casualty Loss (Y or N)",
    "Like Kind Exchange (Y or N)",
    "Agricutural Asset (Y or N)",
    "Fair Market Value amount",
    "Additional 1st Year Depreciation",
    "Additional 1st Year Percentage",
};

std::size_t Slot(int field) {
    if (field < 1 || field > FieldDefinition::kFields) throw PlatformError(Failure::SubscriptOutOfRange);
    return static_cast<std::size_t>(field);
}

std::string FileName(std::string_view kind, std::string_view number) {
    return std::string(kind) + std::string(LTrim(number)) + ".Dat";
}

}  // namespace

std::string_view FieldDefinition::Label(int field) {
    return kLabels[Slot(field)];
}

std::string FieldDefinition::ImportFileName(std::string_view number) {
    return FileName("ImpDef", number);
}

std::string FieldDefinition::ExportFileName(std::string_view number) {
    return FileName("ExpDef", number);
}

std::filesystem::path FieldDefinition::FileIn(const std::filesystem::path& folder, const std::string& name) {
    const std::filesystem::path found = FindAnyCase(folder, name);
    return found.empty() ? folder / name : found;
}

FieldDefinition FieldDefinition::Load(const std::filesystem::path& file) {
    FieldDefinition definition;
    SequentialReader reader(file);
    if (reader.HasLine()) definition.FieldCountText = reader.ReadLine();
    for (int field = 1; field <= kFields && reader.HasLine(); ++field) definition.SetBox(field, reader.ReadLine());
    return definition;
}

void FieldDefinition::Save(const std::filesystem::path& file) const {
    SequentialWriter writer(file);
    writer.WriteLine(FieldCountText);
    for (int field = 1; field <= kFields; ++field) writer.WriteLine(Box(field));
    writer.Close();
}

int FieldDefinition::FieldCount() const {
    return ToInteger(Val(FieldCountText));
}

const std::string& FieldDefinition::Box(int field) const {
    return boxes_[Slot(field)];
}

void FieldDefinition::SetBox(int field, std::string_view text) {
    boxes_[Slot(field)] = text;
}

int FieldDefinition::Position(int field) const {
    return ToInteger(Val(Box(field)));
}

bool FieldDefinition::IsValidPosition(std::string_view text) {
    try {
        const double position = Val(text);
        return position >= 0 && position <= kFields;
    } catch (const PlatformError&) {
        return false;  // a number beyond every other
    }
}

int FieldDefinition::HighestPosition() const {
    int highest = 0;
    for (int field = 1; field <= kFields; ++field) highest = std::max(highest, Position(field));
    return highest;
}

std::vector<int> FieldDefinition::Unclaimed() const {
    std::vector<int> claimed;
    for (int field = 1; field <= kFields; ++field) claimed.push_back(Position(field));
    std::sort(claimed.begin(), claimed.end());
    std::vector<int> unclaimed;
    for (int position = 1; position < claimed.back(); ++position) {
        if (!std::binary_search(claimed.begin(), claimed.end(), position)) unclaimed.push_back(position);
    }
    return unclaimed;
}

}  // namespace tallymar
