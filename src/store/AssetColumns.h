#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/recordset/TableDef.h"
#include "platform/runtime/PlatformError.h"
#include "store/AssetRecord.h"

// The columns of the asset as one table: the schema of a company file and its upgrade, the record's way in and out of a row, the
// asset form and every exchange of data read it. A new column is one row here, its member in AssetRecord, and a control.
namespace tallymar {

// Where a column's value stands in the record.
using AssetMember =
    std::variant<FixedText<1> AssetRecord::*, FixedText<6> AssetRecord::*, FixedText<16> AssetRecord::*,
                 std::string AssetRecord::*, Date AssetRecord::*, CurrencyAmount AssetRecord::*, std::int16_t AssetRecord::*,
                 bool AssetRecord::*, PerBook<FixedText<1>> AssetRecord::*, PerBook<Date> AssetRecord::*,
                 PerBook<CurrencyAmount> AssetRecord::*, PerBook<std::int16_t> AssetRecord::*, PerBook<bool> AssetRecord::*>;

namespace detail {

// What one column holds: T for a common column, T for each book of a PerBook<T>.
template <typename Item>
struct ColumnItem {
    using Type = Item;
    static constexpr bool IsPerBook = false;
};
template <typename Item>
struct ColumnItem<PerBook<Item>> {
    using Type = Item;
    static constexpr bool IsPerBook = true;
};

template <typename Item>
struct TextWidth : std::integral_constant<int, 0> {};
template <std::size_t N>
struct TextWidth<FixedText<N>> : std::integral_constant<int, static_cast<int>(N)> {};

template <typename Item>
constexpr recordset::FieldType FieldTypeOf() {
    using recordset::FieldType;
    if constexpr (std::is_same_v<Item, Date>) return FieldType::Date;
    if constexpr (std::is_same_v<Item, CurrencyAmount>) return FieldType::Currency;
    if constexpr (std::is_same_v<Item, std::int16_t>) return FieldType::Integer;
    if constexpr (std::is_same_v<Item, bool>) return FieldType::Boolean;
    return FieldType::Text;
}

template <typename Visit>
constexpr auto VisitItem(const AssetMember& member, Visit visit) {
    return std::visit([visit]<typename Item>(Item AssetRecord::*) { return visit(ColumnItem<Item>{}); }, member);
}

}  // namespace detail

struct AssetColumn {
    std::string_view Name;  // a column of the books has the book's number after it in the file: "Basis(1)"
    AssetMember Member;
    int StringWidth = 0;  // of a std::string; a FixedText has its own
    // 0: in files of the first release; else the step that brings a file up to date with it (Schema.cpp has the others).
    int AddedBy = 0;
    int AddedWidth = 0;  // the width that a file brought up to date has; 0: the same

