#include <array>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/Commands.h"
#include "cli/TerminalPrompts.h"
#include "loans/LoanFile.h"
#include "loans/LoanPages.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

namespace fs = std::filesystem;

struct LoanFlags {
    std::array<std::optional<std::string>, kLoanBoxCount> Texts;  // as given; the others are the file's or the defaults
    fs::path File;
    fs::path Save;
    bool Yes = false;
    fs::path Out;
};

// What the window tells and stays open ends the command; what it asks has been said by giving the command.
class LoanPrompts : public TerminalPrompts {
 public:
    explicit LoanPrompts(bool yes) : yes_(yes) {}

    void Message(std::string_view text, std::string_view, MessageKind) override {
        throw PlatformError(Failure::InvalidCall, std::string(text));
    }
    bool AskYesNo(std::string_view text, std::string_view title) override {
        return yes_ || TerminalPrompts::AskYesNo(text, title);
    }

 private:
    bool yes_;
};

Loan LoanOf(const LoanFlags& flags) {
    Loan loan;
    if (!flags.File.empty()) loan.SetTexts(OpenLoanFile(flags.File));
    for (const LoanBoxInfo& info : kLoanBoxes) {
        const auto& given = flags.Texts.at(static_cast<std::size_t>(info.Box));
        if (!given) continue;
        const std::string text = FromArgument(*given);
        if (text.size() > kLongestLoanText) {
            throw PlatformError(Failure::InvalidCall, std::string(info.Option) + ": the text is too long");
        }
        loan.SetText(info.Box, text);
    }
    return loan;
}

void SaveLoan(const Loan& loan, const LoanFlags& flags) {
    if (flags.Save.empty()) return;
    LoanPrompts prompts(flags.Yes);
    if (!CloseLoanFile(flags.Save, loan.Texts(), prompts)) throw PlatformError(Failure::InvalidCall, "Nothing was saved");
}

void RunSolve(const LoanFlags& flags) {
    Loan loan = LoanOf(flags);
    loan.Solve();
    SaveLoan(loan, flags);
    for (const LoanBoxInfo& info : kLoanBoxes) std::cout << info.Control << '=' << ToUtf8(loan.Text(info.Box)) << '\n';
    if (!loan.Note().empty()) std::cerr << loan.Note() << '\n';
}

void RunSchedule(const LoanFlags& flags) {
    Loan loan = LoanOf(flags);
    LoanPrompts prompts(true);
    const std::shared_ptr<PrintedDocument> document = PrintLoan(loan, prompts);
    DeliverToFile(document->Pages, document->Details, flags.Out);
    SaveLoan(loan, flags);
}

void AddTerms(CLI::App& command, LoanFlags& flags) {
    for (const LoanBoxInfo& info : kLoanBoxes) {
        if (info.Option.empty()) continue;
        std::string description(info.Label);
        if (!info.Default.empty()) description += "; " + std::string(info.Default);
        command.add_option(std::string(info.Option), flags.Texts.at(static_cast<std::size_t>(info.Box)), description);
    }
    command.add_option("--file", flags.File, "Loan file to start from, in place of these defaults");
    command.add_option("--save", flags.Save, "Loan file to write");
    command.add_flag("--yes", flags.Yes, "Overwrite an existing loan file without asking");
}

}  // namespace

void AddLoanCommand(CLI::App& app, Context&) {
    CLI::App* loan = app.add_subcommand("loan", "Solve a loan and print its schedule");
    loan->require_subcommand(1);

    auto solving = std::make_shared<LoanFlags>();
    CLI::App* solve =
        loan->add_subcommand("solve", "Compute the payment, number of periods, rate or amount that is blank, in this order");
    AddTerms(*solve, *solving);
    solve->callback([solving] { RunSolve(*solving); });

    auto printing = std::make_shared<LoanFlags>();
    CLI::App* schedule = loan->add_subcommand(
        "schedule", "Print the schedule of a loan, its payment computed when it is blank; of additions when it is 0 or less");
    AddTerms(*schedule, *printing);
    schedule->add_option("--out", printing->Out, "File to write: .pdf, .txt, .csv or .xlsx")->required();
    schedule->callback([printing] { RunSchedule(*printing); });
}

}  // namespace tallymar::cli
