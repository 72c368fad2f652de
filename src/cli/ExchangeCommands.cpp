#include <iostream>
#include <map>
#include <memory>

#include "cli/Commands.h"
#include "cli/FilePrompts.h"
#include "cli/ImportCheck.h"
#include "interchange/DosExchange.h"
#include "interchange/ExchangeDialogs.h"
#include "interchange/UserExport.h"
#include "interchange/UserImport.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::cli {

namespace {

// A kind of exchange as it is typed, and as the windows name it.
const std::map<std::string, std::string> kKinds = {
    {"company", "Company"}, {"federal", "Federal"}, {"state", "State"}, {"book", "Book"}, {"amt", "AMT"}};

struct Flags {
    std::filesystem::path File;
    std::filesystem::path Data;
    std::filesystem::path Definition;
    std::string Kind = "Federal";
    std::string Duplicates = "update";
    std::string Year;
    std::string Division;
    std::string Department;
    bool AddNew = false;
    bool Check = false;
    bool AllOrNothing = false;
    bool Yes = false;

    ImportEnding Ending() const {
        return Check ? ImportEnding::CheckOnly : AllOrNothing ? ImportEnding::AllOrNothing : ImportEnding::KeepDone;
    }
    ExportOptions Selection() const {
        return {
            .Book = Kind, .Year = FromArgument(Year), .Division = FromArgument(Division), .Department = FromArgument(Department)};
    }
};

void AddFiles(CLI::App& command, Flags& flags, const char* data) {
    command.add_option("FILE", flags.File, "Company file")->required();
    command.add_option("DATA", flags.Data, data)->required();
}

void AddKind(CLI::App& command, Flags& flags, const char* option) {
    command.add_option(option, flags.Kind, "company, federal, state, book or amt")
        ->required()
        ->transform(CLI::Transformer(kKinds, CLI::ignore_case))
        ->check(CLI::IsMember(std::vector<std::string>{"Company", "Federal", "State", "Book", "AMT"}));
}

void AddEnding(CLI::App& command, Flags& flags) {
    CLI::Option* check = command.add_flag("--check", flags.Check, "Say what would fail or be changed, and write nothing");
    command.add_flag("--all-or-nothing", flags.AllOrNothing, "Take the whole file or none of it")->excludes(check);
}

void AddSelection(CLI::App& command, Flags& flags) {
    command.add_option("--year", flags.Year, "Only assets in this year of their life, as of the book's year end");
    command.add_option("--division", flags.Division, "Only assets of this division");
    command.add_option("--department", flags.Department, "Only assets of this department");
    command.add_flag("--yes", flags.Yes, "Replace a file that is there without asking");
}

// An export asks before it replaces the file, once it is known that there is something to write.
void RequireMayWrite(CompanySession& session, const Flags& flags, Context& context) {
    ExportYearEnd(session, flags.Kind);
    FilePrompts asking(context.Asking(), flags.File, flags.Data, flags.Yes);
    if (!asking.AskSaveFile(ExportDialog(session, flags.Kind))) throw PlatformError(Failure::InvalidCall, "Nothing was written");
}

void PrintCounts(const std::vector<CountLine>& lines) {
    for (const CountLine& line : lines) std::cout << line.Label << " = " << line.Count << '\n';
}

}  // namespace

void AddImportCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<Flags>();
    CLI::App* command = app.add_subcommand("import", "Import assets in the layout of a definition file");
    AddFiles(*command, *flags, "Comma-delimited file to read");
    AddKind(*command, *flags, "--book");
    command->add_option("--definition", flags->Definition, "Definition file, such as ImpDef1.Dat")->required();
    command->add_flag("--add-new", flags->AddNew, "Add assets whose number is taken under a DUP number");
    AddEnding(*command, *flags);
    command->callback([flags, &context] {
        const UserImportOptions options{.Definition = FieldDefinition::Load(flags->Definition),
                                        .Book = flags->Kind,
                                        .AddNew = flags->AddNew,
                                        .Ending = flags->Ending()};
        const ImportCounts counts = UserImport(context.Open(flags->File), options, flags->Data);
        if (flags->Check) return EndCheck(counts);
        std::cout << UserImportDoneText(counts) << '\n';
    });
}

void AddExportCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<Flags>();
    CLI::App* command = app.add_subcommand("export", "Export assets in the layout of a definition file");
    AddFiles(*command, *flags, "Comma-delimited file to write");
    AddKind(*command, *flags, "--book");
    command->add_option("--definition", flags->Definition, "Definition file, such as ExpDef1.Dat")->required();
    AddSelection(*command, *flags);
    command->callback([flags, &context] {
        const FieldDefinition definition = FieldDefinition::Load(flags->Definition);
        CompanySession& session = context.Open(flags->File);
        RequireMayWrite(session, *flags, context);
        const ExportCounts counts = UserExport(session, definition, flags->Selection(), flags->Data, context.Asking());
        std::cout << UserExportDoneText(counts) << '\n';
    });
}

void AddExchangeCommand(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("exchange", "Exchange assets with the DOS edition");
    command->require_subcommand(1);

    auto in = std::make_shared<Flags>();
    CLI::App* import = command->add_subcommand("import", "Read a company file ASSETCTL with its AASCII, or an asset file");
    AddFiles(*import, *in, "File to read");
    AddKind(*import, *in, "--type");
    import->add_option("--duplicates", in->Duplicates, "update or add")->check(CLI::IsMember({"update", "add"}));
    AddEnding(*import, *in);
    import->callback([in, &context] {
        const DosImportOptions options{.Type = in->Kind, .AddNew = in->Duplicates == "add", .Ending = in->Ending()};
    const auto counts = DosImport(context.Open(in->File), options, in->Data, context.Asking());
    if (!counts) throw PlatformError(Failure::InvalidCall, "The company's profile was taken, but no assets");
    if (in->Check) return EndCheck(*counts);
    PrintCounts(CountLines(*counts));
});

auto out = std::make_shared<Flags>();
CLI::App* exporting = command->add_subcommand("export", "Write them");
AddFiles(*exporting, *out, "File to write");
AddKind(*exporting, *out, "--type");
AddSelection(*exporting, *out);
exporting->callback([out, &context] {
    CompanySession& session = context.Open(out->File);
    RequireMayWrite(session, *out, context);
    const auto counts = DosExport(session, out->Selection(), out->Data, context.Asking());
    if (!counts) throw PlatformError(Failure::InvalidCall, "The company file was written, but no assets");
    PrintCounts(CountLines(*counts));
});
}  // namespace tallymar::cli

}  // namespace tallymar::cli
