#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/TerminalPrompts.h"
#include "platform/page/Delivery.h"
#include "platform/page/PageItems.h"
#include "platform/page/PageText.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "reports/AssetLabels.h"
#include "reports/ReportTable.h"
#include "reports/Reports.h"

namespace tallymar::cli {

namespace {

namespace fs = std::filesystem;

struct OutputFlags {
    fs::path Out;
    fs::path Items;
};

struct ReportFlags {
    fs::path File;
    std::string Name = "post";
    OutputFlags Output;
    int Book = 0;  // 0: the form's own choice
    std::string Sequence;
    std::string Division;
    std::string Department;
    std::string CodeSection;
    std::string From;
    std::string To;
    std::string ReportDate;
    std::vector<std::string> PriorYear;
    bool DoubleSpace = false;
    bool SecondLine = false;
    std::optional<bool> Investments;
    std::optional<bool> Include179;
    bool GroupAndYear = false;
    std::string Now;
    bool Post = false;
    bool Yes = false;
};

Date DateArgument(const std::string& text, std::string_view option) {
    const std::string argument = FromArgument(text);
    std::optional<Date> date = ParseIsoDate(argument);
    if (!date) date = ParseDate(argument);
    if (!date) throw PlatformError(Failure::InvalidCall, std::string(option) + ": \"" + argument + "\" is no date");
    return *date;
}

std::optional<Date> OptionalDate(const std::string& text, std::string_view option) {
    return text.empty() ? std::nullopt : std::optional<Date>(DateArgument(text, option));
}

ReportOptions OptionsOf(const ReportFlags& flags, Date now) {
    const Date today = Date::FromSerial(static_cast<double>(static_cast<long long>(now.Serial())));
    ReportOptions options = ReportOptions::Defaults(ReportOfName(flags.Name).value(), today);
    if (!flags.ReportDate.empty()) options.ReportDate = DateArgument(flags.ReportDate, "--report-date");
    if (flags.Book != 0) options.Book = flags.Book;
    if (!flags.Sequence.empty()) {
        const auto sequence = SequenceOfItem(FromArgument(flags.Sequence));
        if (!sequence) throw PlatformError(Failure::InvalidCall, "--sequence: there is no sequence \"" + flags.Sequence + "\"");
        options.Sequence = *sequence;
    }
    options.Division = FromArgument(flags.Division);
    options.Department = FromArgument(flags.Department);
    options.CodeSection = FromArgument(flags.CodeSection);
    options.YStart = OptionalDate(flags.From, "--from");
    options.YEnd = OptionalDate(flags.To, "--to");
    for (const std::string& item : flags.PriorYear) {
        if (item == "sold") options.PrintPYSold = true;
        if (item == "casualty") options.PrintPYCasualty = true;
        if (item == "abandoned") options.PrintPYAbandoned = true;
        if (item == "like-kind") options.PrintPYLikeKind = true;
    }
    options.DoubleSpace = flags.DoubleSpace;
    options.PrintDescrip2 = flags.SecondLine;
    options.PrintInvestments = flags.Investments.value_or(options.PrintInvestments);
    options.Include179 = flags.Include179.value_or(options.Include179);
    options.GroupAndYear = flags.GroupAndYear;
    options.UpdateDatabase = flags.Post;
    // Without --yes the command is asked about; a trial print changes nothing, so there is nothing to ask.
    options.Confirmed = flags.Yes || !flags.Post;
    return options;
}

// What the form would tell before it stays open ends the command, in one line.
class RefusalAsFailure : public TerminalPrompts {
 public:
    explicit RefusalAsFailure(Prompts& prompts) : prompts_(prompts) {}

    void Message(std::string_view text, std::string_view, MessageKind) override {
        throw PlatformError(Failure::InvalidCall, std::string(text));
    }
    bool AskYesNo(std::string_view text, std::string_view title) override { return prompts_.AskYesNo(text, title); }

