#pragma once

#include "batch/ComputeCurrent.h"
#include "platform/controls/CSForm.h"
#include "platform/runtime/PerBook.h"

class QCheckBox;
class QProgressBar;

namespace tallymar {

class CSCmdBtn;
class silgEdit;

// "Compute Options": computes the current year for the chosen books and shows the 4th quarter's share of what went into service.
class frmComputeOptions : public CSForm {
    Q_OBJECT

 public:
    frmComputeOptions(CompanySession& session, ADepre& engine, QWidget* parent = nullptr);

 signals:
    void Computing();  // the run is about to begin: who has changes of an asset on screen must save them now

 protected:
    void OnFieldFocus(QWidget* field) override;

 private:
    void TakeMonth();
    void Compute();

    CompanySession& session_;
    ADepre& engine_;
    PerBook<QCheckBox*> chkCompute_;
    PerBook<QCheckBox*> chkUseMQ_;
    PerBook<QLabel*> lblInService_;
    PerBook<QLabel*> lbl4thQtr_;
    PerBook<QLabel*> lblPercent_;
    silgEdit* silgMonth_ = nullptr;
    QProgressBar* progressBar_ = nullptr;
    CSCmdBtn* cmdOK_ = nullptr;
};

}  // namespace tallymar
