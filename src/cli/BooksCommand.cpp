#include <iostream>
#include <memory>

#include "assets/AllBooks.h"
#include "assets/AssetRecordFields.h"
#include "assets/FieldRules.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "store/Books.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::string AssetNum;
};

void Run(const Options& options, Context& context) {
    CompanySession& session = context.Open(options.File);
    SeekAsset(session, options.AssetNum);
    AssetRecord record;
    session.ReadAssetRecord(record);
    AssetFieldValues values;
    RecordToFields(record, values);
    for (int book = kFirstBook; book <= kLastBook; ++book) ComputeAdjBasis(values, book);

    std::vector<TextTable::Align> columns(kLastBook + 1, TextTable::Align::Right);
    columns.front() = TextTable::Align::Left;
    TextTable table(std::move(columns));
    std::vector<std::string> heads = {values.AssetNum};
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        heads.push_back(std::string(BookOf(book).ShortName) + (DifferenceFromFederal(values, book).empty() ? "" : "*"));
    }
    table.AddRow(std::move(heads));
    for (const AllBooksRow& row : AllBooks(values)) {
        std::vector<std::string> cells = {row.Label};
        for (int book = kFirstBook; book <= kLastBook; ++book) cells.push_back(row.Texts[book]);
        table.AddRow(std::move(cells));
    }
    table.Print(std::cout);
}

}  // namespace

void AddBooksCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand(
        "books",
        "Print the four books of one asset side by side; * after a book whose method, life, convention or basis differs");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("ASSETNUM", options->AssetNum, "Number of the asset")->required();
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
