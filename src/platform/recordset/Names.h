#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// Names of tables, fields and indexes compare without regard to the case of A to Z, as SQLite compares them.
namespace tallymar::recordset {

constexpr char FoldNameCharacter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return FoldNameCharacter(x) == FoldNameCharacter(y); });
}

inline std::string FoldName(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldNameCharacter);
    return folded;
}

}  // namespace tallymar::recordset
