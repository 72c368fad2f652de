#pragma once

#include "batch/ChangeRange.h"
#include "batch/frmAssetSelection.h"
#include "batch/frmBatchForm.h"

namespace tallymar {

class CSCombo;
class sidbEdit;
class silgEdit;

// "Change Range of Assets": gives every asset that matches a whole set-up another one, in one book.
class frmChangeRange : public frmBatchForm {
    Q_OBJECT

 public:
    explicit frmChangeRange(CompanySession& session, QWidget* parent = nullptr);

 private:
    // The six fields of one side.
    struct Side {
        CSCombo* AssetType;
        CSCombo* DeprType;
        CSCombo* DeprMethod;
        CSCombo* DBPercent;
        sidbEdit* ClassLife;
        sidbEdit* Period;
    };

    Side MakeSide(const QString& which, const QString& other, const char* ending);
    static DepreciationSetUp Entered(const Side& side);
    void Change(Prompts& prompts);

    CompanySession& session_;
    AssetSelectionFields selection_;
    silgEdit* silgBook_ = nullptr;
    Side from_{};
    Side to_{};
};

}  // namespace tallymar
