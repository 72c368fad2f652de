#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "store/CodeMeanings.h"
#include "store/UserProfile.h"

namespace tallymar {

// The user profile while its form is open. Clicks change the decoded settings at once and Cancel does not take them back; only
// the file is left alone.
class UserProfileEdit {
 public:
    enum class Box { DateFind, GLFind, NewAsset };
    enum class List { NewUsed, DeprType, DeprMethod };

    // Opening decodes the check boxes by rules of its own, which are not those of the program's start: an empty position 31 is
    // true here, and an empty position 32 puts "False" in position 31. Files in use depend on both.
    explicit UserProfileEdit(UserProfile& profile);

    // A text field of the form and the position that it is kept at.
    struct Field {
        UserProfile::Position Position;
        std::string_view Control;  // "sitxCompany"
        std::string_view Label;
        std::string_view Hint;
        int MaxLength;
    };
    static std::span<const Field> FirmFields();
    static std::span<const Field> DriveFields();

    const std::string& Text(UserProfile::Position position) const { return profile_.At(position); }

    bool Checked(Box box) const;
    void Click(Box box, bool checked);

    static std::span<const std::string_view> Choices(List list);
    static std::span<const CodeMeaning> Meanings(List list);
    // Where the list stands when the form opens: at the stored value, at "New", "MCRS" or "DB" when that is unknown.
    std::string_view Chosen(List list) const;
    void Click(List list, std::string_view choice);

    // Puts the form's texts, the check boxes and the decoded defaults in their positions and writes the file. False when it could
    // not be written.
    void SetText(UserProfile::Position position, std::string_view text);
    bool Save(const std::filesystem::path& file);

 private:
    UserProfile& profile_;
};

}  // namespace tallymar
