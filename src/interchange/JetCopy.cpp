#include "interchange/JetCopy.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/recordset/Names.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetRecordAccess.h"
#include "store/Schema.h"

namespace tallymar {

namespace {

using mdb::JetType;
using mdb::JetValue;
using recordset::Field;
using recordset::FieldType;
using recordset::SameName;
using recordset::Value;

constexpr std::string_view kKey = "AssetNum";
constexpr std::size_t kMostNamed = 3;  // texts in one failure

struct TypeName {
    JetType Type;
    std::string_view Name;
    std::optional<FieldType> Ours;
};

constexpr TypeName kTypes[] = {
    {JetType::Boolean, "Boolean", FieldType::Boolean},
    {JetType::Byte, "Byte", {}},
    {JetType::Integer, "Integer", FieldType::Integer},
    {JetType::Long, "Long", {}},
    {JetType::Currency, "Currency", FieldType::Currency},
    {JetType::Single, "Single", {}},
    {JetType::Double, "Double", {}},
    {JetType::Date, "Date", FieldType::Date},
    {JetType::Text, "Text", FieldType::Text},
    {JetType::Other, "neither text nor number", {}},
};

std::string_view NameOf(FieldType type) {
    for (const TypeName& one : kTypes) {
        if (one.Ours == type) return one.Name;
    }
    return "";
}

const TypeName& InfoOf(JetType type) {
    return kTypes[static_cast<std::size_t>(type)];
}

// "U+03A9"
std::string CodePoint(char32_t character) {
    std::array<char, 8> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), static_cast<std::uint32_t>(character), 16).ptr;
    const std::string hex = UCase(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
    return "U+" + std::string(hex.size() < 4 ? 4 - hex.size() : 0, '0') + hex;
}

// The table as the new file has it. A column that releases added at another width than today's keeps the width that the old file
// has it at, or would have been given on being brought up to date.
recordset::TableDef NewTable(const mdb::JetTable& old) {
    recordset::TableDef table = SameName(old.Name, "Company") ? CompanyTable() : AssetsTable();
    for (Field& field : table.Fields) {
        const AssetColumn* column = FindAssetColumn(field.Name);
        if (column == nullptr || column->AddedWidth == 0) continue;
        bool asToday = false;
        for (const mdb::JetColumn& theirs : old.Columns) {
            if (SameName(theirs.Name, field.Name)) asToday = theirs.Size <= field.Size;
        }
        if (!asToday) field.Size = column->AddedWidth;
    }
    std::erase_if(table.Indexes, [](const recordset::Index& index) { return !index.Primary; });
    return table;
}

// The number by which an asset is found, as load takes it.
void RequireKey(std::string_view key) {
    if (RTrim(key).empty()) throw PlatformError(Failure::NullKey, "every asset needs a number that is not blank");
    if (std::any_of(key.begin(), key.end(), IsControl)) {
        throw PlatformError(Failure::InvalidCall, "a number may not hold a control character");
    }
}

}  // namespace

ColumnMatch::ColumnMatch(const recordset::TableDef& ours, const mdb::JetTable& theirs) {
    for (const Field& field : ours.Fields) {
        int found = kMissing;
        for (std::size_t i = 0; i < theirs.Columns.size(); ++i) {
            if (SameName(theirs.Columns[i].Name, field.Name)) found = static_cast<int>(i);
        }
        columns_.push_back(found);
        if (found == kMissing) {
            notThere_.push_back(ours.Name + "." + field.Name);
            continue;
        }
        const TypeName& type = InfoOf(theirs.Columns[static_cast<std::size_t>(found)].Type);
        if (type.Ours == field.Type) continue;
        throw PlatformError(Failure::TypeMismatch, "Column " + ours.Name + "." + field.Name + " is " + std::string(type.Name) +
                                                       " in the old file where a company has " + std::string(NameOf(field.Type)));
    }
    for (const mdb::JetColumn& column : theirs.Columns) {
        if (ours.FindField(column.Name) == nullptr) notTaken_.push_back(ours.Name + "." + column.Name);
    }
}

void CopyRows::Table(const mdb::JetTable& table) {
    const recordset::TableDef definition = NewTable(table);
    const ColumnMatch match(definition, table);
    const bool company = definition.Indexes.empty();
    if (company && table.Rows > 1) {
        throw PlatformError(Failure::UnrecognizedFormat,
                            "Table Company holds " + std::to_string(table.Rows) + " rows where a company has one");
    }
    database_.CreateTable(definition);
    target_.emplace(database_.OpenRecordset(definition.Name));
    columns_ = match.Columns();
    notTaken_.insert(notTaken_.end(), match.NotTaken().begin(), match.NotTaken().end());
    notThere_.insert(notThere_.end(), match.NotThere().begin(), match.NotThere().end());
    key_ = ColumnMatch::kMissing;
    known_.assign(columns_.size(), nullptr);
    if (company) return;
    for (std::size_t i = 0; i < known_.size(); ++i) known_[i] = FindAssetColumn(definition.Fields[i].Name);
    key_ = columns_[static_cast<std::size_t>(target_->Ordinal(kKey))];
    if (key_ == ColumnMatch::kMissing) {
        throw PlatformError(Failure::ItemNotFound, "Table Assets of the old file has no column " + std::string(kKey));
    }
    progress_.reset();
    progress_.emplace(prompts_, table.Rows);
}

