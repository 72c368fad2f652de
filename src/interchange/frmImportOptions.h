#pragma once

#include "interchange/frmExchangeForm.h"

namespace tallymar {

class CSOptList;
class frmCounts;

// "Import Asset Records": the files of the DOS edition, and the way to layouts of the user's own and to
// spreadsheets.
class frmImportOptions : public frmExchangeForm {
    Q_OBJECT

 public:
    explicit frmImportOptions(CompanySession& session, QWidget* parent = nullptr);

 private:
    void UserImport();
    void SpreadsheetImport();

    CSOptList* optlBook_ = nullptr;
    CSOptList* optlDuplicate_ = nullptr;
    frmCounts* counts_ = nullptr;
};

}  // namespace tallymar
