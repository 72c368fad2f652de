#include <iostream>
#include <memory>

#include "assets/DeprBuild.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "interchange/FieldText.h"
#include "store/Books.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::string AssetNum;
    bool Save = false;
    bool Csv = false;
};

void PrintText(const DeprBuildGrid& grid) {
    std::vector<TextTable::Align> columns(DeprBuildGrid::kColumns, TextTable::Align::Right);
    columns.front() = TextTable::Align::Left;
    TextTable table(std::move(columns));
    for (int row = 0; row < grid.RowCount(); ++row) {
        std::vector<std::string> cells;
        for (int column = 0; column < DeprBuildGrid::kColumns; ++column) cells.push_back(grid.Cell(row, column));
        table.AddRow(std::move(cells));
    }
    table.Print(std::cout);
}

void PrintCsv(const DeprBuildGrid& grid) {
    std::string csv = "YearEnding";
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        csv += ",Previous(" + std::to_string(book) + "),Current(" + std::to_string(book) + ")";
    }
    csv += "\r\n";
    for (const DeprBuildRow& year : grid.Rows()) {
        AppendFieldText(year.YearEnding, csv);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            csv += ',' + year.PrevDepr[book].ToText() + ',' + year.CurrDepr[book].ToText();
        }
        csv += "\r\n";
    }
    std::cout << csv;
}

void Run(const Options& options, Context& context) {
    CompanySession& session = context.Open(options.File);
    SeekAsset(session, options.AssetNum);
    const Date yearEnd = session.FiscalYearEnd(kFirstBook);
    if (!CanBuild(yearEnd)) throw PlatformError(Failure::InvalidCall, std::string(kYearEndsMissing));
    AssetRecord record;
    session.ReadAssetRecord(record);
    ADepre& engine = context.Engine();
    engine.BeginRun(session.RoundText(), session.LimitsByLaw());
    DeprBuildGrid grid;
    BuildDepreciation(record, yearEnd, engine, grid);
    if (options.Save) session.WriteAssetRecord(record);
    if (options.Csv) {
        PrintCsv(grid);
    } else {
        PrintText(grid);
    }
}

}  // namespace

void AddBuildCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("build", "Depreciate one asset year by year from its date in service");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("ASSETNUM", options->AssetNum, "Number of the asset")->required();
    command->add_flag("--save", options->Save, "Store the state of the last year in the asset");
    command->add_flag("--csv", options->Csv, "Print the years as a CSV");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
