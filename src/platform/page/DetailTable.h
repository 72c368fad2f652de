#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar {

// What a column of the table holds; it decides how its cells are written.
enum class DetailKind : std::uint8_t { Text, Date, Integer, Money };

struct DetailColumn {
    std::string Heading;  // Windows-1252, one line
    DetailKind Kind = DetailKind::Text;
    // Columns of kind Integer and Money: the spreadsheet's number picture; empty is "0" and "#,##0.00".
    std::string Picture = {};
    bool Summed = false;  // has a total under it; amounts only
};

// One cell. std::monostate is an empty one, which every kind of column may hold.
using DetailCell = std::variant<std::monostate, std::string, Date, std::int64_t, CurrencyAmount>;

// The detail rows of a report as data, for a spreadsheet: what the report printed, untouched by clipping, pictures and page
// breaks.
class DetailTable {
 public:
    std::string Title;     // of the worksheet; may be empty
    std::string Subtitle;  // what a reader must know of all rows ("Year end 12/31/2003, report date 3/05/2004"); may be empty

    void AddColumn(std::string_view heading, DetailKind kind, std::string_view picture = {}, bool summed = false);
    const std::vector<DetailColumn>& Columns() const { return columns_; }

    // A row begins, and its cells follow from left to right; cells left out are empty. A cell beyond the last column fails with
    // SubscriptOutOfRange, one of another kind than its column with TypeMismatch (an integer in a money column is money).
    void AddRow();
    void Add(std::string_view text);
    void Add(Date date);  // date 0 is a cell like another: the spreadsheet shows it as empty, being no date
    void Add(std::int64_t number);
    void Add(int number) { Add(std::int64_t{number}); }
    void Add(CurrencyAmount amount);
    void AddEmpty();

    std::size_t RowCount() const { return rows_; }
    const DetailCell& Cell(std::size_t row, std::size_t column) const { return cells_.at(row * columns_.size() + column); }

 private:
    DetailCell& Next(DetailKind kind);

    std::vector<DetailColumn> columns_;
    std::vector<DetailCell> cells_;
    std::size_t rows_ = 0;
    std::size_t next_ = 0;
};

}  // namespace tallymar
