#include "interchange/AssetExport.h"

#include "interchange/ExchangeBook.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Val.h"
#include "store/AssetPass.h"
#include "store/Helpers.h"

namespace tallymar {

Date ExportYearEnd(CompanySession& session, std::string_view book) {
    const int number = ExchangeBook(book);
    const Date yearEnd = session.FiscalYearEnd(number == 0 ? kFirstBook : number);
    if (yearEnd != Date()) return yearEnd;
    throw PlatformError(Failure::InvalidCall, "Invalid fiscal year-end date for selected book\nPlease use company setup options");
}

ExportCounts WriteAssets(CompanySession& session, const ExportOptions& options, const std::filesystem::path& path,
                         Prompts& prompts, const std::function<int()>& book,
                         const std::function<void(const ExportedAsset& asset, std::string& line)>& line) {
    const recordset::ReadSnapshot snapshot(session.Database());  // what others save meanwhile is for the next export
    const Date yearEnd = ExportYearEnd(session, options.Book);
    RequireApart(path, session.DatabaseFileName());
    RequireOrdinaryOutput(path);
    FileReplacement file(path);
    ExportCounts counts;
    std::string text;
    AssetRecord asset;
    const StoredTexts stored(session.AssetsRecordset());
    AssetPass(session, prompts).ForEach(asset, [&] {
        const int itsBook = book();
        ++counts.Total;
        if (!options.Year.empty() && Val(options.Year) != YearsAndMonths(asset.InService, yearEnd).Years) return;
        const bool isElsewhere = (!options.Division.empty() && options.Division != asset.Division.Trimmed()) ||
                                 (!options.Department.empty() && options.Department != asset.Department.Trimmed());
        if (isElsewhere) {
            ++counts.NotExported;
            return;
        }
        ++counts.Exported;
        text.clear();
        line({.Record = asset, .Stored = stored, .Book = itsBook}, text);
        file.Write(text);
    });
    file.Commit();
    return counts;
}

std::string ExportDate(Date date) {
    std::string text = FormatShortDate(date);
    if (text.starts_with("12:00")) text.clear();
    return text;
}

}  // namespace tallymar
