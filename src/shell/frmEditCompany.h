#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/CSForm.h"
#include "platform/runtime/PerBook.h"
#include "shell/CompanyProfile.h"
#include "store/CompanySession.h"

class QCheckBox;

namespace tallymar {

class CSCombo;
class sitxEdit;
class sidtEdit;

// "Edit Company Information": the one row of the company table.
class frmEditCompany : public CSForm {
    Q_OBJECT

 public:
    // importOptions shows the import's window over this one; without it the Import button is off.
    explicit frmEditCompany(CompanySession& session, std::function<void(QWidget*)> importOptions = {}, QWidget* parent = nullptr);

 signals:
    void Saved();

 protected:
    void OnFieldFocus(QWidget* field) override;
    void OnUnload() override;

 private:
    void LoadEdit();
    void Save();

    struct TextField {
        std::string CompanyProfile::*Member;
        sitxEdit* Edit;
    };

    CompanySession& session_;
    std::vector<TextField> texts_;
    sidtEdit* sidtBeginDate_ = nullptr;
    PerBook<sidtEdit*> sidtYearEnd_;
    QCheckBox* chkRound_ = nullptr;
    CSCombo* cboLimits_ = nullptr;
};

}  // namespace tallymar
