#pragma once

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace tallymar {

// What the program did, line by line, for whoever looks for a fault: milliseconds since the start, the subject, what happened.
// main() owns it and hands it down; where there is none, nothing is formed and nothing is looked at. Company data stands in it.
class Trace {
 public:
    // "-" is standard error; a file begins anew. Failures as FileFailure.
    explicit Trace(const std::filesystem::path& path);
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    void Line(std::string_view subject, std::string_view text);

 private:
    std::FILE* file_;
    std::chrono::steady_clock::time_point start_;
};

// None for an empty path.
std::unique_ptr<Trace> OpenTrace(const std::filesystem::path& path);

}  // namespace tallymar
