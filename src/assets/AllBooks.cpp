#include "assets/AllBooks.h"

#include <algorithm>
#include <utility>

#include "assets/AssetFields.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"

namespace tallymar {

namespace {

// "Basis" alone would not say of what: these frames stand before their labels.
constexpr std::string_view kFramesToName[] = {"Switchover", "Tax Credit"};

std::string LabelOf(const AssetFieldDef& field) {
    const bool named = std::find(std::begin(kFramesToName), std::end(kFramesToName), field.Frame) != std::end(kFramesToName);
    return (named ? std::string(field.Frame) + " " : std::string()) + std::string(field.Label);
}

std::string TextOf(AssetFieldValues& values, const AssetFieldDef& field, int book) {
    switch (field.Kind) {
        case FieldKind::Amount: {
            const CurrencyAmount amount = FieldValue<CurrencyAmount>(values, field, book);
            return Format(amount, field.Money ? pictures::kTotal : pictures::kPercent);
        }
        case FieldKind::Integer: {
            const int number = FieldValue<int>(values, field, book);
            return number == 0 ? std::string() : std::to_string(number);
        }
        case FieldKind::Check:
            return FieldValue<bool>(values, field, book) ? "Yes" : "";
        case FieldKind::Text:
        case FieldKind::List:
        case FieldKind::Date:
            break;
    }
    return FieldValue<std::string>(values, field, book);
}

}  // namespace

std::string DifferenceFromFederal(const AssetFieldValues& values, int book) {
    const BookFieldValues& federal = values.Book[kFirstBook];
    const BookFieldValues& other = values.Book[book];
    const std::pair<bool, std::string_view> aspects[] = {
        {other.DeprType != federal.DeprType || other.DeprMethod != federal.DeprMethod || other.DBPercent != federal.DBPercent,
         "method"},
        {other.Period != federal.Period, "life"},
        {other.IRSConvUsed != federal.IRSConvUsed, "convention"},
        {other.Basis != federal.Basis, "basis"}};
    std::string difference;
    for (const auto& [differs, name] : aspects) {
        if (differs) difference.append(difference.empty() ? "" : ", ").append(name);
    }
    return difference;
}

std::vector<AllBooksRow> AllBooks(AssetFieldValues values) {
    std::vector<AllBooksRow> rows;
    for (const AssetFieldDef& field : AssetFields()) {
        if (field.Place != FieldPlace::Book) continue;
        AllBooksRow row;
        row.Label = LabelOf(field);
        row.IsNumber = field.Kind == FieldKind::Amount || field.Kind == FieldKind::Integer;
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            row.Texts[book] = TextOf(values, field, book);
            row.Differs[book] = row.Texts[book] != row.Texts[kFirstBook];
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace tallymar
