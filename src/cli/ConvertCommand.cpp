#include <iostream>
#include <memory>

#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "interchange/ConvertCompany.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

void Run(const ConvertOptions& options, Context& context) {
    ConvertedCompany converted;
    try {
        converted = ConvertCompany(options, context.Asking());
    } catch (const TextNotHeld& failure) {
        throw PlatformError(failure.Code(), std::string(failure.what()) + "; --replace writes \"?\" in their place");
    }
    TextTable table({TextTable::Align::Left, TextTable::Align::Right, TextTable::Align::Right});
    table.AddRow({"", FromUtf8(options.Old.string()), FromUtf8(options.New.string())});
    for (const ConvertedCompany::Line& line : converted.Lines) table.AddRow({line.What, line.Old, line.New});
    table.Print(std::cout);
    if (!converted.Agrees) throw PlatformError(Failure::DeviceError, converted.Summary(options));
    std::cout << ToUtf8(converted.Summary(options)) << '\n';
}

}  // namespace

void AddConvertCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = app.add_subcommand("convert", "Make a company of a company file of the old program (Jet 3 or 4)");
    command->add_option("OLD", options->Old, "The old program's file; it is only read")->required();
    command->add_option("NEW", options->New, "Company file to create")->required();
    command->add_flag("--replace", options->Replace, "Write \"?\" for each character that a company cannot hold");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
