#pragma once

#include <string>
#include <string_view>

#include "platform/recordset/Recordset.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/PerBook.h"

namespace tallymar {

// The company row as its form shows and changes it.
struct CompanyProfile {
    std::string Company;
    std::string LastName;
    std::string FirstName;
    std::string Address1;
    std::string Address2;
    std::string City;
    std::string State;
    std::string ZipCode;
    std::string Id;
    std::string Telephone;
    Date BeginDate;
    PerBook<Date> FiscalYearEnd;
    bool Round = false;

    // Reads the row, which is added when the table has none. A state code that stands at the end of the city, as files of the DOS
    // edition have it, is taken from there.
    static CompanyProfile LoadEdit(recordset::Recordset& company);
    // Writes every column. On a failure the row is as it was.
    void Save(recordset::Recordset& company) const;
};

// Entering the year end of book 2, 3 or 4: does the field take the Federal year end's text? Only while a new company's first
// profile is on screen, and only where no date stands.
bool TakesFederalYearEnd(bool newCompanyPending, std::string_view text);

// "Year ends 12/31/2003", by book where they differ: "Year ends Federal, Book 12/31/2003; State, AMT 6/30/2004".
// Empty when none is set.
std::string YearEndsText(const PerBook<Date>& yearEnds);

}  // namespace tallymar
