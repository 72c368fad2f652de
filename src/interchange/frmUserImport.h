#pragma once

#include <string>

#include "interchange/frmFieldDefinition.h"

namespace tallymar {

// Imports assets from a comma-delimited file whose layout the user lays down here.
class frmUserImport : public frmFieldDefinition {
    Q_OBJECT

 public:
    // book: "Company", "Federal", "State", "Book" or "AMT".
    frmUserImport(CompanySession& session, std::string book, bool addNew, QWidget* parent = nullptr);

 private:
    void Import();

    std::string book_;
    bool addNew_;
};

}  // namespace tallymar
