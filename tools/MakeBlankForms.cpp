// Turns the descriptions of blank form pages, data/forms/*.form, into the files that the program shows and prints: a page's PCL
// (.HP) and its fields (.FPF). Run by the build, which a fault in a description ends with a line for each.
//   make_blank_forms SOURCE_FOLDER OUTPUT_FOLDER
//   make_blank_forms --check FILE...

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "forms/BlankForm.h"

namespace {

namespace fs = std::filesystem;
using tallymar::tools::BlankForm;

std::string Contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string contents{std::istreambuf_iterator<char>(file), {}};
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return contents;
}

void Write(const fs::path& path, const std::string& contents) {
    std::ofstream file(path, std::ios::binary);
    file << contents;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::vector<fs::path> Descriptions(const fs::path& folder) {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".form") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    if (paths.empty()) throw std::runtime_error(folder.string() + " holds no description");
    return paths;
}

// The forms of those descriptions that have no fault; the faults go to the error output.
std::vector<BlankForm> Read(std::span<const fs::path> paths, bool& faulty) {
    std::vector<BlankForm> forms;
    for (const fs::path& path : paths) {
        try {
            BlankForm form = tallymar::tools::ReadBlankForm(path.filename().string(), Contents(path));
            const std::vector<std::string> faults = tallymar::tools::FaultsOf(form);
            for (const std::string& fault : faults) std::cerr << fault << '\n';
            faulty |= !faults.empty();
            if (form.Code != path.stem().string()) throw std::runtime_error(path.string() + " describes page " + form.Code);
            forms.push_back(std::move(form));
        } catch (const std::exception& fault) {
            std::cerr << fault.what() << '\n';
            faulty = true;
        }
    }
    return forms;
}

void WriteForms(const std::vector<BlankForm>& forms, const fs::path& folder) {
    fs::create_directories(folder);
    std::set<std::string> written;
    for (const BlankForm& form : forms) {
        Write(folder / (form.Code + ".HP"), tallymar::tools::LaserPage(form));
        Write(folder / (form.Code + ".FPF"), tallymar::tools::FieldRecords(form));
        written.insert({form.Code + ".HP", form.Code + ".FPF"});
    }
    std::vector<fs::path> others;  // of an earlier build
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!written.contains(entry.path().filename().string())) others.push_back(entry.path());
    }
    for (const fs::path& path : others) fs::remove(path);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<fs::path> arguments(argv + 1, argv + argc);
    const bool checkOnly = !arguments.empty() && arguments[0] == "--check";
    if (checkOnly ? arguments.size() < 2 : arguments.size() != 2) {
        std::cerr << "usage: make_blank_forms SOURCE_FOLDER OUTPUT_FOLDER\n       make_blank_forms --check FILE...\n";
        return EXIT_FAILURE;
    }
    try {
        bool faulty = false;
        if (checkOnly) {
            Read(std::span(arguments).subspan(1), faulty);
        } else {
            const std::vector<fs::path> paths = Descriptions(arguments[0]);
            const std::vector<BlankForm> forms = Read(paths, faulty);
            if (!faulty) WriteForms(forms, arguments[1]);
        }
        return faulty ? EXIT_FAILURE : EXIT_SUCCESS;
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
}
