#pragma once

#include <filesystem>
#include <vector>

#include "interchange/HeadingPairs.h"
#include "interchange/TableFile.h"
#include "interchange/frmExchangeForm.h"

class QScrollArea;
class QStringListModel;

namespace tallymar {

class CSCombo;
class CSOptList;
class frmCounts;

// Imports assets from a spreadsheet or CSV: says what each of its headings stands for, beside the first rows of the file.
class frmSpreadsheetImport : public frmExchangeForm {
    Q_OBJECT

 public:
    // Failures of TablePreview.
    frmSpreadsheetImport(CompanySession& session, const std::filesystem::path& file, bool addNew, QWidget* parent = nullptr);

 protected:
    void OnFieldFocus(QWidget* field) override;

 private:
    QWidget* MakePairs();
    void Fit();
    void Show(const std::vector<HeadingPair>& pairs);
    std::vector<HeadingPair> Pairs() const;
    void CheckAndImport();
    LoadOptions Options(ImportEnding ending) const;

    std::filesystem::path file_;
    TablePreview preview_;
    Headings headings_;
    HeadingPairs remembered_;
    QStringListModel* fields_ = nullptr;  // the choices of every heading: nothing, then the columns of Headings
    std::vector<CSCombo*> cboField_;      // by heading
    CSOptList* optlDuplicate_ = nullptr;
    frmCounts* counts_ = nullptr;
    QScrollArea* area_ = nullptr;
};

}  // namespace tallymar
