#include "interchange/Headings.h"

#include <algorithm>
#include <array>
#include <utility>

#include "assets/AssetFields.h"
#include "platform/recordset/Names.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"
#include "store/Books.h"

namespace tallymar {

namespace {

// What counts of a name.
std::string Letters(std::string_view name) {
    std::string letters;
    for (const char c : UCase(name)) {
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) letters += c;
    }
    return letters;
}

struct OtherName {
    std::string_view Letters;
    AssetMember Column;
};

// Words for the fields in other programs' tables and on the forms of tax authorities. Only a guess goes by them.
constexpr auto kOtherNames = std::to_array<OtherName>({
    {"ASSET", &AssetRecord::AssetNum},
    {"ASSETNO", &AssetRecord::AssetNum},
    {"ASSETID", &AssetRecord::AssetNum},
    {"ID", &AssetRecord::AssetNum},
    {"NO", &AssetRecord::AssetNum},
    {"ASSETDESCRIPTION", &AssetRecord::Description},
    {"DESCRIPTIONOFPROPERTY", &AssetRecord::Description},
    {"ASSETNAME", &AssetRecord::Description},
    {"NAME", &AssetRecord::Description},
    {"DESCRIPTION2", &AssetRecord::Descrip2},
    {"SERIAL", &AssetRecord::SerialNum},
    {"SERIALNO", &AssetRecord::SerialNum},
    {"ACCOUNT", &AssetRecord::AccountNum},
    {"ACCOUNTNO", &AssetRecord::AccountNum},
    {"GLACCOUNT", &AssetRecord::AccountNum},
    {"GLACCOUNTNUMBER", &AssetRecord::AccountNum},
    {"DEPT", &AssetRecord::Department},
    {"ACQUIRED", &AssetRecord::Purchased},
    {"DATEACQUIRED", &AssetRecord::Purchased},
    {"ACQUISITIONDATE", &AssetRecord::Purchased},
    {"PURCHASEDATE", &AssetRecord::Purchased},
    {"DATEPURCHASED", &AssetRecord::Purchased},
    {"PURCHASEDDATE", &AssetRecord::Purchased},
    {"INSERVICEDATE", &AssetRecord::InService},
    {"DATEINSERVICE", &AssetRecord::InService},
    {"PLACEDINSERVICE", &AssetRecord::InService},
    {"DATEPLACEDINSERVICE", &AssetRecord::InService},
    {"PLACEDINSERVICEDATE", &AssetRecord::InService},
    {"BUSINESSPERCENT", &AssetRecord::BusinessUse},
    {"FMV", &AssetRecord::FairMktValue},
    {"SOLDDATE", &AssetRecord::DateSold},
    {"DISPOSALDATE", &AssetRecord::DateSold},
    {"DATEDISPOSED", &AssetRecord::DateSold},
    {"SALEPRICE", &AssetRecord::SoldAmount},
    {"SALESPRICE", &AssetRecord::SoldAmount},
    {"PROCEEDS", &AssetRecord::SoldAmount},
    {"SELLINGEXPENSES", &AssetRecord::SoldExpense},
    {"EXPENSEOFSALE", &AssetRecord::SoldExpense},
    {"COST", &AssetRecord::Basis},
    {"BASIS", &AssetRecord::Basis},
    {"COSTORBASIS", &AssetRecord::Basis},
    {"COSTBASIS", &AssetRecord::Basis},
    {"ASSETBASIS", &AssetRecord::Basis},
    {"ORIGINALCOST", &AssetRecord::Basis},
    {"TYPE", &AssetRecord::DeprType},
    {"DEPRECIATIONTYPE", &AssetRecord::DeprType},
    {"METHOD", &AssetRecord::DeprMethod},
    {"DEPRECIATIONMETHOD", &AssetRecord::DeprMethod},
    {"LIFE", &AssetRecord::Period},
    {"PERIOD", &AssetRecord::Period},
    {"RECOVERYPERIOD", &AssetRecord::Period},
    {"DEPRECIATIONPERIOD", &AssetRecord::Period},
    {"SALVAGEVALUE", &AssetRecord::Salvage},
    {"179", &AssetRecord::Section179},
    {"SEC179", &AssetRecord::Section179},
    {"SECTION179EXPENSE", &AssetRecord::Section179},
    {"BONUS", &AssetRecord::AddlDepr},
    {"PREVIOUSDEPRECIATION", &AssetRecord::PrevDepr},
    {"PRIORDEPRECIATION", &AssetRecord::PrevDepr},
    {"PRIORDEPR", &AssetRecord::PrevDepr},
    {"ACCUMULATEDDEPRECIATION", &AssetRecord::PrevDepr},
    {"CURRENTDEPRECIATION", &AssetRecord::CurrDepr},
    {"CURRENTDEPR", &AssetRecord::CurrDepr},
    {"CURRENTYEARDEPRECIATION", &AssetRecord::CurrDepr},
});

// A book by the words that a heading begins or ends with.
struct BookWord {
    std::string_view Letters;
    int Book;
};
constexpr auto kBookWords =
    std::to_array<BookWord>({{"FEDERAL", 1}, {"FED", 1}, {"TAX", 1}, {"STATE", 2}, {"BOOKKEEPING", 3}, {"BOOK", 3}, {"AMT", 4}});

bool StandsMoreThanOnce(const AssetFieldDef& field) {
    return std::count_if(AssetFields().begin(), AssetFields().end(), [&](const AssetFieldDef& other) {
               // A label that another column has for its name tells as little.
               const bool isName = other.Stored && other.Id != field.Id && ColumnOf(*other.Stored).Name == field.Label;
               return other.Label == field.Label || isName;
           }) > 1;
}

// Clearest first.
std::vector<std::string> NamesOf(const AssetFieldDef& field, int book) {
    const std::string label(field.Label);
    std::vector<std::string> names;
    if (field.Place == FieldPlace::Book) {
        const BookInfo& info = BookOf(book);
        for (const std::string_view name : {info.ShortName, info.Name}) {
            const std::string before = std::string(name) + " ";
            const std::string framed = before + std::string(field.Frame) + " " + label;
            names.push_back(before + label);
            names.push_back(framed);
            if (StandsMoreThanOnce(field)) std::swap(names.back(), names[names.size() - 2]);
            names.push_back(before + std::string(ColumnOf(*field.Stored).Name));
        }
        return names;
    }
    if (label.empty()) return names;
    if (field.Place == FieldPlace::Sale && StandsMoreThanOnce(field)) return {"Sale " + label};
    names.push_back(label);
    if (field.Place == FieldPlace::Sale) names.push_back("Sale " + label);
    if (field.Id == AssetField::AssetNum) names.insert(names.begin(), "Asset " + label);
    return names;
}

}  // namespace

