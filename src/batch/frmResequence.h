#pragma once

#include "batch/frmBatchForm.h"
#include "store/CompanySession.h"

namespace tallymar {

class CSCmdBtn;
class sitxEdit;

// "Resequence Asset Numbers": copies assets into another company, by division and under new numbers if wanted.
class frmResequence : public frmBatchForm {
    Q_OBJECT

 public:
    explicit frmResequence(CompanySession& session, QWidget* parent = nullptr);

 protected:
    void OnFieldFocus(QWidget* field) override;

 private:
    sitxEdit* YesOrNo(const char* name, const char* start);
    void CheckAnswer(sitxEdit* field, const char* reset);
    void ShowCommand();
    void ShowLimit();
    void Resequence(Prompts& prompts);

    CompanySession& session_;
    sitxEdit* sitxDivision_ = nullptr;
    sitxEdit* sitxDepartment_ = nullptr;
    sitxEdit* sitxType_ = nullptr;
    sitxEdit* sitxYN_ = nullptr;
    sitxEdit* sitxIgnoreCase_ = nullptr;
    sitxEdit* sitxResequence_ = nullptr;
    CSCmdBtn* cmdResequence_ = nullptr;
};

}  // namespace tallymar
