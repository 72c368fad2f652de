#include "batch/SetBooks.h"

#include "batch/ChangeAssets.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

bool Selects(std::string_view filter, std::string_view field) {
    const std::string_view wanted = RTrim(filter);
    return wanted.empty() || wanted == RTrim(field);
}

// COMPAT: DeprLimit stays as it was in the target: it is the limit that applied to the year that book last computed.
void CopyBook(AssetRecord& record, int from, int to) {
    VisitBookMembers([&](const AssetColumn& column, auto member) {
        if (&column != &ColumnOf(&AssetRecord::DeprLimit)) (record.*member)[to] = (record.*member)[from];
    });
}

}  // namespace

std::int64_t SetBooks(CompanySession& session, const SetBooksOptions& options, Prompts& prompts) {
    RequireBook(options.FromBook, "From Which Book");
    if (options.ToBook > kLastBook) throw PlatformError(Failure::InvalidCall, "To Which Book must be 0 thru 4");
    const int firstTarget = options.FromBook == 1 ? 2 : 1;
    return ChangeAssets(session, prompts, [&](AssetRecord& record) {
        if (!SelectsYear(options.Year) || !Selects(options.Division, record.Division.View()) ||
            !Selects(options.Department, record.Department.View())) {
            return false;
        }
        if (options.ToBook > 0) CopyBook(record, options.FromBook, options.ToBook);
        if (options.ToBook == 0) {
            for (int book = firstTarget; book <= kLastBook; ++book) CopyBook(record, options.FromBook, book);
        }
        return true;
    });
}

}  // namespace tallymar