 private:
    Prompts& prompts_;
};

// The files that a command writes. Where nothing can be written, or the company itself would be written over, the command ends
// before it has begun: a year is not closed on a report that nobody will see.
class Output {
 public:
    Output(const OutputFlags& flags, const fs::path& company) {
        if (!IsStandardOutput(flags.Out)) {
            RequireOutput(DeliveryPath(flags.Out), company);
            out_.emplace(flags.Out);
        }
        if (flags.Items.empty()) return;
        RequireOutput(flags.Items, company);
        if (IsSameFile(DeliveryPath(flags.Out), flags.Items)) {
            throw PlatformError(Failure::InvalidCall, "--out and --items name the same file");
        }
        items_.emplace(flags.Items);
    }

    // Whole on the disk, not yet in their places. Standard output gets the pages as text.
    void Write(const PageDocument& pages, const DetailTable& details) {
        if (out_) {
            out_->Write(pages, details);
        } else {
            Print(pages);
        }
        if (!items_) return;
        WritePageItems(pages, *items_);
        items_->Finish();
    }
    void PutInPlace() {
        if (out_) out_->PutInPlace();
        if (items_) items_->PutInPlace();
    }

 private:
    static void Print(const PageDocument& pages) {
        for (int page = 1; page <= pages.PageCount(); ++page) std::cout << (page > 1 ? "\f" : "") << PageText(pages, page);
        FlushStandardOutput();
    }

