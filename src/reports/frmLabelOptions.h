#pragma once

#include "reports/AssetLabels.h"
#include "reports/frmDocumentForm.h"

namespace tallymar {

class sitxEdit;

// "Asset Labels": labels on laser sheets for the assets chosen.
class frmLabelOptions : public frmDocumentForm {
    Q_OBJECT

 public:
    explicit frmLabelOptions(CompanySession& session, QWidget* parent = nullptr);

 private:
    LabelOptions OptionsOfControls() const;
    void Ok() override;

    CompanySession& session_;
    CSOptList* optlType_ = nullptr;
    sitxEdit* sitxSTT_ = nullptr;
    sitxEdit* sitxENT_ = nullptr;
    sitxEdit* sitxSelectedDivision_ = nullptr;
    sitxEdit* sitxSelectedDepartment_ = nullptr;
};

}  // namespace tallymar