Headings::Headings(const recordset::TableDef& assets) : assets_(assets) {
    for (const int book : {0, 1, 2, 3, 4}) {
        for (const AssetFieldDef& field : AssetFields()) {
            if (field.Stored && (book != 0) == (field.Place == FieldPlace::Book))
                AddField(ColumnName(ColumnOf(*field.Stored), book), NamesOf(field, book));
        }
    }
    for (const recordset::Field& field : assets.Fields) {
        if (!labels_.contains(field.Name)) AddField(field.Name, {});
    }
}

void Headings::AddField(std::string_view column, const std::vector<std::string>& names) {
    const std::string name(column);
    columns_.push_back(name);
    labels_.emplace(name, names.empty() ? name : names.front());
    for (const std::string& each : names) {
        const std::string letters = Letters(each);
        const auto [first, last] = byName_.equal_range(letters);
        if (std::none_of(first, last, [&](const auto& entry) { return entry.second == name; })) byName_.emplace(letters, name);
    }
}

std::vector<std::string> Headings::Named(std::string_view heading) const {
    if (const recordset::Field* field = assets_.FindField(heading)) return {field->Name};
    std::vector<std::string> columns;
    const auto [first, last] = byName_.equal_range(Letters(heading));
    for (auto entry = first; entry != last; ++entry) columns.push_back(entry->second);
    return columns;
}

std::vector<std::string> Headings::LabelsLike(std::string_view heading) const {
    std::vector<std::string> labels;
    for (const std::string_view before : {std::string_view(), BookOf(kFirstBook).Name, std::string_view("Sale")}) {
        for (const std::string& column : Named(std::string(before) + " " + std::string(heading)))
            labels.push_back(LabelOf(column));
    }
    return labels;
}

std::string Headings::Guess(std::string_view heading) const {
    if (const auto named = Named(heading); named.size() == 1) return named.front();
    std::string letters = Letters(heading);
    int book = kFirstBook;
    const auto column = [&]() -> std::string {
        for (const OtherName& other : kOtherNames) {
            const AssetColumn& known = ColumnOf(other.Column);
            if (other.Letters == letters) return ColumnName(known, known.IsPerBook() ? book : 0);
        }
        for (const AssetColumn& known : kAssetColumns) {
            if (known.IsPerBook() && Letters(known.Name) == letters) return ColumnName(known, book);
        }
        const auto named = Named(std::string(BookOf(book).ShortName) + letters);
        return named.size() == 1 ? named.front() : std::string();
    };
    if (const std::string found = column(); !found.empty()) return found;
    for (const BookWord& word : kBookWords) {
        const bool before = letters.starts_with(word.Letters);
        if (!before && !letters.ends_with(word.Letters)) continue;
        letters.erase(before ? 0 : letters.size() - word.Letters.size(), word.Letters.size());
        book = word.Book;
        return column();
    }
    return {};
}

std::string Headings::LabelOf(std::string_view column) const {
    const auto found = labels_.find(column);
    return found != labels_.end() ? found->second : std::string(column);
}

}  // namespace tallymar