void CopyRows::Row(std::span<const JetValue> values) {
    const std::vector<Field>& fields = target_->Definition().Fields;
    target_->AddNew();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (columns_[i] == ColumnMatch::kMissing) continue;
        const JetValue& value = values[static_cast<std::size_t>(columns_[i])];
        if (value.IsNull) continue;
        const Value converted = Convert(fields[i], value, values);
        NoteUnreadable(i, converted, values);
        try {
            target_->Set(static_cast<int>(i), converted);
        } catch (const PlatformError& failure) {
            throw failure.WithPrefix(PlaceOf(values, fields[i].Name));
        }
    }
    try {
        if (key_ != ColumnMatch::kMissing) RequireKey(values[static_cast<std::size_t>(key_)].Text);
        target_->Update();
    } catch (const PlatformError& failure) {
        throw failure.WithPrefix(PlaceOf(values, kKey));
    }
    if (progress_) progress_->Step();
}

void CopyRows::NoteUnreadable(std::size_t column, const Value& value, std::span<const JetValue> row) {
    if (known_[column] == nullptr) return;
    try {
        RequireReadable(*known_[column], value);
    } catch (const PlatformError&) {
        std::string place = PlaceOf(row, known_[column]->Name);
        notReadable_.push_back(place.substr(0, place.size() - 2) + " (" + value.ToText() + ")");
    }
}

std::string CopyRows::PlaceOf(std::span<const JetValue> values, std::string_view field) const {
    std::string place = "Company";
    if (key_ != ColumnMatch::kMissing) place = "Asset " + std::string(values[static_cast<std::size_t>(key_)].Text);
    return place + ", " + std::string(field) + ": ";
}

Value CopyRows::Convert(const Field& field, const JetValue& value, std::span<const JetValue> row) {
    switch (field.Type) {
        case FieldType::Text:
            if (value.NotInText != 0) {
                ++textsNotHeldCount_;
                if (textsNotHeld_.size() < kMostNamed) {
                    textsNotHeld_.push_back(PlaceOf(row, field.Name) + "\"" + std::string(value.Text) + "\" has " +
                                            CodePoint(value.NotInText));
                }
            }
            if (value.Text.size() > static_cast<std::size_t>(field.Size)) {
                throw PlatformError(Failure::FieldTooSmall, PlaceOf(row, field.Name) + "the text has " +
                                                                std::to_string(value.Text.size()) +
                                                                " characters; the column holds " + std::to_string(field.Size));
            }
            return Value(value.Text);
        case FieldType::Date:
            if (!std::isfinite(value.Real)) {
                throw PlatformError(Failure::TypeMismatch, PlaceOf(row, field.Name) + "the date is none");
            }
            return Value(Date::FromSerial(value.Real));
        case FieldType::Currency:
            return Value(CurrencyAmount::FromTenThousandths(value.Whole));
        case FieldType::Integer:
            return Value(static_cast<std::int16_t>(value.Whole));
        case FieldType::Boolean:
            return Value(value.Whole != 0);
    }
    throw PlatformError(Failure::TypeMismatch);
}

const std::vector<std::string>& MoneyColumns() {
    static const std::vector<std::string> columns = [] {
        std::vector<std::string> names;
        for (const Field& field : AssetsTable().Fields) {
            if (field.Type == FieldType::Currency) names.push_back(field.Name);
        }
        return names;
    }();
    return columns;
}

void CountRows::Table(const mdb::JetTable& table) {
    next_.Table(table);
    totals_.Columns.resize(MoneyColumns().size());
    assets_ = SameName(table.Name, "Assets");
    columns_.assign(MoneyColumns().size(), ColumnMatch::kMissing);
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        for (std::size_t total = 0; total < columns_.size(); ++total) {
            if (SameName(table.Columns[i].Name, MoneyColumns()[total])) columns_[total] = static_cast<int>(i);
        }
    }
}

void CountRows::Row(std::span<const JetValue> values) {
    ++(assets_ ? totals_.Assets : totals_.CompanyRows);
    for (std::size_t total = 0; total < columns_.size(); ++total) {
        if (columns_[total] == ColumnMatch::kMissing) continue;
        const JetValue& value = values[static_cast<std::size_t>(columns_[total])];
        if (!value.IsNull) totals_.Columns[total].Add(CurrencyAmount::FromTenThousandths(value.Whole));
    }
    next_.Row(values);
}

CompanyTotals TotalsOfNew(recordset::Database& database) {
    CompanyTotals totals;
    totals.CompanyRows = database.OpenRecordset("Company").RecordCount();
    recordset::Recordset assets = database.OpenRecordset("Assets");
    std::vector<int> ordinals;
    for (const std::string& column : MoneyColumns()) ordinals.push_back(assets.Ordinal(column));
    totals.Columns.resize(ordinals.size());
    for (; !assets.Eof(); assets.MoveNext()) {
        ++totals.Assets;
        for (std::size_t i = 0; i < ordinals.size(); ++i) {
            if (const Value value = assets.Get(ordinals[i]); !value.IsNull()) totals.Columns[i].Add(value.Currency());
        }
    }
    return totals;
}

}  // namespace tallymar
