#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// A column of one of a form's tables: its name and where a row keeps it. The work file, the data for a tax package and the pages
// all go by these.
template <typename Row>
struct RowColumn {
    std::string_view Name;
    std::variant<std::string Row::*, CurrencyAmount Row::*> Cell;
};

// The work file of a form: items separated by commas, texts in double quotes (a quote within one is doubled), amounts as
// decimals. Writing and reading go through the same calls in the same order: an Item takes its value from the form, or gives it
// one.
class WorkFile {
 public:
    WorkFile() = default;                      // writes
    explicit WorkFile(std::string_view read);  // reads

    bool Reads() const { return reads_; }
    void Item(std::string& text);
    void Item(CurrencyAmount& amount);
    void EndLine();

    void Line(auto& item) {
        Item(item);
        EndLine();
    }
    // So many rows, a line each; those beyond the table's are empty. Reading drops the empty ones at the end.
    template <typename Row>
    void Rows(std::vector<Row>& rows, std::span<const RowColumn<Row>> columns, std::size_t count) {
        if (reads_) rows.assign(count, Row());
        std::size_t used = 0;
        for (std::size_t i = 0; i < count; ++i) {
            Row row = i < rows.size() ? rows[i] : Row();
            for (const RowColumn<Row>& column : columns) {
                std::visit([&](auto member) { Item(row.*member); }, column.Cell);
            }
            EndLine();
            if (!reads_) continue;
            if (row != Row()) used = i + 1;
            rows[i] = std::move(row);
        }
        if (reads_) rows.resize(used);
    }

    const std::string& Written() const { return text_; }

 private:
    // Failure::InputPastEnd when the file has no further item, Failure::TypeMismatch when it is of another kind.
    void Separate();

    bool reads_ = false;
    bool lineBegun_ = false;
    std::string text_;
    std::size_t position_ = 0;
};

}  // namespace tallymar
