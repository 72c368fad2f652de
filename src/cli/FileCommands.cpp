#include <iostream>
#include <memory>

#include "batch/CompanyFiles.h"
#include "cli/Commands.h"
#include "cli/FilePrompts.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::filesystem::path Target;
    bool Yes = false;
};

using FileCommand = std::string (*)(CompanySession& session, Prompts& prompts);

void Add(CLI::App& app, Context& context, const char* name, const char* description, FileCommand run, const char* target,
         bool targetRequired) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand(name, description);
    command->add_option("FILE", options->File, "Company file")->required();
    if (target != nullptr) command->add_option("TARGET", options->Target, target)->required(targetRequired);
    command->add_flag("--yes", options->Yes, "Answer every question with Yes");
    command->callback([options, &context, run] {
        const auto given = options->Target.empty() ? std::nullopt : std::optional(options->Target);
        FilePrompts prompts(context.Asking(), options->File, given, options->Yes);
        const std::string done = run(context.Session(), prompts);
        if (done.empty()) throw PlatformError(Failure::InvalidCall, "Nothing was done");
        std::cout << ToUtf8(done) << '\n';
    });
}

}  // namespace

void AddBackupCommand(CLI::App& app, Context& context) {
    Add(app, context, "backup", "Copy a company file, by preference into the Backup folder", BackupCompany,
        "File to make; one of the same name in the Backup folder", false);
}

void AddRestoreCommand(CLI::App& app, Context& context) {
    Add(app, context, "restore", "Copy a backup back", RestoreCompany, "Company file to make or replace", true);
}

void AddDeleteCommand(CLI::App& app, Context& context) {
    Add(app, context, "delete", "Delete a company file", DeleteCompany, nullptr, false);
}

}  // namespace tallymar::cli
