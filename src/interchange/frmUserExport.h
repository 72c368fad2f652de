#pragma once

#include "interchange/AssetExport.h"
#include "interchange/frmFieldDefinition.h"

namespace tallymar {

// Exports assets to a comma-delimited file whose layout the user lays down here.
class frmUserExport : public frmFieldDefinition {
    Q_OBJECT

 public:
    frmUserExport(CompanySession& session, ExportOptions options, QWidget* parent = nullptr);

 protected:
    void BeforeSave() override { CheckPositions(); }

 private:
    void Export();

    ExportOptions options_;
};

}  // namespace tallymar
