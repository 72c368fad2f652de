#pragma once

#include "batch/frmAssetSelection.h"
#include "batch/frmBatchForm.h"
#include "store/CompanySession.h"

namespace tallymar {

class silgEdit;

// "Set ALL Books Equal": copies one book over another or all others.
class frmSetBooks : public frmBatchForm {
    Q_OBJECT

 public:
    explicit frmSetBooks(CompanySession& session, QWidget* parent = nullptr);

 private:
    void Change(Prompts& prompts);

    CompanySession& session_;
    silgEdit* silgBook_ = nullptr;
    silgEdit* silgToBook_ = nullptr;
    AssetSelectionFields selection_;
};

}  // namespace tallymar
