#include "interchange/UserExport.h"

#include <array>
#include <utility>
#include <vector>

#include "interchange/DosExchange.h"
#include "interchange/UserImport.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using R = AssetRecord;
using Item = std::string (*)(const AssetRecord& asset, int book);

std::string NewOrUsed(const AssetRecord& asset, int) {
    const std::string_view text = asset.NewUsed.View();
    return std::string(text == "N" ? "NEW" : text == "U" ? "USED" : text);
}

std::string WholeDescription(const AssetRecord& asset, int) {
    return std::string(RTrim(asset.Description + asset.Descrip2));
}

std::string RemainingBasis(const AssetRecord& asset, int book) {
    return (asset.Basis[book] - asset.Salvage[book] - asset.Section179[book]).ToText();
}

template <auto Member>
std::string Fixed(const AssetRecord& asset, int) {
    return std::string((asset.*Member).Trimmed());
}
template <auto Member>
std::string Trimmed(const AssetRecord& asset, int) {
    return std::string(RTrim(asset.*Member));
}
template <auto Member>
std::string Plain(const AssetRecord& asset, int) {
    return asset.*Member;
}
template <auto Member>
std::string DateOf(const AssetRecord& asset, int) {
    return ExportDate(asset.*Member);
}
template <auto Member>
std::string Amount(const AssetRecord& asset, int) {
    return (asset.*Member).ToText();
}
template <auto Member>
std::string Flag(const AssetRecord& asset, int) {
    return std::string(YesOrNo(asset.*Member));
}
template <auto Member>
std::string BookAmount(const AssetRecord& asset, int book) {
    return (asset.*Member)[book].ToText();
}
template <auto Member>
std::string BookFlag(const AssetRecord& asset, int book) {
    return std::string(YesOrNo((asset.*Member)[book]));
}

struct ExportField {
    int Box;
    Item Text;
};

// In the order in which the fields of one position are written.
constexpr auto kFields = std::to_array<ExportField>({
    {1, Fixed<&R::AssetNum>},
    {2, Fixed<&R::Division>},
    {3, Fixed<&R::Department>},
    {4, WholeDescription},
    {5, Trimmed<&R::SerialNum>},
    {6, Trimmed<&R::AccountNum>},
    {7, DateOf<&R::Purchased>},
    {8, DateOf<&R::InService>},
    {9, DateOf<&R::DateSold>},
    {10, [](const R& asset, int book) { return ExportDate(asset.DateDeprToo[book]); }},
    {11, Plain<&R::CodeSection>},
    {12, NewOrUsed},
    {13, Plain<&R::AssetType>},
    {14, [](const R& asset, int book) { return std::string(DeprTypeCode(asset.DeprType[book])); }},
    {15, [](const R& asset, int book) { return std::string(DeprMethodCode(asset.DeprMethod[book])); }},
    {16, Amount<&R::BusinessUse>},
    {17, Amount<&R::ClassLife>},
    {18, BookAmount<&R::Period>},
    {19, BookAmount<&R::Basis>},
    {20, RemainingBasis},
    {21, BookAmount<&R::Salvage>},
    {22, BookAmount<&R::PrevDepr>},
    {23, BookAmount<&R::CurrDepr>},
    {24, BookAmount<&R::Section179>},
    {25, BookAmount<&R::DeprLimit>},
    {26, Amount<&R::SoldAmount>},
    {27, Amount<&R::SoldExpense>},
    {28, BookAmount<&R::TaxCredit>},
    {28, BookAmount<&R::TaxCreditUsed>},
    {30, [](const R& asset, int book) { return std::to_string(asset.DBPercent[book]); }},
    {31, BookFlag<&R::Auto>},
    {32, BookFlag<&R::Listed>},
    {33, [](const R& asset, int book) { return asset.IRSConvUsed[book].ToString(); }},
    {34, Flag<&R::Abandoned>},
    {35, Flag<&R::Casualty>},
    {36, Flag<&R::LikeKind>},
    {37, Flag<&R::Sold>},
    {38, Amount<&R::FairMktValue>},
    {39, BookFlag<&R::Agri>},
    {40, BookAmount<&R::AddlDepr>},
});

// The fields of a record in the order in which they are written, each with what ends it.
std::vector<std::pair<Item, std::string_view>> RecordLayout(const FieldDefinition& definition) {
    std::vector<std::pair<Item, std::string_view>> layout;
    const int count = definition.FieldCount();
    for (int position = 1; position <= FieldDefinition::kFields; ++position) {
        for (const ExportField& field : kFields) {
            if (definition.Position(field.Box) == position) layout.emplace_back(field.Text, count > position ? "," : "\r\n");
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
    return WriteAssets(session, options, assets, prompts, [&](const AssetRecord& asset, std::string& line) {
        for (const auto& [text, end] : layout) line.append(text(asset, book)).append(end);
    });
}

}  // namespace tallymar
