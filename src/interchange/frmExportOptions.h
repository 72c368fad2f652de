#pragma once

#include "interchange/AssetExport.h"
#include "interchange/frmExchangeForm.h"

namespace tallymar {

class CSOptList;
class frmCounts;
class sitxEdit;

// "Export Asset Records": the files of the DOS edition, and the way to layouts of the user's own.
class frmExportOptions : public frmExchangeForm {
    Q_OBJECT

 public:
    explicit frmExportOptions(CompanySession& session, QWidget* parent = nullptr);

 private:
    ExportOptions Options() const;
    void Export();

    CSOptList* optlBook_ = nullptr;
    frmCounts* counts_ = nullptr;
    sitxEdit* sitxEditYear_ = nullptr;
    sitxEdit* sitxEditDivision_ = nullptr;
    sitxEdit* sitxEditDepartment_ = nullptr;
};

}  // namespace tallymar
