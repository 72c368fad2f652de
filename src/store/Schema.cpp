#include "store/Schema.h"

#include <string>
#include <string_view>

#include "platform/prompts/Prompts.h"
#include "platform/runtime/PerBook.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

using recordset::Field;
using recordset::FieldType;
using recordset::TableDef;

struct Column {
    std::string_view Name;
    FieldType Type;
    int Size = 0;
};

constexpr FieldType kText = FieldType::Text;
constexpr FieldType kDate = FieldType::Date;
constexpr FieldType kCurrency = FieldType::Currency;
constexpr FieldType kInteger = FieldType::Integer;
constexpr FieldType kBoolean = FieldType::Boolean;

constexpr Column kCompanyColumns[] = {
    {"Company", kText, 40},  {"LastName", kText, 32},  {"FirstName", kText, 32}, {"Address1", kText, 40},
    {"Address2", kText, 40}, {"City", kText, 40},      {"State", kText, 2},      {"ZipCode", kText, 12},
    {"ID", kText, 16},       {"Telephone", kText, 32}, {"FYEFederal", kDate},    {"FYEState", kDate},
    {"FYEBook", kDate},      {"FYEAMT", kDate},        {"Round", kBoolean},      {"BeginDate", kDate},
};

constexpr Column kAssetColumns[] = {
    {"AssetNum", kText, 6},     {"Division", kText, 16},   {"Department", kText, 16},   {"Description", kText, 32},
    {"Descrip2", kText, 32},    {"SerialNum", kText, 20},  {"Purchased", kDate},        {"CodeSection", kText, 8},
    {"AccountNum", kText, 12},  {"TaxGroup", kText, 6},    {"PictureName", kText, 32},  {"NewUsed", kText, 1},
    {"InService", kDate},       {"AssetType", kText, 2},   {"FairMktValue", kCurrency}, {"FedLife", kInteger},
    {"BusinessUse", kCurrency}, {"ClassLife", kCurrency},  {"Casualty", kBoolean},      {"LikeKind", kBoolean},
    {"Notice4", kBoolean},      {"Abandoned", kBoolean},   {"Sold", kBoolean},          {"PropertyTax", kBoolean},
    {"DateSold", kDate},        {"SoldAmount", kCurrency}, {"SoldExpense", kCurrency},  {"AssocAsset", kText, 6},
};

// Once for each book, the book's number in parentheses behind the name.
constexpr Column kBookColumns[] = {
    {"DeprType", kInteger},      {"DateDeprToo", kDate},    {"DeprMethod", kInteger},   {"Basis", kCurrency},
    {"PrevDepr", kCurrency},     {"CurrDepr", kCurrency},   {"AddlDepr", kCurrency},    {"ADPct", kCurrency},
    {"DeprLimit", kCurrency},    {"Section179", kCurrency}, {"TaxCredit", kCurrency},   {"TaxCreditUsed", kCurrency},
    {"TaxCreditYear", kInteger}, {"Period", kCurrency},     {"SwitchBasis", kCurrency}, {"SwitchYear", kInteger},
    {"SwitchPeriod", kInteger},  {"YearThru", kInteger},    {"DBPercent", kInteger},    {"IRSConvUsed", kText, 1},
    {"Listed", kBoolean},        {"Auto", kBoolean},        {"Agri", kBoolean},         {"Salvage", kCurrency},
};

Field FieldOf(const Column& column, std::string name) {
    const bool allowZeroLength = column.Type == kText && name != "AssetNum";
    return {.Name = std::move(name), .Type = column.Type, .Size = column.Size, .AllowZeroLength = allowZeroLength};
}

std::string BookColumn(std::string_view name, int book) {
    return std::string(name) + "(" + std::to_string(book) + ")";
}

TableDef MakeCompanyTable() {
    TableDef table{.Name = "Company", .Fields = {}, .Indexes = {}};
    for (const Column& column : kCompanyColumns) table.Fields.push_back(FieldOf(column, std::string(column.Name)));
    return table;
}

TableDef MakeAssetsTable() {
    TableDef table{.Name = "Assets", .Fields = {}, .Indexes = {}};
    for (const Column& column : kAssetColumns) table.Fields.push_back(FieldOf(column, std::string(column.Name)));
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        for (const Column& column : kBookColumns) table.Fields.push_back(FieldOf(column, BookColumn(column.Name, book)));
    }
    table.Indexes = {
        {.Name = "AssetNum", .Fields = {"AssetNum"}, .Primary = true, .Required = true},
        {.Name = "InService", .Fields = {"InService"}},
        {.Name = "AccountNum", .Fields = {"AccountNum"}},
        {.Name = "ClassLife", .Fields = {"ClassLife", "InService"}},
        {.Name = "TaxGroup", .Fields = {"TaxGroup", "InService"}},
    };
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        table.Indexes.push_back({.Name = "Method" + std::to_string(book),
                                 .Fields = {BookColumn("Period", book), BookColumn("DeprType", book),
                                            BookColumn("DBPercent", book), BookColumn("DeprMethod", book)}});
    }
    return table;
}

enum class Adds { Field, Index };

struct UpgradeStep {
    std::string_view Table;
    Adds What;
    std::string_view Name;
    std::string_view Message;  // told before the step; mostly nothing
    int TextSize = 0;          // 0: the size that the column has in new files
};

// In the order in which releases added them. TaxGroup came without a size, so old files hold it at the default one.
constexpr UpgradeStep kUpgrade[] = {
    {"Assets", Adds::Field, "TaxGroup", "", recordset::kDefaultTextSize},
    {"Company", Adds::Field, "State", "Field State NOT Found"},
    {"Assets", Adds::Index, "ClassLife", ""},
    {"Assets", Adds::Index, "TaxGroup", ""},
    {"Assets", Adds::Field, "Notice4", ""},
};

void RunStep(recordset::Database& database, const UpgradeStep& step, Prompts& prompts) {
    const TableDef& wanted = step.Table == "Company" ? CompanyTable() : AssetsTable();
    const TableDef present = database.GetTableDef(step.Table);
    if (step.What == Adds::Index) {
        if (present.FindIndex(step.Name) == nullptr) database.CreateIndex(step.Table, *wanted.FindIndex(step.Name));
        return;
    }
    if (present.FindField(step.Name) != nullptr) return;
    if (!step.Message.empty()) prompts.Message(step.Message, "Tallymar");
    Field field = *wanted.FindField(step.Name);
    if (step.TextSize != 0) field.Size = step.TextSize;
    database.CreateField(step.Table, field);
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
    for (const UpgradeStep& step : kUpgrade) {
        try {
            RunStep(database, step, prompts);
        } catch (const PlatformError&) {
            // A file that cannot be brought up to date, such as a read-only one, still opens.
        }
    }
}

}  // namespace tallymar
