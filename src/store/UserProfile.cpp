#include "store/UserProfile.h"

#include <algorithm>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"

namespace tallymar {

namespace {

// Any text but "True", "False" and nothing leaves the flag as it was.
void DecodeFlag(const std::string& text, bool whenEmpty, bool& flag) {
    if (text == "True") flag = true;
    if (text == "False") flag = false;
    if (text.empty()) flag = whenEmpty;
}

void DecodeDefault(std::string& value, std::string_view whenEmpty, std::string& decoded) {
    if (value.empty()) value = whenEmpty;
    decoded = value;
}

std::size_t Slot(int position) {
    if (position < 1 || position > UserProfile::kPositions) throw PlatformError(Failure::SubscriptOutOfRange);
    return static_cast<std::size_t>(position - 1);
}

}  // namespace

void UserProfile::Load(const std::filesystem::path& file) {
    values_.fill({});
    try {
        SequentialReader reader(file);
        for (std::size_t i = 0; i < values_.size() && !reader.AtEnd(); ++i) values_[i] = reader.ReadText();
    } catch (const PlatformError& failure) {
        // A first start has no file yet, and one that cannot be read must not keep the preparer from working. A folder or a pipe
        // of that name is somebody's mistake: the settings would be lost with every end of the program.
        if (failure.Code() == Failure::PathAccess) throw;
    }
    Decode();
}

void UserProfile::Decode() {
    DecodeFlag(values_[Slot(kDateFind)], true, FindByDate);
    DecodeFlag(values_[Slot(kGLFind)], false, FindByGLNumber);
    DecodeFlag(values_[Slot(kNewAsset)], false, NumericAssetNumbers);
    LastDataPath = values_[Slot(kLastData)];
    DecodeDefault(values_[Slot(kNewUsed)], "NEW", DefaultNewUsed);
    DecodeDefault(values_[Slot(kDeprMethod)], "DB", DefaultDeprMethod);
    DecodeDefault(values_[Slot(kDeprType)], "MCRS", DefaultDeprType);
}

bool UserProfile::Save(const std::filesystem::path& file) {
    Set(kLastData, LastDataPath);
    try {
        SequentialWriter writer(file);
        for (const std::string& value : values_) writer.WriteQuotedLine(value);
        writer.Close();
        return true;
    } catch (const PlatformError&) {
        return false;
    }
}

const std::string& UserProfile::At(int position) const {
    return values_[Slot(position)];
}

void UserProfile::Set(int position, std::string_view text) {
    std::string value(text);
    std::erase(value, '"');
    values_[Slot(position)] = std::move(value);
}

std::filesystem::path UserProfile::LastFolder() const {
    return std::filesystem::path(LastDataPath).parent_path();
}

}  // namespace tallymar
