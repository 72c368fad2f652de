#include "store/AssetColumns.h"

#include <algorithm>

#include "platform/recordset/Names.h"

namespace tallymar {

static_assert(kAssetFileColumns == 28 + 4 * 24, "a column more or less: every file of this release must be upgraded to it");
static_assert(std::is_partitioned(kAssetColumns.begin(), kAssetColumns.end(),
                                  [](const AssetColumn& column) { return !column.IsPerBook(); }),
              "the columns of the books stand after the common ones");
static_assert(std::all_of(kAssetColumns.begin(), kAssetColumns.end(),
                          [](const AssetColumn& column) {
                              return (column.Type() == recordset::FieldType::Text) == (column.Width() != 0);
                          }),
              "every text has its width");

const AssetColumn* FindAssetColumn(std::string_view name) {
    const auto is = [name](const AssetColumn& column) {
        if (!column.IsPerBook()) return recordset::SameName(column.Name, name);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            if (recordset::SameName(ColumnName(column, book), name)) return true;
        }
        return false;
    };
    const auto found = std::find_if(kAssetColumns.begin(), kAssetColumns.end(), is);
    return found != kAssetColumns.end() ? &*found : nullptr;
}

std::string ColumnName(const AssetColumn& column, int book) {
    std::string name(column.Name);
    if (column.IsPerBook()) name += "(" + std::to_string(book) + ")";
    return name;
}

}  // namespace tallymar