    constexpr bool IsPerBook() const {
        return detail::VisitItem(Member, [](auto item) { return decltype(item)::IsPerBook; });
    }
    constexpr recordset::FieldType Type() const {
        return detail::VisitItem(Member, [](auto item) { return detail::FieldTypeOf<typename decltype(item)::Type>(); });
    }
    // Of a text, in characters; 0 of anything else.
    constexpr int Width() const {
        const int fixed =
            detail::VisitItem(Member, [](auto item) { return detail::TextWidth<typename decltype(item)::Type>::value; });
        return fixed != 0 ? fixed : StringWidth;
    }
};

// In the order of the file, which is part of its format: the common columns, then those of the books, which stand there once for
// each book, all of a book's columns together.
inline constexpr auto kAssetColumns = std::to_array<AssetColumn>({
    {"AssetNum", &AssetRecord::AssetNum},
    {"Division", &AssetRecord::Division},
    {"Department", &AssetRecord::Department},
    {"Description", &AssetRecord::Description, 32},
    {"Descrip2", &AssetRecord::Descrip2, 32},
    {"SerialNum", &AssetRecord::SerialNum, 20},
    {"Purchased", &AssetRecord::Purchased},
    {"CodeSection", &AssetRecord::CodeSection, 8},
    {"AccountNum", &AssetRecord::AccountNum, 12},
    // COMPAT: it was added without a size, so older files hold it at the platform's default one.
    {"TaxGroup", &AssetRecord::TaxGroup, 6, /*AddedBy=*/1, /*AddedWidth=*/recordset::kDefaultTextSize},
    {"PictureName", &AssetRecord::PictureName, 32},
    {"NewUsed", &AssetRecord::NewUsed},
    {"InService", &AssetRecord::InService},
    {"AssetType", &AssetRecord::AssetType, 2},
    {"FairMktValue", &AssetRecord::FairMktValue},
    {"FedLife", &AssetRecord::FedLife},
    {"BusinessUse", &AssetRecord::BusinessUse},
    {"ClassLife", &AssetRecord::ClassLife},
    {"Casualty", &AssetRecord::Casualty},
    {"LikeKind", &AssetRecord::LikeKind},
    {"Notice4", &AssetRecord::Notice4, 0, /*AddedBy=*/5},
    {"Abandoned", &AssetRecord::Abandoned},
    {"Sold", &AssetRecord::Sold},
    {"PropertyTax", &AssetRecord::PropertyTax},
    {"DateSold", &AssetRecord::DateSold},
    {"SoldAmount", &AssetRecord::SoldAmount},
    {"SoldExpense", &AssetRecord::SoldExpense},
    {"AssocAsset", &AssetRecord::AssocAsset},

    {"DeprType", &AssetRecord::DeprType},
    {"DateDeprToo", &AssetRecord::DateDeprToo},
    {"DeprMethod", &AssetRecord::DeprMethod},
    {"Basis", &AssetRecord::Basis},
    {"PrevDepr", &AssetRecord::PrevDepr},
    {"CurrDepr", &AssetRecord::CurrDepr},
    {"AddlDepr", &AssetRecord::AddlDepr},
    {"ADPct", &AssetRecord::ADPct},
    {"DeprLimit", &AssetRecord::DeprLimit},
    {"Section179", &AssetRecord::Section179},
    {"TaxCredit", &AssetRecord::TaxCredit},
    {"TaxCreditUsed", &AssetRecord::TaxCreditUsed},
    {"TaxCreditYear", &AssetRecord::TaxCreditYear},
    {"Period", &AssetRecord::Period},
    {"SwitchBasis", &AssetRecord::SwitchBasis},
    {"SwitchYear", &AssetRecord::SwitchYear},
    {"SwitchPeriod", &AssetRecord::SwitchPeriod},
    {"YearThru", &AssetRecord::YearThru},
    {"DBPercent", &AssetRecord::DBPercent},
    {"IRSConvUsed", &AssetRecord::IRSConvUsed},
    {"Listed", &AssetRecord::Listed},
    {"Auto", &AssetRecord::Auto},
    {"Agri", &AssetRecord::Agri},
    {"Salvage", &AssetRecord::Salvage},
});

// What a computation may change of a book (ADepre.h).
inline constexpr std::tuple kComputedMembers = {
    &AssetRecord::CurrDepr, &AssetRecord::YearThru,   &AssetRecord::IRSConvUsed, &AssetRecord::DeprLimit,
    &AssetRecord::AddlDepr, &AssetRecord::Section179, &AssetRecord::SwitchBasis,
};

// The row of a member. Every member of the record is a column's.
constexpr const AssetColumn& ColumnOf(const AssetMember& member) {
    for (const AssetColumn& column : kAssetColumns) {
        if (column.Member == member) return column;
    }
    throw PlatformError(Failure::ItemNotFound, "The member is no column of the asset");
}

// The row of a column's name in the file, in any letter case: "Division", "Basis(1)". nullptr when there is none.
const AssetColumn* FindAssetColumn(std::string_view name);

// The column's name in the file: "Basis(1)"; the name itself of a common column, whose book is 0.
std::string ColumnName(const AssetColumn& column, int book);

namespace detail {

inline constexpr std::size_t kBookColumns = [] {
    std::size_t books = 0;
    for (const AssetColumn& column : kAssetColumns) books += column.IsPerBook() ? 1U : 0U;
    return books;
}();
inline constexpr std::size_t kCommonColumns = kAssetColumns.size() - kBookColumns;

template <std::size_t I>
inline constexpr auto kMember = std::get<kAssetColumns[I].Member.index()>(kAssetColumns[I].Member);

template <std::size_t... I, typename Record, typename Visit>
void VisitCommon(std::index_sequence<I...>, Record& record, Visit& visit) {
    (visit(kAssetColumns[I], record.*kMember<I>, 0), ...);
}
template <std::size_t... I, typename Record, typename Visit>
void VisitBook(std::index_sequence<I...>, Record& record, int book, Visit& visit) {
    (visit(kAssetColumns[kCommonColumns + I], (record.*kMember<kCommonColumns + I>)[book], book), ...);
}

template <std::size_t... I, typename Visit>
void VisitMembers(std::index_sequence<I...>, Visit& visit) {
    (visit(kAssetColumns[kCommonColumns + I], kMember<kCommonColumns + I>), ...);
}

}  // namespace detail

inline constexpr std::size_t kAssetFileColumns = detail::kCommonColumns + kLastBook * detail::kBookColumns;

// Calls visit(column, item, book) for every column of the file in its order, item being what the record holds for it and book 0
// for the common ones. Each call is made for the item's own type: nothing is looked up when it runs.
template <typename Record, typename Visit>
void VisitAssetColumns(Record& record, Visit visit) {
    detail::VisitCommon(std::make_index_sequence<detail::kCommonColumns>{}, record, visit);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        detail::VisitBook(std::make_index_sequence<detail::kBookColumns>{}, record, book, visit);
    }
}

// Calls visit(column, member) for each column of the books, the member being the record's PerBook of it.
template <typename Visit>
void VisitBookMembers(Visit visit) {
    detail::VisitMembers(std::make_index_sequence<detail::kBookColumns>{}, visit);
}

}  // namespace tallymar
