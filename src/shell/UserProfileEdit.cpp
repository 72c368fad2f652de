#include "shell/UserProfileEdit.h"

#include <algorithm>
#include <array>

#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr int kPathLength = 255;

constexpr auto kFirmFields = std::to_array<UserProfileEdit::Field>({
    {UserProfile::kCompany, "sitxCompany", "Name", "Enter your company name", 40},
    {UserProfile::kAddress, "sitxAddress", "Address", "Enter your street address", 40},
    {UserProfile::kCity, "sitxCity", "City", "Enter the name of your city", 40},
    // COMPAT: spelled so.
    {UserProfile::kStateCode, "sitxStateCode", "State", "Enter your 2 chararacter state code", 2},
    {UserProfile::kZipCode, "sitxZipCode", "Zip Code", "", 12},
    {UserProfile::kTelephone, "sitxTelephone", "Phone", "Enter your telephone number", 32},
});

constexpr auto kDriveFields = std::to_array<UserProfileEdit::Field>({
    {UserProfile::kDataAsset, "sitxDataAsset", "Asset Data", "Data path for DOS TALLYMAR data", kPathLength},
    {UserProfile::kDataTaxPack, "sitxDataTaxPack", "Tax Form Data", "", kPathLength},
    {UserProfile::kData1040, "sitxData1040", "1040 Data", "Data path for Form 1040 data", kPathLength},
    {UserProfile::kData1120, "sitxData1120", "1120 Data", "Data path for Form 1120 data", kPathLength},
    {UserProfile::kData1120S, "sitxData1120S", "1120S Data", "Data path for Form 1120S data", kPathLength},
    {UserProfile::kData1065, "sitxData1065", "1065 Data", "Data path for Form 1065 data", kPathLength},
    {UserProfile::kData1041, "sitxData1041", "1041 Data", "Data path for Form 1041 data", kPathLength},
});

constexpr std::array<std::string_view, 2> kNewUsedChoices = {"New", "Used"};

struct BoxPlace {
    UserProfile::Position Position;
    bool UserProfile::*Flag;
};

constexpr BoxPlace PlaceOf(UserProfileEdit::Box box) {
    switch (box) {
        case UserProfileEdit::Box::DateFind:
            return {UserProfile::kDateFind, &UserProfile::FindByDate};
        case UserProfileEdit::Box::GLFind:
            return {UserProfile::kGLFind, &UserProfile::FindByGLNumber};
        case UserProfileEdit::Box::NewAsset:
            break;
    }
    return {UserProfile::kNewAsset, &UserProfile::NumericAssetNumbers};
}

struct ListPlace {
    UserProfile::Position Position;
    std::string UserProfile::*Default;
    std::string_view WhenUnknown;
};

constexpr ListPlace PlaceOf(UserProfileEdit::List list) {
    switch (list) {
        case UserProfileEdit::List::NewUsed:
            return {UserProfile::kNewUsed, &UserProfile::DefaultNewUsed, "New"};
        case UserProfileEdit::List::DeprType:
            return {UserProfile::kDeprType, &UserProfile::DefaultDeprType, "MCRS"};
        case UserProfileEdit::List::DeprMethod:
            break;
    }
    return {UserProfile::kDeprMethod, &UserProfile::DefaultDeprMethod, "DB"};
}

constexpr std::string_view FlagText(bool flag) {
    return flag ? "True" : "False";
}

void Decode(UserProfile& profile, UserProfileEdit::Box box) {
    const BoxPlace place = PlaceOf(box);
    const std::string& text = profile.At(place.Position);
    if (text == "True") profile.*place.Flag = true;
    if (text == "False") profile.*place.Flag = false;
}

}  // namespace

UserProfileEdit::UserProfileEdit(UserProfile& profile) : profile_(profile) {
    Decode(profile, Box::DateFind);
    if (profile.At(UserProfile::kDateFind).empty()) {
        profile.FindByDate = true;
        profile.Set(UserProfile::kDateFind, "True");
    }
    Decode(profile, Box::GLFind);
    if (profile.At(UserProfile::kGLFind).empty()) {
        profile.FindByGLNumber = true;
        profile.Set(UserProfile::kGLFind, "True");
    }
    Decode(profile, Box::NewAsset);
    if (profile.At(UserProfile::kNewAsset).empty()) {
        profile.NumericAssetNumbers = false;
        profile.Set(UserProfile::kGLFind, "False");  // COMPAT: the position before its own
    }
}

std::span<const UserProfileEdit::Field> UserProfileEdit::FirmFields() {
    return kFirmFields;
}

std::span<const UserProfileEdit::Field> UserProfileEdit::DriveFields() {
    return kDriveFields;
}

bool UserProfileEdit::Checked(Box box) const {
    return profile_.*PlaceOf(box).Flag;
}

void UserProfileEdit::Click(Box box, bool checked) {
    profile_.*PlaceOf(box).Flag = checked;
}

std::span<const std::string_view> UserProfileEdit::Choices(List list) {
    switch (list) {
        case List::NewUsed:
            return kNewUsedChoices;
        case List::DeprType:
            return kDeprTypes;
        case List::DeprMethod:
            break;
    }
    return kDeprMethods;
}

std::span<const CodeMeaning> UserProfileEdit::Meanings(List list) {
    switch (list) {
        case List::NewUsed:
            return kNewUsedMeanings;
        case List::DeprType:
            return kDeprTypeMeanings;
        case List::DeprMethod:
            break;
    }
    return kDeprMethodMeanings;
}

std::string_view UserProfileEdit::Chosen(List list) const {
    const ListPlace place = PlaceOf(list);
    const std::span<const std::string_view> choices = Choices(list);
    const auto stored = std::find(choices.begin(), choices.end(), profile_.At(place.Position));
    return stored != choices.end() ? *stored : place.WhenUnknown;
}

void UserProfileEdit::Click(List list, std::string_view choice) {
    profile_.*PlaceOf(list).Default = choice;
}

void UserProfileEdit::SetText(UserProfile::Position position, std::string_view text) {
    profile_.Set(position, position == UserProfile::kStateCode ? UCase(text) : std::string(text));
}

bool UserProfileEdit::Save(const std::filesystem::path& file) {
    for (const Box box : {Box::DateFind, Box::GLFind, Box::NewAsset}) profile_.Set(PlaceOf(box).Position, FlagText(Checked(box)));
    for (const List list : {List::NewUsed, List::DeprType, List::DeprMethod}) {
        const ListPlace place = PlaceOf(list);
        profile_.Set(place.Position, profile_.*place.Default);
    }
    return profile_.Save(file);
}

}  // namespace tallymar
