#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tallymar::test {

inline void WriteAll(const std::filesystem::path& path, std::string_view contents) {
    std::ofstream(path, std::ios::binary) << contents;
}

inline std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tallymar::test
