#include <iostream>
#include <memory>

#include "assets/CopyAsset.h"
#include "cli/Commands.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::string AssetNum;
    std::string Prefix;
    int Count = 1;
};

// Each copy has been asked for on the command line.
class EveryYes : public Prompts {
 public:
    explicit EveryYes(Prompts& prompts) : prompts_(prompts) {}

    void Message(std::string_view text, std::string_view title, MessageKind kind) override {
        prompts_.Message(text, title, kind);
    }
    bool AskYesNo(std::string_view, std::string_view) override { return true; }
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog& dialog) override { return prompts_.AskOpenFile(dialog); }
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog& dialog) override { return prompts_.AskSaveFile(dialog); }
    void ProgressStart(std::int64_t maximum) override { prompts_.ProgressStart(maximum); }
    void ProgressStep(std::int64_t value) override { prompts_.ProgressStep(value); }

 private:
    Prompts& prompts_;
};

std::string PrefixOf(const Options& options) {
    const std::string prefix = UCase(FromArgument(options.Prefix));
    RequireNumberPrefix(prefix);
    return prefix;
}

void Run(const Options& options, Context& context) {
    const std::string prefix = PrefixOf(options);
    CompanySession& session = context.Open(options.File);
    SeekAsset(session, options.AssetNum);
    EveryYes yes(context.Asking());
    // Nobody is asked between the copies, so they can be all or none.
    const auto added = recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        return StartCopy(session, {.Copies = std::to_string(options.Count), .Prefix = prefix, .AssetNumber = {}}, yes);
    });
    for (const std::string& number : added) std::cout << ToUtf8(number) << '\n';
}

}  // namespace

void AddCopyCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("copy", "Copy one asset under new numbers");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("ASSETNUM", options->AssetNum, "Number of the asset to copy")->required();
    command->add_option("--prefix", options->Prefix, "What the new numbers begin with")->required();
    command->add_option("--count", options->Count, "How many copies")->required()->check(CLI::Range(1, 999999));
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
