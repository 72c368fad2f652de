#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "interchange/CsvReader.h"

namespace tallymar::test {

inline const std::filesystem::path kTableFolder = std::filesystem::path(TALLYMAR_BINARY_DIR) / "share/tallymar";

inline std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(in), {}};
}

// A CSV that accountants read and write, as rows by the names of the header.
inline std::vector<std::map<std::string, std::string>> ReadTable(const std::filesystem::path& path) {
    CsvReader reader(path);
    std::vector<TableField> header;
    std::vector<TableField> cells;
    std::vector<std::map<std::string, std::string>> rows;
    reader.ReadRow(header);
    while (reader.ReadRow(cells)) {
        auto& row = rows.emplace_back();
        for (std::size_t i = 0; i < header.size(); ++i) row[header[i].Text] = cells.at(i).Text;
    }
    return rows;
}

}  // namespace tallymar::test