    std::optional<FileDelivery> out_;
    std::optional<FileReplacement> items_;
};

void RunReport(const ReportFlags& flags, Context& context) {
    Output output(flags.Output, flags.File);
    const Date now = flags.Now.empty() ? Now() : DateArgument(flags.Now, "--now");
    ReportOptions options = OptionsOf(flags, now);
    CompanySession& session = context.Open(flags.File);
    RefusalAsFailure refusals(context.Asking());
    const std::optional<ReportFilter> filter = CheckReportOptions(session, options, refusals);
    if (!filter) throw PlatformError(Failure::InvalidCall, "No report was made");
    if (!options.Confirmed && !ConfirmPosting(context.Asking())) throw PlatformError(Failure::InvalidCall, "Nothing was posted");

    PageDocument pages(kLetterLandscape);
    DetailTable details;
    ReportRun run{.Session = session,
                  .Engine = context.Engine(),
                  .Asking = context.Asking(),
                  .V = pages,
                  .Filter = *filter,
                  .Now = now,
                  .Details = &details,
                  .OnDrawn = [&] { output.Write(pages, details); }};
    const ReportResult result = PrintReport(run);
    if (!result.Printed) throw PlatformError(Failure::InvalidCall, "Nothing was posted");
    try {
        output.PutInPlace();
    } catch (const PlatformError& failure) {
        if (!flags.Post) throw;
        throw failure.WithPrefix(PostedText(result.Copy));
    }
    if (!result.Copy.empty()) std::cout << "The file as it was before: " << result.Copy.string() << '\n';
}

void AddOutput(CLI::App& command, OutputFlags& output) {
    command.add_option("--out", output.Out, "File to write: .pdf, .txt, .csv or .xlsx; - prints the pages as text")->required();
    command.add_option("--items", output.Items, "Also write every text and line of the pages, one JSON object a line");
}

// On, off, or not given.
void AddSwitch(CLI::App& command, const char* names, std::optional<bool>& value, const char* description) {
    command.add_flag_function(
        names, [&value](std::int64_t count) { value = count > 0; }, description);
}

void AddReportOptions(CLI::App& command, ReportFlags& flags) {
    AddOutput(command, flags.Output);
    command.add_option("--sequence", flags.Sequence,
                       "Asset Number, In Service Date, G/L Account, Method / Life, ClassLife or Property Group");
    command.add_option("--division", flags.Division, "Only assets of this division");
    command.add_option("--department", flags.Department, "Only assets whose division is this department");
    command.add_option("--code-section", flags.CodeSection, "Only assets of this IRS Code section");
    command.add_option("--from", flags.From, "First date of the date filter");
    command.add_option("--to", flags.To, "Last date of the date filter");
    command.add_option("--report-date", flags.ReportDate, "Date in the page head; today");
    command
        .add_option("--prior-year", flags.PriorYear, "Disposals of earlier years to print: sold, casualty, abandoned, like-kind")
        ->delimiter(',')
        ->check(CLI::IsMember({"sold", "casualty", "abandoned", "like-kind"}));
    command.add_flag("--double-space", flags.DoubleSpace, "A blank line after each asset");
    command.add_flag("--second-line", flags.SecondLine, "Print the second description line");
    AddSwitch(command, "--investments,!--no-investments", flags.Investments, "Print stocks and collectibles, or leave them out");
    AddSwitch(command, "--include-179,!--no-include-179", flags.Include179,
              "Show Section 179 expense in the depreciation columns, or leave it out of them");
    command.add_flag("--group-and-year", flags.GroupAndYear, "Subtotal property groups by year too");
    command.add_option("--now", flags.Now, "Date and time that days owned are counted to; the clock's");
}

std::vector<std::string> ReportNames() {
    std::vector<std::string> names;
    for (const ReportInfo& report : kReportTable) names.emplace_back(report.Name);
    return names;
}

struct LabelFlags {
    fs::path File;
    std::string Sheet;
    OutputFlags Output;
    std::string Start;
    std::string End;
    std::string Division;
    std::string Department;
};

void RunLabels(const LabelFlags& flags, Context& context) {
    Output output(flags.Output, flags.File);
    CompanySession& session = context.Open(flags.File);
    PageDocument pages(kLetterPortrait);
    DetailTable details;
    const int labels = PrintAssetLabels(session,
                                        {.Sheet = FindLabelSheet(flags.Sheet),
                                         .Start = FromArgument(flags.Start),
                                         .End = FromArgument(flags.End),
                                         .Division = FromArgument(flags.Division),
                                         .Department = FromArgument(flags.Department)},
                                        context.Asking(), pages, &details);
    output.Write(pages, details);
    output.PutInPlace();
    std::cout << labels << " labels\n";
}

}  // namespace

void AddReportCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<ReportFlags>();
    CLI::App* command = app.add_subcommand("report", "Print a report to a file");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("NAME", flags->Name, "Report")->required()->check(CLI::IsMember(ReportNames()));
    command->add_option("--book", flags->Book, "1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T.")->check(CLI::Range(1, 4));
    AddReportOptions(*command, *flags);
    command->callback([flags, &context] { RunReport(*flags, context); });
}

void AddPostCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<ReportFlags>();
    flags->Post = true;
    CLI::App* command = app.add_subcommand("post", "Close the year of a book: post current depreciation to previous");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--book", flags->Book, "1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T.")
        ->required()
        ->check(CLI::Range(1, 4));
    command->add_flag("--yes", flags->Yes, "Post without asking");
    AddReportOptions(*command, *flags);
    command->callback([flags, &context] { RunReport(*flags, context); });
}

void AddLabelsCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<LabelFlags>();
    std::vector<std::string> sheets;
    for (const LabelSheet& sheet : kLabelSheets) sheets.emplace_back(sheet.Code);
    CLI::App* command = app.add_subcommand("labels", "Print asset labels");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--sheet", flags->Sheet, "Sheet of labels")->required()->check(CLI::IsMember(sheets));
    AddOutput(*command, flags->Output);
    command->add_option("--start", flags->Start, "First asset number");
    command->add_option("--end", flags->End, "Last asset number");
    command->add_option("--division", flags->Division, "Only assets of this division");
    command->add_option("--department", flags->Department, "Only assets of this department");
    command->callback([flags, &context] { RunLabels(*flags, context); });
}

}  // namespace tallymar::cli
