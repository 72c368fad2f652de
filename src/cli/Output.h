#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/runtime/FileReplacement.h"

// Where the results of a command go.
namespace tallymar::cli {

// "-" names standard output.
bool IsStandardOutput(const std::filesystem::path& output);

// Refuses, before a command has begun, an output that it could not write or that would harm what it reads: the company's own
// file under whatever name, a folder, a pipe, a device, a place that cannot be written.
void RequireOutput(const std::filesystem::path& output, const std::filesystem::path& company);

// A text result that is written as it comes: to standard output, or to a file that appears whole when it is finished.
class TextOutput {
 public:
    explicit TextOutput(const std::filesystem::path& output);

    void Write(std::string_view text);
    // The two steps of a FileReplacement; standard output has no place to be put in.
    void Finish();
    void PutInPlace();

 private:
    std::optional<FileReplacement> file_;  // none: standard output
};

// Calls print(write) and gives standard output what it writes. A pipe or a terminal gets it when all of it is there, from a file
// of its own meanwhile: whoever reads a long result page by page must not hold up the company that it comes from.
void PrintWhole(const std::function<void(const std::function<void(std::string_view)>& write)>& print);

// What has been printed is handed on; a full disk and the like fail with the name of standard output.
void FlushStandardOutput();

}  // namespace tallymar::cli
