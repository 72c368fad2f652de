#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace tallymar::test {

// What a program prints; empty when it cannot be run.
inline std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) return output;
    std::array<char, 4096> part;
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) output.append(part.data(), count);
    pclose(pipe);
    return output;
}

}  // namespace tallymar::test
