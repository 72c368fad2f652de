#pragma once

#include <filesystem>
#include <vector>

#include "platform/controls/CSForm.h"
#include "shell/UserProfileEdit.h"

class QTabWidget;

namespace tallymar {

class sitxEdit;

// "User Profile": the installation's settings.
class frmEditUser : public CSForm {
    Q_OBJECT

 public:
    // file: the Assets1.dat that Save writes.
    frmEditUser(UserProfile& profile, std::filesystem::path file, QWidget* parent = nullptr);

 private:
    QWidget* MakeTexts(std::span<const UserProfileEdit::Field> fields);
    QWidget* MakeOther();
    void Save();

    struct TextField {
        UserProfile::Position Position;
        sitxEdit* Edit;
    };

    UserProfileEdit body_;
    std::filesystem::path file_;
    std::vector<TextField> texts_;
    QTabWidget* tabs_ = nullptr;
};

}  // namespace tallymar
