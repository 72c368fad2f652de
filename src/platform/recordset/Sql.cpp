#include "platform/recordset/Sql.h"

#include <charconv>
#include <cstddef>

#include "platform/recordset/Names.h"
#include "platform/recordset/SqlTokens.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset::sql {

namespace {

// What a step's mask of Null keys has room for; no index of this program has half as many.
constexpr std::size_t kMostKeys = 16;

struct TypeWord {
    FieldType Type;
    std::string_view Declared;
};

constexpr TypeWord kTypeWords[] = {
    {FieldType::Date, "REAL DATE"},
    {FieldType::Currency, "INTEGER CURRENCY"},
    {FieldType::Integer, "SMALLINT"},
    {FieldType::Boolean, "INTEGER BOOLEAN"},
};

// How declared types of other programs are taken, the first that fits.
struct TypeHint {
    std::string_view Part;
    FieldType Type;
};

constexpr TypeHint kTypeHints[] = {
    {"bool", FieldType::Boolean}, {"currency", FieldType::Currency}, {"money", FieldType::Currency}, {"date", FieldType::Date},
    {"real", FieldType::Date},    {"floa", FieldType::Date},         {"doub", FieldType::Date},      {"int", FieldType::Integer},
};

std::string KeyExpression(const Field& field) {
    if (field.Type == FieldType::Text) return "rtrim(" + Quote(field.Name) + ") COLLATE NOCASE";
    return Quote(field.Name);
}

std::string FieldList(const TableDef& table) {
    std::string list;
    for (const Field& field : table.Fields) {
        if (!list.empty()) list += ", ";
        list += Quote(field.Name);
    }
    return list;
}

// One key: a plain column that is no text, or a text as KeyExpression has it.
bool TakeKey(Tokens& tokens, const TableDef& table, std::vector<std::string>& fields) {
    std::string name;
    if (!tokens.TakeName(name)) return false;
    const bool trimmed = SameName(name, "rtrim") && tokens.TakeMark('(');
    if (trimmed && !(tokens.TakeName(name) && tokens.TakeMark(')'))) return false;
    const Field* field = table.FindField(FromUtf8(name));
    if (field == nullptr || trimmed != (field->Type == FieldType::Text)) return false;
    if (trimmed && !(tokens.Take("COLLATE") && tokens.Take("NOCASE"))) return false;
    tokens.Take("ASC");
    fields.push_back(field->Name);
    return true;
}

std::vector<std::string> KeysOf(const TableDef& table, const Index* index) {
    std::vector<std::string> keys;
    if (index != nullptr) {
        for (const std::string& name : index->Fields) keys.push_back(KeyExpression(*table.FindField(name)));
    }
    return keys;
}

// " FROM ... WHERE ...": the rows of a shape.
std::string RowsLike(const TableDef& table, const Index* index, const StepShape& shape) {
    const std::vector<std::string> keys = KeysOf(table, index);
    const auto isNull = [&](int key) { return (shape.NullMask >> key & 1U) != 0; };

    std::string where;
    const auto condition = [&](const std::string& text) { where += (where.empty() ? " WHERE " : " AND ") + text; };
    for (int key = 0; key < shape.Depth; ++key)
        condition(keys[static_cast<std::size_t>(key)] + (isNull(key) ? " IS NULL" : " = ?"));
    if (shape.Beyond) {
        const char* comparison = shape.Descending ? " < ?" : " > ?";
        if (static_cast<std::size_t>(shape.Depth) == keys.size()) {
            condition(std::string("_rowid_") + comparison);
        } else {
            // Null is first. What is not Null is at least the least number, which SQLite can search an index of texts for too; of
            // IS NOT NULL it makes a walk past all that is Null.
            condition(keys[static_cast<std::size_t>(shape.Depth)] + (isNull(shape.Depth) ? " >= -9e999" : comparison));
        }
    }
    // Which index is walked is not left to the planner, which other tools' statistics could mislead.
    const std::string source =
        index == nullptr ? " NOT INDEXED" : " INDEXED BY " + Quote(StoredIndexName(table.Name, index->Name));
    return " FROM " + Quote(table.Name) + source + where;
}

}  // namespace

std::string Quote(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : ToUtf8(name)) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    quoted += '"';
    return quoted;
}

std::string DeclaredType(const Field& field) {
    for (const TypeWord& word : kTypeWords) {
        if (word.Type == field.Type) return std::string(word.Declared);
    }
    return std::string(field.AllowZeroLength ? "TEXT(" : "TEXT NONEMPTY(") + std::to_string(field.Size) + ")";
}

