#pragma once

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace tallymar::test {

struct CliResult {
    int ExitStatus = -1;
    std::string Out;
    std::string Error;
};

inline std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Runs the real command line tool in a folder of its own, its application folder beside the company files.
class CliRunner {
 public:
    // out: where the shell sends standard output; ">name" appends.
    CliResult operator()(const std::string& arguments, const std::string& out = "out.txt") const {
        const std::string command = "cd '" + folder_.Path().string() + "' && '" TALLYMAR_CLI "' --app-path app " + arguments +
                                    " >" + out + " 2>error.txt </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder_ / "out.txt"), ReadText(folder_ / "error.txt")};
    }

    // A call that does what it was told, with nothing to say against it. What it printed.
    std::string Good(const std::string& arguments) const {
        const CliResult result = (*this)(arguments);
        EXPECT_EQ(result.ExitStatus, 0) << arguments << ": " << result.Error;
        EXPECT_EQ(result.Error, "") << arguments;
        return result.Out;
    }

    // A call that fails: one clear line on standard error, status 1, nothing printed. The line.
    std::string Bad(const std::string& arguments) const {
        const CliResult result = (*this)(arguments);
        EXPECT_EQ(result.ExitStatus, 1) << arguments;
        EXPECT_EQ(result.Out, "") << arguments;
        EXPECT_EQ(std::count(result.Error.begin(), result.Error.end(), '\n'), 1) << result.Error;
        return result.Error;
    }

    void Write(const std::string& name, const std::string& contents) const {
        std::ofstream(folder_ / name, std::ios::binary) << contents;
    }
    std::string Read(const std::string& name) const { return ReadText(folder_ / name); }
    const std::filesystem::path& Folder() const { return folder_.Path(); }

 private:
    TempFolder folder_;
};

}  // namespace tallymar::test
