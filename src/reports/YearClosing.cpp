#include "reports/YearClosing.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>
#include <vector>

#include "platform/runtime/DateText.h"
#include "platform/runtime/FileName.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/Books.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr const char* kUnproven = ".mdb.part";

fs::path FreeName(const fs::path& folder, const std::string& name) {
    fs::path path = folder / (name + ".mdb");
    for (int number = 2; fs::exists(path); ++number) path = folder / (name + " (" + std::to_string(number) + ").mdb");
    return path;
}

// What a run that died has left of this copy: whoever makes it holds the company's write lock.
void SweepUnproven(const fs::path& folder, const std::string& name) {
    std::error_code error;
    std::vector<fs::path> left;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string file = entry.path().filename().string();
        if (file.starts_with(name) && file.find(kUnproven) != std::string::npos) left.push_back(entry.path());
    }
    for (const fs::path& path : left) fs::remove(path, error);
}

// A name that the power could take with it is no copy.
void FlushFolder(const fs::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

YearClosing::YearClosing(CompanySession& session, int book) : session_(session), book_(book) {}

fs::path YearClosing::CopyCompanyFile() {
    const std::string book(BookOf(book_).Name);
    const std::string company = AsFileName(session_.CompanyName());
    const std::string name = (company.empty() ? "Company" : company) + " " + book + " " +
                             FormatIsoDate(session_.FiscalYearEnd(book_)) + " before closing";
    const fs::path folder = session_.Paths().Backup();
    std::error_code error;
    fs::create_directories(folder, error);
    SweepUnproven(folder, ToUtf8(name));
    const fs::path path = FreeName(folder, ToUtf8(name));
    // It takes its name only when it has been found whole.
    const fs::path unproven = fs::path(path).replace_extension(kUnproven);
    session_.Database().CopyTo(unproven);
    try {
        Verify(unproven);
        fs::rename(unproven, path);
    } catch (const fs::filesystem_error& failure) {
        fs::remove(unproven, error);
        throw PlatformError(Failure::PathAccess, FromUtf8(failure.what()));
    } catch (...) {
        fs::remove(unproven, error);
        throw;
    }
    FlushFolder(folder);
    return path;
}

void YearClosing::Verify(const fs::path& path) {
    recordset::Database copy = recordset::Database::Open(path);
    if (copy.OpenRecordset("Assets").RecordCount() != session_.AssetCount() || copy.OpenRecordset("Company").RecordCount() != 1) {
        throw PlatformError(Failure::UnrecognizedFormat, "The copy of the company file does not hold every asset");
    }
}

void YearClosing::Post(AssetRecord& asset) {
    asset.DateDeprToo[book_] = asset.DateDeprToo[book_].AddYearsWithinMonth(1);
    asset.PrevDepr[book_] += asset.CurrDepr[book_];
    asset.CurrDepr[book_] = CurrencyAmount();
    session_.WriteAssetRecord(asset);
}

void YearClosing::MoveYearEnd() {
    const Date next = session_.FiscalYearEnd(book_).AddYearsWithinMonth(1);
    recordset::Recordset& company = session_.CompanyRecordset();
    company.Edit();
    company.Set(BookOf(book_).YearEndColumn, next);
    company.Update();
}

}  // namespace tallymar
