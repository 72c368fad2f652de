#pragma once

#include <functional>
#include <string>
#include <string_view>

struct lxw_workbook;
struct lxw_worksheet;

namespace tallymar::sheets {

// An .xlsx on its way: libxlsxwriter writes it row after row, in memory that does not grow, and by name only, so that it lies in
// a file of its own until it is whole. Failures: DiskFull, DeviceError; those of making a temporary file.
class WorkbookFile {
 public:
    WorkbookFile();
    ~WorkbookFile();
    WorkbookFile(const WorkbookFile&) = delete;
    WorkbookFile& operator=(const WorkbookFile&) = delete;

    lxw_workbook* Book() const { return book_; }
    lxw_worksheet* AddSheet(const std::string& name);  // in UTF-8, as a sheet may be called

    // Ends the workbook and hands on the file, in pieces.
    void Finish(const std::function<void(std::string_view)>& write);

    // What a call of the library has come to, an lxw_error.
    static void Check(int error);

 private:
    std::string path_;
    lxw_workbook* book_ = nullptr;
};

}  // namespace tallymar::sheets