Field FieldFromDeclaredType(std::string name, std::string_view declared) {
    const std::string folded = FoldName(declared);
    const auto contains = [&](std::string_view part) { return folded.find(part) != std::string::npos; };
    Field field{.Name = std::move(name), .Type = FieldType::Text, .Size = 0, .AllowZeroLength = false};
    if (!contains("text") && !contains("char")) {
        for (const TypeHint& hint : kTypeHints) {
            if (!contains(hint.Part)) continue;
            field.Type = hint.Type;
            return field;
        }
    }
    field.Size = kDefaultTextSize;
    field.AllowZeroLength = !contains("nonempty");
    if (const std::size_t open = folded.find('('); open != std::string::npos) {
        int size = 0;
        const char* start = folded.data() + open + 1;
        if (std::from_chars(start, folded.data() + folded.size(), size).ec == std::errc() && size > 0) field.Size = size;
    }
    return field;
}

std::string CreateTable(const TableDef& table) {
    std::string fields;
    for (const Field& field : table.Fields) {
        if (!fields.empty()) fields += ", ";
        fields += Quote(field.Name) + " " + DeclaredType(field);
    }
    return "CREATE TABLE " + Quote(table.Name) + " (" + fields + ")";
}

std::string AddField(std::string_view table, const Field& field) {
    return "ALTER TABLE " + Quote(table) + " ADD COLUMN " + Quote(field.Name) + " " + DeclaredType(field);
}

std::string StoredIndexName(std::string_view table, std::string_view index) {
    return std::string(table) + "_" + std::string(index);
}

std::string CreateIndex(const TableDef& table, const Index& index) {
    std::string keys;
    for (const std::string& name : index.Fields) {
        if (!keys.empty()) keys += ", ";
        keys += KeyExpression(*table.FindField(name));
    }
    return std::string("CREATE ") + (index.Primary ? "UNIQUE " : "") + "INDEX " + Quote(StoredIndexName(table.Name, index.Name)) +
           " ON " + Quote(table.Name) + (index.Required ? " /* " + std::string(kRequiredMark) + " */ (" : " (") + keys + ")";
}

std::optional<Index> IndexFromSql(const TableDef& table, std::string_view sql) {
    Tokens tokens(sql);
    Index index;
    std::string stored;
    std::string on;
    if (!tokens.Take("CREATE")) return std::nullopt;
    index.Primary = tokens.Take("UNIQUE");
    if (!tokens.Take("INDEX") || !tokens.TakeName(stored)) return std::nullopt;
    if (!tokens.Take("ON") || !tokens.TakeName(on) || !tokens.TakeMark('(')) return std::nullopt;
    do {
        if (!TakeKey(tokens, table, index.Fields)) return std::nullopt;
    } while (tokens.TakeMark(','));
    if (!tokens.TakeMark(')') || !tokens.AtEnd()) return std::nullopt;
    if (index.Fields.size() > kMostKeys) return std::nullopt;
    index.Required = tokens.SawRequiredMark();
    const std::string name = FromUtf8(stored);
    const std::string prefix = StoredIndexName(table.Name, "");
    if (name.size() <= prefix.size() || !SameName(name.substr(0, prefix.size()), prefix)) return std::nullopt;
    index.Name = name.substr(prefix.size());
    return index;
}

std::string Step(const TableDef& table, const Index* index, const StepShape& shape) {
    const std::vector<std::string> keys = KeysOf(table, index);
    const std::string direction = shape.Descending ? " DESC" : "";
    std::string order;
    for (std::size_t key = static_cast<std::size_t>(shape.Depth); key < keys.size(); ++key) order += keys[key] + direction + ", ";
    order += "_rowid_" + direction;
    return "SELECT _rowid_, " + FieldList(table) + RowsLike(table, index, shape) + " ORDER BY " + order + " LIMIT ?";
}

std::string Count(const TableDef& table, const Index* index, const StepShape& shape) {
    return "SELECT count(*)" + RowsLike(table, index, shape);
}

std::string SelectByRow(const TableDef& table) {
    return "SELECT _rowid_, " + FieldList(table) + " FROM " + Quote(table.Name) + " NOT INDEXED WHERE _rowid_ = ?";
}

std::string Insert(const TableDef& table) {
    std::string values;
    for (std::size_t i = 0; i < table.Fields.size(); ++i) values.append(", ?").append(std::to_string(i + 1));
    const std::string given = std::string("?") + std::to_string(table.Fields.size() + 1);
    return "INSERT INTO " + Quote(table.Name) + " (_rowid_, " + FieldList(table) + ") VALUES (max(" + given +
           ", ifnull((SELECT max(_rowid_) FROM " + Quote(table.Name) + "), 0)) + 1" + values + ")";
}

std::string DeleteByRow(const TableDef& table) {
    return "DELETE FROM " + Quote(table.Name) + " WHERE _rowid_ = ?";
}

std::string UpdateByRow(const TableDef& table, const std::vector<int>& ordinals) {
    std::string sets;
    for (const int ordinal : ordinals) {
        sets += (sets.empty() ? "" : ", ") + Quote(table.Fields[static_cast<std::size_t>(ordinal)].Name) + " = ?";
    }
    return "UPDATE " + Quote(table.Name) + " SET " + sets + " WHERE _rowid_ = ?";
}

}  // namespace tallymar::recordset::sql
