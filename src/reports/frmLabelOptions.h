#pragma once

#include "platform/controls/CSForm.h"
#include "reports/AssetLabels.h"

class QProgressBar;

namespace tallymar {

class CSOptList;
class sitxEdit;

// "Asset Labels": labels on laser sheets for the assets chosen.
class frmLabelOptions : public CSForm {
    Q_OBJECT

 public:
    explicit frmLabelOptions(CompanySession& session, QWidget* parent = nullptr);

 private:
    LabelOptions OptionsOfControls() const;
    void Ok();

    CompanySession& session_;
    CSOptList* optlType_ = nullptr;
    CSOptList* optlOutput_ = nullptr;
    sitxEdit* sitxSTT_ = nullptr;
    sitxEdit* sitxENT_ = nullptr;
    sitxEdit* sitxSelectedDivision_ = nullptr;
    sitxEdit* sitxSelectedDepartment_ = nullptr;
    QProgressBar* progressBar_ = nullptr;
};

}  // namespace tallymar
