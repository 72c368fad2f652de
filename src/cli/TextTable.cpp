#include "cli/TextTable.h"

#include <algorithm>
#include <ostream>

#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

void TextTable::Print(std::ostream& out) const {
    std::vector<std::size_t> widths(columns_.size());
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    for (const auto& row : rows_) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - row[i].size(), ' ');
            if (i != 0) line += "  ";
            line += columns_[i] == Align::Right ? padding + row[i] : row[i] + padding;
        }
        out << ToUtf8(RTrim(line)) << '\n';
    }
}

}  // namespace tallymar::cli
