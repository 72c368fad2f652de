#include "platform/recordset/PlainTable.h"

#include <algorithm>
#include <string_view>

#include "platform/recordset/Names.h"
#include "platform/recordset/Sql.h"
#include "platform/recordset/SqlTokens.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

constexpr std::string_view kCollations[] = {"BINARY", "NOCASE", "RTRIM"};

bool IsKnownCollation(std::string_view name) {
    return std::any_of(std::begin(kCollations), std::end(kCollations),
                       [&](std::string_view known) { return SameName(known, name); });
}

// What the definition of a table holds that a plain one does not, in words; empty when nothing. The tokens stand after its name.
// CHECK, AS, ON and COLLATE are reserved: none of them can be a name without quotes.
std::string Oddity(sql::Tokens& tokens) {
    if (!tokens.TakeMark('(')) return "is no ordinary table";
    std::string item;  // the column or constraint
    bool begins = true;
    for (int depth = 1; depth > 0 && !tokens.AtEnd();) {
        if (begins) item = tokens.Current().Text;
        begins = depth == 1 && tokens.Current().IsMark(',');
        if (tokens.Take("CONSTRAINT")) {
            tokens.TakeName(item);
        } else if (tokens.Take("CHECK")) {
            return "holds a CHECK constraint at " + item;
        } else if (depth == 1 && tokens.Take("AS")) {
            return "holds the generated column " + item;
        } else if (tokens.Take("ON")) {
            if (tokens.Take("CONFLICT")) return "holds an ON CONFLICT clause at " + item;
        } else if (tokens.Take("COLLATE")) {
            if (!IsKnownCollation(tokens.Current().Text)) return "compares " + item + " by the rule " + tokens.Current().Text;
        } else {
            depth += tokens.Current().IsMark('(') ? 1 : tokens.Current().IsMark(')') ? -1 : 0;
            tokens.Advance();
        }
    }
    return tokens.AtEnd() ? "" : "is made " + tokens.Current().Text;
}

[[noreturn]] void Refuse(const Connection& connection, const std::string& tableUtf8, const std::string& oddity) {
    throw connection.About(Failure::UnrecognizedFormat, " (the table " + FromUtf8(tableUtf8 + " " + oddity) + ")");
}

}  // namespace

void RequirePlainTable(Connection& connection, const std::string& tableUtf8) {
    // By the name in the definition, which is the one that SQLite goes by.
    bool found = false;
    Statement definitions(connection, "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL");
    while (definitions.Step()) {
        const std::string definition = definitions.Utf8(0);
        sql::Tokens tokens(definition);
        std::string name;
        if (!tokens.Take("CREATE") || !tokens.Take("TABLE") || !tokens.TakeName(name) || !SameName(name, tableUtf8)) continue;
        found = true;
        if (const std::string oddity = Oddity(tokens); !oddity.empty()) Refuse(connection, tableUtf8, oddity);
    }
    if (!found) Refuse(connection, tableUtf8, "is no ordinary table");
    Statement columns(
        connection,
        "SELECT name FROM pragma_table_info(?1) WHERE lower(name) = '_rowid_' OR pk = 1 AND upper(type) = 'INTEGER' "
        "AND (SELECT max(pk) FROM pragma_table_info(?1)) = 1");
    columns.BindText(1, tableUtf8);
    if (columns.Step()) Refuse(connection, tableUtf8, "numbers its rows by the column " + columns.Utf8(0));
}

void RequirePlainIndexes(Connection& connection, const TableDef& table) {
    const std::string tableUtf8 = ToUtf8(table.Name);
    constexpr int kExpression = -2;
    Statement indexes(connection, "SELECT i.name, i.partial OR c.cid = " + std::to_string(kExpression) +
                                      ", c.coll FROM pragma_index_list(?) i JOIN pragma_index_xinfo(i.name) c WHERE c.key");
    indexes.BindText(1, tableUtf8);
    while (indexes.Step()) {
        const std::string name = indexes.Utf8(0);
        const bool isOurs = std::any_of(table.Indexes.begin(), table.Indexes.end(), [&](const Index& index) {
            return SameName(sql::StoredIndexName(table.Name, index.Name), FromUtf8(name));
        });
        if (isOurs) continue;
        if (indexes.Int64(1) != 0)
            Refuse(connection, tableUtf8, "holds the index " + name + " of an expression or of some rows only");
        if (!IsKnownCollation(indexes.Utf8(2)))
            Refuse(connection, tableUtf8, "holds the index " + name + " by the rule " + indexes.Utf8(2));
    }
}

}  // namespace tallymar::recordset
