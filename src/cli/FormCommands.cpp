#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "irsforms/IrsForm.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

struct Flags {
    std::string Form;
    std::filesystem::path File;
    FormOptions Options;
    std::filesystem::path Out;
    std::filesystem::path Json;
};

void Run(const Flags& flags, Context& context) {
    RequireOutput(flags.Json, flags.File);
    std::optional<TextOutput> json;
    if (!flags.Json.empty()) json.emplace(flags.Json);
    std::unique_ptr<IrsForm> form = MakeForm(flags.Form);
    FormOptions options = flags.Options;
    for (std::string* text : {&options.Type, &options.Division, &options.Department}) *text = FromArgument(*text);
    options.Type = EntityType(options.Type);  // before a folder is made
    CompanySession& session = context.Open(flags.File);
    const std::filesystem::path folder = flags.Out.empty() ? session.Paths().Folder() : flags.Out;
    std::error_code ignored;  // a folder that cannot be made is told by the file that cannot be written into it
    std::filesystem::create_directories(folder, ignored);
    const FormResult result = CreateForm(form, session, options, folder, context.Asking());
    if (json) {
        json->Write(FormJson(*form, result, options));
        json->Finish();
        json->PutInPlace();
    }
    std::cout << ToUtf8(result.Message) << '\n';
    for (const std::string& note : FormNotes(*form, result)) std::cout << ToUtf8(note) << '\n';
}

std::vector<std::string> FormNames() {
    std::vector<std::string> names;
    for (const FormInfo* form : AllForms()) names.emplace_back(form->Name);
    return names;
}

}  // namespace

void AddFormCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<Flags>();
    CLI::App* command = app.add_subcommand("form", "Create an IRS form: its pages and its work file");
    command->add_option("FORM", flags->Form, "Form")->required()->check(CLI::IsMember(FormNames()));
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--book", flags->Options.Book, "1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T.")
        ->required()
        ->check(CLI::Range(kFirstBook, kLastBook));
    command->add_option("--type", flags->Options.Type, "Entity type of the return: 1040, 1041, 1120, 1120S or 1065");
    command->add_option("--division", flags->Options.Division, "Only assets of this division");
    command->add_option("--department", flags->Options.Department, "Only assets of this department");
    command->add_option("--out", flags->Out, "Folder for the pages; the program's own");
    command->add_option("--json", flags->Json, "Also write what the form computed, for a tax package to take in");
    command->callback([flags, &context] { Run(*flags, context); });
}

}  // namespace tallymar::cli
