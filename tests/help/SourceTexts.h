#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tallymar::test {

// A string literal of a C++ file, with those beside it joined on and its escapes read.
struct SourceText {
    std::string Text;
    std::vector<std::string> Calls;  // whose arguments it stands in, the nearest first, within its statement
};

std::vector<SourceText> TextsOf(const std::filesystem::path& file);

}  // namespace tallymar::test
