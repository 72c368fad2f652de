#pragma once

#include <string>

#include "reports/Reports.h"
#include "reports/frmDocumentForm.h"

class QGroupBox;

namespace tallymar {

class CSChkList;
class sidtEdit;
class sitxEdit;

// The one form of every columnar report. A new one is made for each report and unloads itself when the report has run.
class frmReportOptions : public frmDocumentForm {
    Q_OBJECT

 public:
    frmReportOptions(CompanySession& session, ADepre& engine, QWidget* parent = nullptr);

    // The number of the report, set before the form is shown.
    int WhichReport() const { return options_.ReportNumber; }
    void SetWhichReport(int reportNumber);

    // The post report, ready to close the year.
    void ReadyToCloseYear();
    // What a posting has done and where the company stands as it was before: to be said when the form has gone. Empty for what
    // posts nothing.
    const std::string& Posted() const { return posted_; }

 protected:
    void OnFieldFocus(QWidget* field) override;

 private:
    QWidget* MakeFilter();
    QWidget* MakeReportDate();
    void ShowReportName();
    void TakeMiscellaneous();
    void ShowCaution(const QString& caution);
    ReportOptions OptionsOfControls() const;
    void Ok() override;
    void Run(const ReportFilter& filter);

    CompanySession& session_;
    ADepre& engine_;
    ReportOptions options_;  // of the runs that were refused, the flags that stay
    QString caution_;        // stands in the status line where no field has a hint

    QLabel* lblReportName_ = nullptr;
    QLabel* lblFilter_ = nullptr;
    CSOptList* optlBook_ = nullptr;
    CSOptList* optlSequence_ = nullptr;
    CSChkList* chklPrintPY_ = nullptr;
    CSChkList* chklMiscellaneous_ = nullptr;
    sidtEdit* sidtReportDate_ = nullptr;
    sitxEdit* sitxDivision_ = nullptr;
    sitxEdit* sitxDepartment_ = nullptr;
    sitxEdit* sitxCodeSection_ = nullptr;
    sidtEdit* sidtYStart_ = nullptr;
    sidtEdit* sidtYEnd_ = nullptr;
    std::string posted_;
};

}  // namespace tallymar
