#pragma once

#include "batch/ComputeCurrent.h"
#include "batch/frmBatchForm.h"
#include "platform/runtime/PerBook.h"

class QCheckBox;

namespace tallymar {

class HintLine;
class silgEdit;

// "Compute Options": computes the current year for the chosen books and shows the 4th quarter's share of what went into service.
class frmComputeOptions : public frmBatchForm {
    Q_OBJECT

 public:
    frmComputeOptions(CompanySession& session, ADepre& engine, QWidget* parent = nullptr);

 protected:
    void OnFieldFocus(QWidget* field) override;

 private:
    void TakeMonth();
    void Compute(Prompts& prompts);
    void ShowTotals(int book, const InServiceTotals& totals);

    CompanySession& session_;
    ADepre& engine_;
    PerBook<QCheckBox*> chkCompute_;
    PerBook<QCheckBox*> chkUseMQ_;
    PerBook<QLabel*> lblInService_;
    PerBook<QLabel*> lbl4thQtr_;
    PerBook<QLabel*> lblPercent_;
    PerBook<HintLine*> lblAbove_;  // says beside a percentage that it is above 40%
    silgEdit* silgMonth_ = nullptr;
};

}  // namespace tallymar
