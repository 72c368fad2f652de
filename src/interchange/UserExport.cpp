#include "interchange/UserExport.h"

#include <utility>
#include <vector>

#include "interchange/DosExchange.h"
#include "interchange/ExchangeBook.h"
#include "interchange/ExportItems.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

// The fields of a record in the order in which they are written, each with what ends it.
std::vector<std::pair<ExportItem::Text, std::string_view>> RecordLayout(const FieldDefinition& definition) {
    std::vector<std::pair<ExportItem::Text, std::string_view>> layout;
    const int count = definition.FieldCount();
    for (int position = 1; position <= FieldDefinition::kFields; ++position) {
        for (const ExportItem& item : ExportItems()) {
            if (definition.Position(item.Box) == position) layout.emplace_back(item.OwnText, count > position ? "," : "\r\n");
        }
    }
    return layout;
}

}  // namespace

std::string UserExportDoneText(const ExportCounts& counts) {
    return "Total Assets = " + Format(static_cast<long long>(counts.Total), pictures::kCount) +
           "    Assets exported = " + Format(static_cast<long long>(counts.Exported), pictures::kCount);
}

ExportCounts UserExport(CompanySession& session, const FieldDefinition& definition, const ExportOptions& options,
                        const std::filesystem::path& file, Prompts& prompts) {
    const auto layout = RecordLayout(definition);
    const int chosen = ExchangeBook(options.Book);
    const int book = chosen == 0 ? kFirstBook : chosen;
    std::filesystem::path assets = file;
    if (chosen == 0) {
        ExportYearEnd(session, options.Book);
        assets = AssetFileOf(file);
        if (assets.empty()) throw PlatformError(Failure::BadFileName, "The name of a company file must hold ASSETCTL");
        WriteCompanyFile(session, file);
    }
    return WriteAssets(
        session, options, assets, prompts, [&] { return book; },
        [&](const ExportedAsset& asset, std::string& line) {
            for (const auto& [text, end] : layout) line.append(text(asset)).append(end);
        });
}

}  // namespace tallymar
