#include <iostream>
#include <memory>

#include "assets/NewAsset.h"
#include "cli/Commands.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    bool Numeric = false;
    std::string DeprType;
    std::string DeprMethod;
    std::string NewUsed;
};

void Override(std::string& setting, const std::string& argument) {
    if (!argument.empty()) setting = FromArgument(argument);
}

void Run(const Options& options, Context& context) {
    CompanySession& session = context.Open(options.File);
    NewAssetDefaults defaults = DefaultsOf(session.Profile());
    if (options.Numeric) defaults.NumericNumbers = true;
    Override(defaults.DeprType, options.DeprType);
    Override(defaults.DeprMethod, options.DeprMethod);
    Override(defaults.NewUsed, options.NewUsed);
    std::cout << ToUtf8(AddNewAsset(session, defaults)) << '\n';
}

}  // namespace

void AddNewAssetCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("new-asset", "Add an asset with its starting values and print its number");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_flag("--numeric", options->Numeric, "Count the number on from the last asset; else as the user profile says");
    command->add_option("--default-type", options->DeprType, "Depreciation type, such as MCRS; else the user profile's");
    command->add_option("--default-method", options->DeprMethod, "Depreciation method, such as DB; else the user profile's");
    command->add_option("--default-newused", options->NewUsed, "New or Used; else the user profile's");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
