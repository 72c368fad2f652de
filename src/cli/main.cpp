#include <iostream>
#include <new>

#include "cli/Commands.h"
#include "cli/Manual.h"
#include "cli/Output.h"
#include "cli/TerminalPrompts.h"
#include "platform/runtime/Version.h"
#include "platform/runtime/Windows1252.h"

namespace {

// One clear line, whatever the failure's own text looks like. The text is Windows-1252.
int Fail(std::string text) {
    for (char& c : text) {
        if (tallymar::IsControl(c)) c = ' ';
    }
    std::cerr << "tallymar-cli: " << tallymar::ToUtf8(text) << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace tallymar::cli;

    TerminalPrompts prompts;
    Context context(prompts);

    CLI::App app("Fixed assets and depreciation of client companies, without a window", "tallymar-cli");
    app.require_subcommand(1);
    app.set_version_flag("--version", "Tallymar " + std::string(tallymar::ProgramVersion()));
    app.fallthrough();
    app.add_option("--trace", context.TracePath, "Write what is done with the company into this file; - is standard error");
    app.add_option("--app-path", context.AppPathOption, "Folder of Assets1.dat and the depreciation tables");
    for (const AddCommand add : kCommands) add(app, context);
    // For the installation, without a group: no user needs them.
    app.add_flag_callback("--write-manual",
                          [&app] {
                              WriteManual(app, std::cout);
                              throw CLI::Success();
                          })
        ->group("");
    app.add_flag_callback("--write-completion",
                          [&app] {
                              WriteCompletion(app, std::cout);
                              throw CLI::Success();
                          })
        ->group("");

    try {
        app.parse(argc, argv);
        FlushStandardOutput();
        return 0;
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> unknown = app.remaining();
        if (app.get_subcommands().empty() && !unknown.empty()) {
            return Fail("There is no command \"" + tallymar::FromUtf8(unknown.front()) + "\"; --help names them all");
        }
        return Fail(tallymar::FromUtf8(error.what()));
    } catch (const tallymar::PlatformError& failure) {
        return Fail(failure.what());
    } catch (const std::bad_alloc&) {
        return Fail("There is not enough memory");
    } catch (const std::exception& failure) {
        return Fail(failure.what());
    }
}
