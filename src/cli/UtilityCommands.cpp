#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include "batch/ChangeAssets.h"
#include "batch/ChangeDept.h"
#include "batch/ChangeRange.h"
#include "batch/Resequence.h"
#include "batch/SetBooks.h"
#include "cli/Commands.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::cli {

namespace {

struct Selection {
    std::string Division;
    std::string Department;
    std::string Year;
};

void AddSelection(CLI::App& command, Selection& selection) {
    command.add_option("--division", selection.Division, "Only assets of this division");
    command.add_option("--department", selection.Department, "Only assets of this department");
    command.add_option("--year", selection.Year, "In-service year; blank and 0 select all, any other year none");
}

void PrintChanged(std::int64_t count) {
    std::cout << NumberChangedText(count) << '\n';
}

// "AT=PP,DT=MCRS,DM=DB,DBP=200,CL=5,P=5": every key once.
DepreciationSetUp ParseSetUp(const std::string& option, const std::vector<std::string>& items) {
    std::map<std::string, std::string> values;
    for (const std::string& item : items) {
        const std::size_t equals = item.find('=');
        if (equals == std::string::npos ||
            !values.emplace(item.substr(0, equals), FromArgument(item.substr(equals + 1))).second) {
            throw PlatformError(Failure::InvalidCall,
                                option + " wants each of AT, DT, DM, DBP, CL and P once, not \"" + FromArgument(item) + "\"");
        }
    }
    const auto take = [&](const char* key) {
        const auto found = values.find(key);
        if (found == values.end()) throw PlatformError(Failure::InvalidCall, option + " lacks " + key);
        std::string text = found->second;
        values.erase(found);
        return text;
    };
    const auto years = [&](const char* key) {
        const std::string text = take(key);
        const auto amount = CurrencyAmount::Parse(text);
        if (!amount) throw PlatformError(Failure::TypeMismatch, option + ": " + key + " is no number: \"" + text + "\"");
        return *amount;
    };
    DepreciationSetUp setUp{.AssetType = take("AT"),
                            .DeprType = take("DT"),
                            .DeprMethod = take("DM"),
                            .DBPercent = take("DBP"),
                            .ClassLife = years("CL"),
                            .Period = years("P")};
    if (!values.empty()) throw PlatformError(Failure::InvalidCall, option + " does not know " + values.begin()->first);
    return setUp;
}

struct DeptFlags {
    std::filesystem::path File;
    std::vector<std::string> Division;  // FROM and TO, or nothing
    std::vector<std::string> Department;
    std::vector<std::string> Account;
    std::string Year;
};

struct RangeFlags {
    std::filesystem::path File;
    Selection Which;
    int Book = 1;
    std::vector<std::string> From;
    std::vector<std::string> To;
};

struct BooksFlags {
    std::filesystem::path File;
    Selection Which;
    int From = 1;
    int To = 0;
};

struct ResequenceFlags {
    std::filesystem::path File;
    std::filesystem::path Target;
    std::string Prefix;
    std::string Division;
    std::string Department;
    bool Only = false;
    bool Case = false;
    bool Renumber = false;
};

}  // namespace

void AddChangeDeptCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<DeptFlags>();
    CLI::App* command = app.add_subcommand("change-dept", "Rename a division, department or G/L number in every asset");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--division", flags->Division, "FROM TO; a blank FROM changes nothing")->expected(2);
    command->add_option("--department", flags->Department, "FROM TO")->expected(2);
    command->add_option("--account", flags->Account, "FROM TO")->expected(2);
    command->add_option("--year", flags->Year, "In-service year; blank and 0 select all, any other year none");
    command->callback([flags, &context] {
        const auto change = [](const std::vector<std::string>& pair) {
            return pair.empty() ? FieldChange{} : FieldChange{FromArgument(pair[0]), FromArgument(pair[1])};
        };
        PrintChanged(ChangeDept(context.Open(flags->File),
                                {.Division = change(flags->Division),
                                 .Department = change(flags->Department),
                                 .AccountNum = change(flags->Account),
                                 .Year = FromArgument(flags->Year)},
                                context.Asking()));
    });
}

void AddChangeRangeCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<RangeFlags>();
    CLI::App* command = app.add_subcommand("change-range", "Give every asset that matches a whole set-up another one");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--book", flags->Book, "1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T.")
        ->required()
        ->check(CLI::Range(kFirstBook, kLastBook));
    command->add_option("--from", flags->From, "AT=PP,DT=MCRS,DM=DB,DBP=200,CL=5,P=5; every key is required")
        ->required()
        ->delimiter(',');
    command->add_option("--to", flags->To, "The same keys")->required()->delimiter(',');
    AddSelection(*command, flags->Which);
    command->callback([flags, &context] {
        const ChangeRangeOptions options{.Division = FromArgument(flags->Which.Division),
                                         .Department = FromArgument(flags->Which.Department),
                                         .Year = FromArgument(flags->Which.Year),
                                         .Book = flags->Book,
                                         .From = ParseSetUp("--from", flags->From),
                                         .To = ParseSetUp("--to", flags->To)};
        PrintChanged(ChangeRange(context.Open(flags->File), options, context.Asking()));
    });
}

void AddSetBooksCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<BooksFlags>();
    CLI::App* command = app.add_subcommand("set-books", "Copy one book over another or over all others");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--from", flags->From, "Book to copy")->required()->check(CLI::Range(kFirstBook, kLastBook));
    command->add_option("--to", flags->To, "Book to set; 0 for all others")->required()->check(CLI::Range(-1, kLastBook));
    AddSelection(*command, flags->Which);
    command->callback([flags, &context] {
        PrintChanged(SetBooks(context.Open(flags->File),
                              {.FromBook = flags->From,
                               .ToBook = flags->To,
                               .Division = FromArgument(flags->Which.Division),
                               .Department = FromArgument(flags->Which.Department),
                               .Year = FromArgument(flags->Which.Year)},
                              context.Asking()));
    });
}

void AddResequenceCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<ResequenceFlags>();
    CLI::App* command = app.add_subcommand("resequence", "Copy assets into another company, under new numbers if wanted");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("TARGET", flags->Target, "Company file to make, or to merge into")->required();
    command->add_option("--prefix", flags->Prefix, "First characters of the new numbers");
    command->add_option("--division", flags->Division, "Division to copy, with --only");
    command->add_option("--department", flags->Department, "With --only: copy the assets whose division is not this text");
    command->add_flag("--only", flags->Only, "Copy only what --division and --department select");
    command->add_flag("--case", flags->Case, "Large and small letters differ in them");
    command->add_flag("--renumber", flags->Renumber, "Give new numbers, in order of the in-service date");
    command->callback([flags, &context] {
        const auto counts = Resequence(context.Open(flags->File),
                                       {.Division = FromArgument(flags->Division),
                                        .Department = FromArgument(flags->Department),
                                        .CopyOnly = flags->Only ? "Y" : "N",
                                        .IgnoreCase = !flags->Case,
                                        .Renumber = flags->Renumber,
                                        .Prefix = FromArgument(flags->Prefix)},
                                       flags->Target, context.Asking());
        if (!counts) Context::RefuseUnconverted(flags->Target);
        std::cout << counts->Text() << '\n';
    });
}

}  // namespace tallymar::cli
