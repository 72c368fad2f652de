#include "irsforms/FormOutput.h"

#include <algorithm>

namespace tallymar {

void FormOutput::WritePage(const std::string& code, const PageSheet& page) {
    auto file = std::make_unique<FormFile>(folder_ / (code + ".LDT"));
    if (!page.Write(*file)) {
        skipped_.push_back(code);
        return;
    }
    // Of two pages of one name the later one stays.
    std::erase_if(files_, [&](const auto& other) { return other->Path() == file->Path(); });
    std::erase(pages_, code);
    files_.push_back(std::move(file));
    pages_.push_back(code);
}

void FormOutput::WriteWorkFile(const std::string& name, std::string_view contents) {
    const std::filesystem::path path = folder_ / name;
    auto file = std::make_unique<FileReplacement>(path);
    file->Write(contents);
    file->Finish();
    std::erase_if(workFiles_, [&](const auto& other) { return other.first == path; });
    workFiles_.emplace_back(path, std::move(file));
}

void FormOutput::PutInPlace() {
    for (const auto& [path, file] : workFiles_) file->PutInPlace();
    for (const auto& file : files_) file->PutInPlace();
}

}  // namespace tallymar
