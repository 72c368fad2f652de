#include "store/Schema.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/prompts/Prompts.h"
#include "platform/runtime/PerBook.h"
#include "platform/runtime/PlatformError.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

using recordset::Field;
using recordset::FieldType;
using recordset::TableDef;

struct CompanyColumn {
    std::string_view Name;
    FieldType Type;
    int Width = 0;
    int AddedBy = 0;                // the upgrade step, as AssetColumn has it
    std::string_view Message = {};  // told when a file lacks it
};

constexpr FieldType kText = FieldType::Text;
constexpr FieldType kDate = FieldType::Date;
constexpr FieldType kBoolean = FieldType::Boolean;

constexpr CompanyColumn kCompanyColumns[] = {
    {"Company", kText, 40},
    {"LastName", kText, 32},
    {"FirstName", kText, 32},
    {"Address1", kText, 40},
    {"Address2", kText, 40},
    {"City", kText, 40},
    {"State", kText, 2, /*AddedBy=*/2, "Field State NOT Found"},
    {"ZipCode", kText, 12},
    {"ID", kText, 16},
    {"Telephone", kText, 32},
    {"FYEFederal", kDate},
    {"FYEState", kDate},
    {"FYEBook", kDate},
    {"FYEAMT", kDate},
    {"Round", kBoolean},
    {"BeginDate", kDate},
};

struct AssetIndex {
    std::string_view Name;
    std::vector<std::string> Fields;
    bool Primary = false;
    int AddedBy = 0;
};

// A method's index stands once for each book, the book's number after its name.
const std::vector<AssetIndex>& AssetIndexes() {
    static const std::vector<AssetIndex> indexes = {
        {"AssetNum", {"AssetNum"}, /*Primary=*/true},
        {"InService", {"InService"}},
        {"AccountNum", {"AccountNum"}},
        {"ClassLife", {"ClassLife", "InService"}, false, /*AddedBy=*/3},
        {"TaxGroup", {"TaxGroup", "InService"}, false, /*AddedBy=*/4},
        {"Method1", {"Period(1)", "DeprType(1)", "DBPercent(1)", "DeprMethod(1)"}},
        {"Method2", {"Period(2)", "DeprType(2)", "DBPercent(2)", "DeprMethod(2)"}},
        {"Method3", {"Period(3)", "DeprType(3)", "DBPercent(3)", "DeprMethod(3)"}},
        {"Method4", {"Period(4)", "DeprType(4)", "DBPercent(4)", "DeprMethod(4)"}},
    };
    return indexes;
}

constexpr int kLastStep = 5;

Field MakeField(std::string name, FieldType type, int width) {
    const bool allowZeroLength = type == FieldType::Text && name != "AssetNum";
    return {.Name = std::move(name), .Type = type, .Size = width, .AllowZeroLength = allowZeroLength};
}

TableDef MakeCompanyTable() {
    TableDef table{.Name = "Company", .Fields = {}, .Indexes = {}};
    for (const CompanyColumn& column : kCompanyColumns) {
        table.Fields.push_back(MakeField(std::string(column.Name), column.Type, column.Width));
    }
    return table;
}

TableDef MakeAssetsTable() {
    TableDef table{.Name = "Assets", .Fields = {}, .Indexes = {}};
    AssetRecord record;
    VisitAssetColumns(record, [&table](const AssetColumn& column, const auto&, int book) {
        table.Fields.push_back(MakeField(ColumnName(column, book), column.Type(), column.Width()));
    });
    for (const AssetIndex& index : AssetIndexes()) {
        table.Indexes.push_back(
            {.Name = std::string(index.Name), .Fields = index.Fields, .Primary = index.Primary, .Required = index.Primary});
    }
    return table;
}

// A step that the database refuses is passed over: a file that cannot be brought up to date, such as a read-only one, still
// opens.
template <typename Step>
void Try(Step step) {
    try {
        step();
    } catch (const PlatformError&) {
    }
}

void AddColumn(recordset::Database& database, std::string_view table, const Field& field, std::string_view message,
               Prompts& prompts) {
    if (database.GetTableDef(table).FindField(field.Name) != nullptr) return;
    if (!message.empty()) prompts.Message(message, "Tallymar");
    database.CreateField(table, field);
}

void AddIndex(recordset::Database& database, std::string_view name) {
    if (database.GetTableDef("Assets").FindIndex(name) != nullptr) return;
    database.CreateIndex("Assets", *AssetsTable().FindIndex(name));
}

}  // namespace

const TableDef& CompanyTable() {
    static const TableDef table = MakeCompanyTable();
    return table;
}

const TableDef& AssetsTable() {
    static const TableDef table = MakeAssetsTable();
    return table;
}

void CreateSchema(recordset::Database& database) {
    database.CreateTable(CompanyTable());
    database.CreateTable(AssetsTable());
}

void UpgradeSchema(recordset::Database& database, Prompts& prompts) {
    AssetRecord record;
    for (int step = 1; step <= kLastStep; ++step) {
        for (const CompanyColumn& column : kCompanyColumns) {
            if (column.AddedBy != step) continue;
            const Field field = MakeField(std::string(column.Name), column.Type, column.Width);
            Try([&] { AddColumn(database, "Company", field, column.Message, prompts); });
        }
        VisitAssetColumns(record, [&](const AssetColumn& column, const auto&, int book) {
            if (column.AddedBy != step) return;
            const int width = column.AddedWidth != 0 ? column.AddedWidth : column.Width();
            const Field field = MakeField(ColumnName(column, book), column.Type(), width);
            Try([&] { AddColumn(database, "Assets", field, "", prompts); });
        });
        for (const AssetIndex& index : AssetIndexes()) {
            if (index.AddedBy == step) Try([&] { AddIndex(database, index.Name); });
        }
    }
}

}  // namespace tallymar
