#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/TableDef.h"

namespace tallymar {

// What the columns of Assets are called where people write tables. A column has its name in the company file ("Basis(1)") and the
// label of its field on the asset form, of a book's field with the book before it: "Federal Asset Cost", "AMT Convention". Where
// a label stands more than once its frame goes before it too: "State Tax Credit Amount", "Sale Amount". Only letters and digits
// count, in any case. All texts are Windows-1252.
class Headings {
 public:
    explicit Headings(const recordset::TableDef& assets);

    // The columns that a heading may mean: none when it is not known, more when it does not tell which.
    std::vector<std::string> Named(std::string_view heading) const;
    // The clearest names of the columns that a heading which does not tell may mean, of the books only the first.
    std::vector<std::string> LabelsLike(std::string_view heading) const;
    // What somebody who has written this heading most likely means, a field of a book without its book being Federal; empty when
    // there is nothing to go by.
    std::string Guess(std::string_view heading) const;
    // What a column is called before its user: the clearest of its names.
    std::string LabelOf(std::string_view column) const;

    // Of the columns with a field on the form in the form's order, then of the others as the file has them.
    const std::vector<std::string>& Columns() const { return columns_; }

 private:
    void AddField(std::string_view column, const std::vector<std::string>& names);

    const recordset::TableDef& assets_;
    std::vector<std::string> columns_;
    std::multimap<std::string, std::string, std::less<>> byName_;  // the name's letters and digits
    std::map<std::string, std::string, std::less<>> labels_;       // by column
};

}  // namespace tallymar
