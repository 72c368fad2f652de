#include "interchange/ExportItems.h"

#include <array>

#include "interchange/AssetExport.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using R = AssetRecord;
using A = ExportedAsset;
using Text = ExportItem::Text;

std::string NewOrUsed(const A& asset, const char* forNew, const char* forUsed) {
    std::string text = asset.Stored.NewUsed();
    return text.starts_with('N') ? forNew : text.starts_with('U') ? forUsed : text;
}

std::string RemainingBasis(const A& asset) {
    const R& record = asset.Record;
    return (record.Basis[asset.Book] - record.Salvage[asset.Book] - record.Section179[asset.Book]).ToText();
}

template <auto Member>
std::string Fixed(const A& asset) {
    return std::string((asset.Record.*Member).Trimmed());
}
template <auto Member>
std::string Trimmed(const A& asset) {
    return std::string(RTrim(asset.Record.*Member));
}
template <auto Member>
std::string Plain(const A& asset) {
    return asset.Record.*Member;
}
template <auto Member>
std::string DateOf(const A& asset) {
    return ExportDate(asset.Record.*Member);
}
template <auto Member>
std::string Amount(const A& asset) {
    return (asset.Record.*Member).ToText();
}
template <auto Member>
std::string Flag(const A& asset) {
    return std::string(YesOrNo(asset.Record.*Member));
}
template <auto Member>
std::string BookAmount(const A& asset) {
    return (asset.Record.*Member)[asset.Book].ToText();
}
template <auto Member>
std::string BookFlag(const A& asset) {
    return std::string(YesOrNo((asset.Record.*Member)[asset.Book]));
}

constexpr ExportItem Same(int box, Text text) {
    return {box, text, text};
}

constexpr auto kItems = std::to_array<ExportItem>({
    {1, [](const A& asset) { return asset.Stored.AssetNum(); }, Fixed<&R::AssetNum>},
    Same(2, Fixed<&R::Division>),
    Same(3, Fixed<&R::Department>),
    {4, Plain<&R::Description>,
     [](const A& asset) { return std::string(RTrim(asset.Record.Description + asset.Record.Descrip2)); }},
    {5, Plain<&R::SerialNum>, Trimmed<&R::SerialNum>},
    {6, Plain<&R::AccountNum>, Trimmed<&R::AccountNum>},
    Same(7, DateOf<&R::Purchased>),
    Same(8, DateOf<&R::InService>),
    Same(9, DateOf<&R::DateSold>),
    Same(10, [](const A& asset) { return ExportDate(asset.Record.DateDeprToo[asset.Book]); }),
    Same(11, [](const A& asset) { return asset.Stored.CodeSection(); }),
    {12, [](const A& asset) { return NewOrUsed(asset, "New", "Used"); },
     [](const A& asset) { return NewOrUsed(asset, "NEW", "USED"); }},
    Same(13, Plain<&R::AssetType>),
    Same(14, [](const A& asset) { return std::string(DeprTypeCode(asset.Record.DeprType[asset.Book])); }),
    Same(15, [](const A& asset) { return std::string(DeprMethodCode(asset.Record.DeprMethod[asset.Book])); }),
    Same(16, Amount<&R::BusinessUse>),
    Same(17, Amount<&R::ClassLife>),
    Same(18, BookAmount<&R::Period>),
    Same(19, BookAmount<&R::Basis>),
    Same(20, RemainingBasis),
    Same(21, BookAmount<&R::Salvage>),
    Same(22, BookAmount<&R::PrevDepr>),
    Same(23, BookAmount<&R::CurrDepr>),
    Same(24, BookAmount<&R::Section179>),
    Same(25, BookAmount<&R::DeprLimit>),
    Same(26, Amount<&R::SoldAmount>),
    Same(27, Amount<&R::SoldExpense>),
    Same(28, BookAmount<&R::TaxCredit>),
    Same(28, BookAmount<&R::TaxCreditUsed>),  // box 29 places nothing
    Same(30, [](const A& asset) { return std::to_string(asset.Record.DBPercent[asset.Book]); }),
    Same(31, BookFlag<&R::Auto>),
    Same(32, BookFlag<&R::Listed>),
    Same(33, [](const A& asset) { return asset.Stored.IRSConvUsed(asset.Book); }),
    Same(34, Flag<&R::Abandoned>),
    Same(35, Flag<&R::Casualty>),
    Same(36, Flag<&R::LikeKind>),
    Same(37, Flag<&R::Sold>),
    Same(38, Amount<&R::FairMktValue>),
    Same(39, BookFlag<&R::Agri>),
    Same(40, BookAmount<&R::AddlDepr>),
});

}  // namespace

StoredTexts::StoredTexts(recordset::Recordset& assets)
    : assets_(assets),
      assetNum_(assets.Ordinal(ColumnOf(&R::AssetNum).Name)),
      codeSection_(assets.Ordinal(ColumnOf(&R::CodeSection).Name)),
      newUsed_(assets.Ordinal(ColumnOf(&R::NewUsed).Name)) {
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        irsConvUsed_[book] = assets.Ordinal(ColumnName(ColumnOf(&R::IRSConvUsed), book));
    }
}

std::span<const ExportItem> ExportItems() {
    return kItems;
}

}  // namespace tallymar
