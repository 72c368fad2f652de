#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "assets/AssetFieldValues.h"
#include "store/AssetColumns.h"
#include "store/CodeMeanings.h"

// The fields of the asset form as one table: the window builds its controls from it, the session moves values by it, tests read
// it.
namespace tallymar {

enum class AssetField : std::uint8_t {
    AssetNum,
    NewUsed,
    AssetType,
    ClassLife,
    Description,
    Descrip2,
    SerialNum,
    CodeSection,
    AccountNum,
    Division,
    Department,
    BusinessUse,
    InService,
    Purchased,
    FairMktValue,
    PictureName,
    TaxGroup,
    AssocAsset,
    PropertyTax,
    DeprType,
    DeprMethod,
    DBPercent,
    IRSConvUsed,
    Period,
    ADPct,
    Listed,
    Auto,
    Agri,
    Basis,
    Salvage,
    Section179,
    AddlDepr,
    AdjBasis,
    PrevDepr,
    CurrDepr,
    DateDeprToo,
    YearThru,
    SwitchBasis,
    SwitchYear,
    SwitchPeriod,
    TaxCredit,
    TaxCreditUsed,
    TaxCreditYear,
    DateSold,
    SoldAmount,
    SoldExpense,
    GainLoss,
    Sold,
    Abandoned,
    Casualty,
    LikeKind,
    Notice4
};

// Tabs of the form. The four between are the books, the tab's number being the book's.
inline constexpr int kGeneralTab = 0;
inline constexpr int kSaleTab = 5;
inline constexpr int kTabCount = 6;

enum class FieldKind : std::uint8_t { Text, List, Date, Amount, Integer, Check };

// What receiving the focus does to the tabs: the first field of a tab arms the jump to the first field of the next tab that is
// chosen, the last ones take it away, so that leaving a tab by the keyboard and by the mouse both end where one expects.
enum class TabArming : std::uint8_t { None, Arms, Disarms };

enum class FieldPlace : std::uint8_t { General, Book, Sale };

using FieldMember = std::variant<std::string AssetFieldValues::*, CurrencyAmount AssetFieldValues::*, bool AssetFieldValues::*,
                                 std::string BookFieldValues::*, CurrencyAmount BookFieldValues::*, int BookFieldValues::*,
                                 bool BookFieldValues::*>;

struct AssetFieldDef {
    AssetField Id;
    std::string_view Control;  // "sidbBasis"; a book field's control is an array indexed by the book
    std::string_view Label;
    std::optional<AssetMember> Stored = {};  // the column; none: never stored
    FieldPlace Place;
    FieldKind Kind;
    FieldMember Member;
    std::string_view Frame = {};  // the frame of a book tab that it stands in

    std::size_t MaxLength = 0;      // texts: what the control takes, if that is not the column's width
    bool LettersAndDigits = false;  // texts: A-Z and 0-9 alone
    CurrencyAmount Minimum = {};    // amounts and integers
    CurrencyAmount Maximum = {};
    bool Money = false;  // amounts: shown with commas
    std::span<const std::string_view> Entries = {};
    std::span<const CodeMeaning> Meanings = {};  // of the entries
    bool ReadOnly = false;
    bool Computed = false;  // formed by the field rules, whatever is stored

    std::string_view Hint = {};
    bool HintOnChange = false;
    TabArming Arming = TabArming::None;
    std::string_view Tip = {};
};

inline constexpr int kAmountDecimals = 2;  // of every amount, percentage and life on the form

// In the order in which the form goes through them.
std::span<const AssetFieldDef> AssetFields();
const AssetFieldDef& FieldDef(AssetField field);

// The value of a field; `book` counts for the book fields alone.
template <typename T>
T& FieldValue(AssetFieldValues& values, const AssetFieldDef& field, int book) {
    if (const auto* common = std::get_if<T AssetFieldValues::*>(&field.Member)) return values.**common;
    return values.Book[book].*std::get<T BookFieldValues::*>(field.Member);
}
template <>
inline int& FieldValue<int>(AssetFieldValues& values, const AssetFieldDef& field, int book) {
    return values.Book[book].*std::get<int BookFieldValues::*>(field.Member);
}

// How many characters a text takes.
std::size_t MaxLengthOf(const AssetFieldDef& field);

// "sidbBasis(1)", "sitxAssetNum".
std::string ControlName(const AssetFieldDef& field, int book);

// A command of the form.
struct AssetCommandDef {
    std::string_view Control;
    std::string_view Caption;
    std::string_view Tip;
};

inline constexpr AssetCommandDef kCmdNew = {"cmdNew", "&New", "Add a New Asset"};
inline constexpr AssetCommandDef kCmdBuild = {"cmdBuild", "&Build", "Depreciate (Build) Asset from date Placed-In-Service"};
inline constexpr AssetCommandDef kCmdDelete = {"cmdDelete", "&Delete", "Delete the Current Asset"};
inline constexpr AssetCommandDef kCmdCopy = {"cmdCopy", "&Copy Asset", "Make multiple copies of this asset"};
inline constexpr AssetCommandDef kCmdFind = {"cmdFind", "&Find Asset", "Find an Asset"};
inline constexpr AssetCommandDef kCmdClose = {"cmdClose", "C&lose Edit", "Close this Edit window"};
inline constexpr AssetCommandDef kImgFirst = {"imgFirst", "", "Go to 1st Asset in database"};
inline constexpr AssetCommandDef kImgPrevious = {"imgPrevious", "", "Go to previous Asset in database"};
inline constexpr AssetCommandDef kImgNext = {"imgNext", "", "Go to next Asset in database"};
inline constexpr AssetCommandDef kImgLast = {"imgLast", "", "Go to last Asset in database"};

inline constexpr std::string_view kTabCaptions[kTabCount] = {"&General Information", "Federal", "State", "Book", "AMT",
                                                             "Sale Information"};

}  // namespace tallymar
