#pragma once

#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

#include "engine/ADepre.h"
#include "platform/prompts/Prompts.h"
#include "platform/runtime/Trace.h"
#include "store/CompanySession.h"
#include "store/UserProfile.h"

// The commands of the command line tool. Each Add... puts one command with its options before the user; what it does is in the
// body that the windows use too.
namespace tallymar::cli {

// What every command works with. The session is opened by the command; the settings of the user profile are read, never written.
class Context {
 public:
    explicit Context(Prompts& prompts) : prompts_(prompts) {}

    std::filesystem::path TracePath;      // --trace; empty: none
    std::filesystem::path AppPathOption;  // --app-path; empty: found as the windows find it

    Prompts& Asking() { return prompts_; }
    CompanySession& Session();  // made on first use
    const AppPath& Paths() { return Session().Paths(); }
    ADepre& Engine();
    // The company open for the command. Refused when what the command prints would go into it.
    CompanySession& Open(const std::filesystem::path& file);
    // Ends a command whose file is one of the old program and was not to be converted.
    [[noreturn]] static void RefuseUnconverted(const std::filesystem::path& file);

 private:
    Prompts& prompts_;
    UserProfile profile_;
    std::unique_ptr<Trace> trace_;
    std::unique_ptr<CompanySession> session_;
    std::unique_ptr<ADepre> engine_;
};

void AddNewCommand(CLI::App& app, Context& context);
void AddCompanyCommand(CLI::App& app, Context& context);
void AddConvertCommand(CLI::App& app, Context& context);
void AddLoadCommand(CLI::App& app, Context& context);
void AddDumpCommand(CLI::App& app, Context& context);
void AddComputeCommand(CLI::App& app, Context& context);
void AddBuildCommand(CLI::App& app, Context& context);
void AddBooksCommand(CLI::App& app, Context& context);
void AddFindCommand(CLI::App& app, Context& context);
void AddCopyCommand(CLI::App& app, Context& context);
void AddNewAssetCommand(CLI::App& app, Context& context);
void AddReportCommand(CLI::App& app, Context& context);
void AddPostCommand(CLI::App& app, Context& context);
void AddLabelsCommand(CLI::App& app, Context& context);
void AddFormCommand(CLI::App& app, Context& context);
void AddFormPdfCommand(CLI::App& app, Context& context);
void AddFormPrintCommand(CLI::App& app, Context& context);
void AddSoftFontsCommand(CLI::App& app, Context& context);
void AddPrinterCommand(CLI::App& app, Context& context);
void AddFormFieldsCommand(CLI::App& app, Context& context);
void AddFormSetCommand(CLI::App& app, Context& context);
void AddLoanCommand(CLI::App& app, Context& context);
void AddChangeDeptCommand(CLI::App& app, Context& context);
void AddChangeRangeCommand(CLI::App& app, Context& context);
void AddSetBooksCommand(CLI::App& app, Context& context);
void AddResequenceCommand(CLI::App& app, Context& context);
void AddBackupCommand(CLI::App& app, Context& context);
void AddRestoreCommand(CLI::App& app, Context& context);
void AddDeleteCommand(CLI::App& app, Context& context);
void AddImportCommand(CLI::App& app, Context& context);
void AddExportCommand(CLI::App& app, Context& context);
void AddExchangeCommand(CLI::App& app, Context& context);
void AddLawCommand(CLI::App& app, Context& context);

// A new command is one row here.
using AddCommand = void (*)(CLI::App&, Context&);
inline constexpr AddCommand kCommands[] = {
    AddNewCommand,        AddCompanyCommand, AddConvertCommand, AddLoadCommand,       AddDumpCommand,        AddComputeCommand,
    AddBuildCommand,      AddFindCommand,    AddCopyCommand,    AddNewAssetCommand,   AddReportCommand,      AddPostCommand,
    AddLabelsCommand,     AddFormCommand,    AddFormPdfCommand, AddFormPrintCommand,  AddSoftFontsCommand,   AddPrinterCommand,
    AddFormFieldsCommand, AddFormSetCommand, AddLoanCommand,    AddChangeDeptCommand, AddChangeRangeCommand, AddSetBooksCommand,
    AddResequenceCommand, AddBackupCommand,  AddRestoreCommand, AddDeleteCommand,     AddImportCommand,      AddExportCommand,
    AddExchangeCommand,   AddLawCommand,
};

// A text of the command line as the program keeps text. Failure::InvalidCall when it holds a character that a company file
// cannot.
std::string FromArgument(const std::string& argument);
// Makes the asset of that number, as typed on the command line, the current row. Failure::InvalidCall when there is none.
void SeekAsset(CompanySession& session, const std::string& argument);

}  // namespace tallymar::cli
