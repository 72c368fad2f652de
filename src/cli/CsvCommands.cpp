#include <iostream>
#include <memory>
#include <vector>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "interchange/AssetCsv.h"
#include "platform/runtime/FileIdentity.h"

namespace tallymar::cli {

namespace {

struct LoadOptions {
    std::filesystem::path File;
    std::filesystem::path Csv;
};

struct DumpOptions {
    std::filesystem::path File;
    std::vector<std::string> Columns;
};

}  // namespace

void AddLoadCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<LoadOptions>();
    CLI::App* command = app.add_subcommand("load", "Add or rewrite assets from a CSV");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("CSV", options->Csv, "CSV whose header names columns of the assets")->required();
    command->callback([options, &context] {
        RequireApart(options->Csv, options->File);
        CompanySession& session = context.Open(options->File);
        const CsvCounts counts = LoadAssets(session.Database(), session.AssetsRecordset(), options->Csv);
        std::cout << "Assets added: " << counts.Added << ", rewritten: " << counts.Rewritten << '\n';
    });
}

void AddDumpCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<DumpOptions>();
    CLI::App* command = app.add_subcommand("dump", "Print every asset as a CSV");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("--columns", options->Columns, "Columns to print, separated by commas; all of them unless named")
        ->delimiter(',');
    command->callback([options, &context] {
        std::vector<std::string> columns;
        for (const std::string& column : options->Columns) columns.push_back(FromArgument(column));
        CompanySession& session = context.Open(options->File);
        PrintWhole([&](const auto& write) {
            const recordset::ReadSnapshot snapshot(session.Database());
            DumpAssets(session.AssetsRecordset(), columns, write);
        });
    });
}

}  // namespace tallymar::cli
