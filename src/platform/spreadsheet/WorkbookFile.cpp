#include "platform/spreadsheet/WorkbookFile.h"

#include <unistd.h>
#include <xlsxwriter.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>
#include <vector>

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/InputFile.h"

namespace tallymar::sheets {

void WorkbookFile::Check(int error) {
    if (error == LXW_NO_ERROR) return;
    const bool full = error == LXW_ERROR_CREATING_TMPFILE || error == LXW_ERROR_ZIP_FILE_OPERATION;
    throw PlatformError(full && errno == ENOSPC ? Failure::DiskFull : Failure::DeviceError,
                        std::string("The workbook could not be written: ") + lxw_strerror(static_cast<lxw_error>(error)));
}

WorkbookFile::WorkbookFile() : path_((std::filesystem::temp_directory_path() / "tallymar-XXXXXX").string()) {
    const int descriptor = mkstemp(path_.data());
    if (descriptor < 0) throw FileFailure(errno, path_);
    close(descriptor);
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(path_.c_str(), &options);
    if (book_ != nullptr) return;
    unlink(path_.c_str());
    Check(LXW_ERROR_CREATING_TMPFILE);
}

WorkbookFile::~WorkbookFile() {
    if (book_ != nullptr) workbook_close(book_);
    unlink(path_.c_str());
}

lxw_worksheet* WorkbookFile::AddSheet(const std::string& name) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, name.c_str());
    if (sheet == nullptr) Check(LXW_ERROR_MEMORY_MALLOC_FAILED);
    return sheet;
}

void WorkbookFile::Finish(const std::function<void(std::string_view)>& write) {
    Check(workbook_close(std::exchange(book_, nullptr)));
    InputFile file(path_);
    std::vector<char> piece(1 << 16);
    while (const std::size_t count = file.Read(piece.data(), piece.size())) write({piece.data(), count});
}

}  // namespace tallymar::sheets
