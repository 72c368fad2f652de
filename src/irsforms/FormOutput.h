#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "irsforms/PageSheet.h"

namespace tallymar {

// The files of one run of a form, all in one folder: the pages by their codes and the work files. They are written whole first
// and put in their places together, so that a run that fails leaves every earlier file as it was.
class FormOutput {
 public:
    explicit FormOutput(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // Writes CODE.LDT; a page whose file cannot be opened is passed over.
    void WritePage(const std::string& code, const PageSheet& page);
    // A work file that cannot be opened is a failure of the run.
    void WriteWorkFile(const std::string& name, std::string_view contents);
    void PutInPlace();

    const std::filesystem::path& Folder() const { return folder_; }
    const std::vector<std::string>& Pages() const { return pages_; }      // written, in their order
    const std::vector<std::string>& Skipped() const { return skipped_; }  // passed over

 private:
    std::filesystem::path folder_;
    std::vector<std::unique_ptr<FormFile>> files_;
    std::vector<std::pair<std::filesystem::path, std::unique_ptr<FileReplacement>>> workFiles_;
    std::vector<std::string> pages_;
    std::vector<std::string> skipped_;
};

}  // namespace tallymar
