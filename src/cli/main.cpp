#include <iostream>

#include "cli/Commands.h"
#include "cli/TerminalPrompts.h"
#include "platform/runtime/Windows1252.h"

namespace {

// One clear line, whatever the failure's own text looks like.
int Fail(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    std::cerr << "tallymar-cli: " << text << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace tallymar::cli;

    TerminalPrompts prompts;
    Context context(prompts);

    CLI::App app("Fixed assets and depreciation of client companies, without a window", "tallymar-cli");
    app.require_subcommand(1);
    app.set_version_flag("--version", "Tallymar " TALLYMAR_VERSION);
    app.fallthrough();
    app.add_option("--trace", context.TracePath, "Write what is done with the company into this file; - is standard error");
    app.add_option("--app-path", context.AppPathOption, "Folder of Assets1.dat and the depreciation tables");
    AddNewCommand(app, context);
    AddCompanyCommand(app, context);
    AddConvertCommand(app, context);
    AddLoadCommand(app, context);
    AddDumpCommand(app, context);
    AddComputeCommand(app, context);
    AddBuildCommand(app, context);
    AddFindCommand(app, context);
    AddCopyCommand(app, context);
    AddNewAssetCommand(app, context);
    AddReportCommand(app, context);
    AddPostCommand(app, context);
    AddLabelsCommand(app, context);
    AddFormCommand(app, context);
    AddLoanCommand(app, context);
    AddChangeDeptCommand(app, context);
    AddChangeRangeCommand(app, context);
    AddSetBooksCommand(app, context);
    AddResequenceCommand(app, context);
    AddBackupCommand(app, context);
    AddRestoreCommand(app, context);
    AddDeleteCommand(app, context);
    AddImportCommand(app, context);
    AddExportCommand(app, context);
    AddExchangeCommand(app, context);

    try {
        app.parse(argc, argv);
        std::cout.flush();
        if (!std::cout) return Fail("the output could not be written");
        return 0;
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> unknown = app.remaining();
        if (app.get_subcommands().empty() && !unknown.empty()) {
            return Fail("There is no command \"" + unknown.front() + "\"; --help names them all");
        }
        return Fail(error.what());
    } catch (const tallymar::PlatformError& failure) {
        return Fail(tallymar::ToUtf8(failure.what()));
    } catch (const std::exception& failure) {
        return Fail(failure.what());
    }
}
