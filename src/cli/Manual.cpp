#include "cli/Manual.h"

#include <string>
#include <vector>

#include "platform/runtime/Version.h"

namespace tallymar::cli {

namespace {

std::vector<const CLI::App*> Commands(const CLI::App& app) {
    std::vector<const CLI::App*> commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        if (!command->get_group().empty()) commands.push_back(command);  // those without a group are not for users
    }
    return commands;
}

std::vector<const CLI::Option*> Options(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

// A hyphen is typed, a leading point or apostrophe would be a request of the formatter.
std::string Roff(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '-') {
            out += "\\-";
        } else if (c == '\\') {
            out += "\\e";
        } else {
            out += c == '\n' ? ' ' : c;
        }
    }
    if (out.starts_with('.') || out.starts_with('\'')) out.insert(0, "\\&");
    return out;
}

// "--book VALUE" or, of what is told by its place, "FILE".
std::string Usage(const CLI::Option& option) {
    std::string usage = option.get_name(false, true);
    if (!option.get_positional() && option.get_type_size() != 0) usage += ' ' + option.get_type_name();
    return usage;
}

void WriteOptions(const CLI::App& app, std::ostream& out) {
    for (const CLI::Option* option : Options(app)) {
        if (app.get_parent() != nullptr && option == app.get_help_ptr()) continue;  // told once
        out << ".TP\n.B " << Roff(Usage(*option)) << '\n' << Roff(option->get_description()) << '\n';
    }
}

void WriteCommand(const CLI::App& command, const std::string& before, std::ostream& out) {
    const std::string name = before + command.get_name();
    std::string usage = name;
    for (const CLI::Option* option : Options(command)) {
        if (option->get_positional()) usage += ' ' + option->get_name(true, false);
    }
    out << ".SS " << Roff(usage) << '\n' << Roff(command.get_description()) << ".\n";
    WriteOptions(command, out);
    for (const CLI::App* below : Commands(command)) WriteCommand(*below, name + ' ', out);
}

// The words that may stand at this place of the line: commands and options.
void WriteWords(const CLI::App& app, const std::string& path, std::ostream& out) {
    out << "        '" << path << "') words='";
    for (const CLI::App* command : Commands(app)) out << command->get_name() << ' ';
    for (const CLI::Option* option : Options(app)) {
        for (const std::string& name : option->get_lnames()) out << "--" << name << ' ';
    }
    out << "' ;;\n";
    for (const CLI::App* command : Commands(app)) WriteWords(*command, path + ' ' + command->get_name(), out);
}

void WritePaths(const CLI::App& app, const std::string& path, std::ostream& out) {
    for (const CLI::App* command : Commands(app)) {
        const std::string below = path + ' ' + command->get_name();
        out << "'" << below << "'|";
        WritePaths(*command, below, out);
    }
}

}  // namespace

void WriteManual(const CLI::App& app, std::ostream& out) {
    const std::string name = app.get_name();
    out << ".TH TALLYMAR\\-CLI 1 \"\" \"Tallymar " << ProgramVersion() << "\" \"Tallymar\"\n"
        << ".SH NAME\n"
        << Roff(name) << " \\- fixed assets and depreciation of client companies, without a window\n"
        << ".SH SYNOPSIS\n.B " << Roff(name) << "\n[\\fIoptions\\fR] \\fIcommand\\fR [\\fIarguments\\fR]\n"
        << ".SH DESCRIPTION\n"
        << Roff(
               "Whatever the windows of tallymar can do, by commands: for scripts, and for many clients at once. Company files "
               "are the same, and so is every figure.")
        << "\n.SH OPTIONS\n";
    WriteOptions(app, out);
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : Commands(app)) WriteCommand(*command, {}, out);
    out << ".SH EXIT STATUS\n0, or 1 with one line on standard error that says what was wrong.\n"
        << ".SH ENVIRONMENT\n.TP\n.B XDG_DATA_HOME\nholds the folder of the settings and backups, tallymar.\n"
        << ".SH SEE ALSO\n.BR tallymar (1)\n";
}

void WriteCompletion(const CLI::App& app, std::ostream& out) {
    out << "# bash completion of tallymar-cli\n"
           "_tallymar_cli() {\n"
           "    local path='' word words=''\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case \"$path $word\" in ";
    WritePaths(app, "", out);
    out << "'') path+=\" $word\" ;; esac\n"
           "    done\n"
           "    case \"$path\" in\n";
    WriteWords(app, "", out);
    out << "    esac\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\"))\n"
           "}\n"
           "complete -o default -F _tallymar_cli tallymar-cli\n";
}

}  // namespace tallymar::cli
