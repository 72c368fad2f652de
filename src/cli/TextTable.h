#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace tallymar::cli {

// Lines of cells, printed in aligned columns two blanks apart. Cells are Windows-1252 and come out as UTF-8.
class TextTable {
 public:
    enum class Align { Left, Right };

    explicit TextTable(std::vector<Align> columns) : columns_(std::move(columns)) {}

    void AddRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    void Print(std::ostream& out) const;

 private:
    std::vector<Align> columns_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace tallymar::cli
