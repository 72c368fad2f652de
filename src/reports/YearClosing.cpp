#include "reports/YearClosing.h"

#include <string>
#include <system_error>

#include "platform/recordset/DatabaseFiles.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/FileName.h"
#include "platform/runtime/Windows1252.h"
#include "store/Books.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

fs::path FreeName(const fs::path& folder, const std::string& name) {
    fs::path path = folder / (name + ".mdb");
    for (int number = 2; fs::exists(path); ++number) path = folder / (name + " (" + std::to_string(number) + ").mdb");
    return path;
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
    const fs::path path = FreeName(folder, ToUtf8(name));
    recordset::CopyDatabase(session_.Database(), path);
    return path;
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
