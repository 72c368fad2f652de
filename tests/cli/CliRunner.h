#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

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
    CliResult operator()(const std::string& arguments) const {
        const std::string command = "cd '" + folder_.Path().string() + "' && '" TALLYMAR_CLI "' --app-path app " + arguments +
                                    " >out.txt 2>error.txt </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder_ / "out.txt"), ReadText(folder_ / "error.txt")};
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
