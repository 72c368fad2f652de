#include <iostream>
#include <memory>

#include "assets/FindAssets.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::string Search;
    std::string Sort;
    bool Descending = false;
    bool ByDate = false;
    bool ByGLNumber = false;
};

std::string HeadingsOf(const FindColumns& columns) {
    std::string headings;
    for (int column = 0; column < FindColumns::kCount; ++column) {
        headings += (column == 0 ? "\"" : ", \"") + std::string(columns.Heading(column)) + "\"";
    }
    return headings;
}

void Run(const Options& options, Context& context) {
    FindAssets found(context.Open(options.File), options.ByDate, options.ByGLNumber);
    found.FillAll();
    found.Search(FromArgument(options.Search));
    if (!options.Sort.empty() || options.Descending) {
        const auto column = options.Sort.empty() ? 0 : found.Columns().Find(FromArgument(options.Sort));
        if (!column) {
            throw PlatformError(Failure::ItemNotFound, "There is no column \"" + options.Sort + "\" to sort by; there are " +
                                                           HeadingsOf(found.Columns()));
        }
        found.Sort(*column, !options.Descending);
    }

    TextTable table(std::vector<TextTable::Align>(FindColumns::kCount, TextTable::Align::Left));
    std::vector<std::string> cells(FindColumns::kCount);
    for (int column = 0; column < FindColumns::kCount; ++column)
        cells[static_cast<std::size_t>(column)] = found.Columns().Heading(column);
    table.AddRow(cells);
    for (int row = 0; row < found.RowCount(); ++row) {
        for (int column = 0; column < FindColumns::kCount; ++column)
            cells[static_cast<std::size_t>(column)] = found.Cell(row, column);
        table.AddRow(cells);
    }
    table.Print(std::cout);
}

}  // namespace

void AddFindCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("find", "List the assets; (*) after a number marks one sold or otherwise disposed of");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("--search", options->Search,
                        "Only assets that have these words in their number, description, serial or G/L number");
    command->add_option("--sort", options->Sort, "Column to sort by, by its heading or name: \"Asset #\" or AssetNum");
    command->add_flag("--descending", options->Descending, "Sort from the greatest down");
    command->add_flag("--date", options->ByDate, "Show dates in service");
    command->add_flag("--gl", options->ByGLNumber, "Show general ledger numbers");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
