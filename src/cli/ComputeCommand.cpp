#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "batch/ComputeCurrent.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/Books.h"
#include "store/Vocabularies.h"

namespace tallymar::cli {

namespace {

struct Options {
    std::filesystem::path File;
    std::vector<int> Books;
    std::vector<int> MidQuarter;
    int Month = 0;
    std::filesystem::path List;
};

// A status text may hold anything that a CSV field must be quoted for.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

// Numbers are letters and digits, but a CSV that was loaded may have brought others.
std::string NumberField(std::string_view assetNum) {
    return ToUtf8(assetNum.find_first_of(",\"\r\n") == std::string_view::npos ? std::string(assetNum) : Quoted(assetNum));
}

PerBook<bool> Chosen(const std::vector<int>& books) {
    PerBook<bool> chosen;
    for (const int book : books) chosen[book] = true;
    return chosen;
}

void Run(const Options& options, Context& context) {
    RequireOutput(options.List, options.File);
    CompanySession& session = context.Open(options.File);
    ADepre& engine = context.Engine();
    engine.ComputeMonth = static_cast<std::int16_t>(options.Month);

    std::optional<TextOutput> list;
    if (!options.List.empty()) list.emplace(options.List).Write("AssetNum,Book,CurrDepr,Status,StatusText\r\n");
    const auto addToList = [&list](const ComputedAsset& asset) {
        list->Write(NumberField(asset.AssetNum) + ',' + std::to_string(asset.Book) + ',' + asset.CurrDepr.ToText() + ',' +
                    std::to_string(asset.Status) + ',' + (asset.StatusText.empty() ? "" : ToUtf8(Quoted(asset.StatusText))) +
                    "\r\n");
    };
    const PerBook<bool> books = Chosen(options.Books);
    ComputeCurrentResult result;
    try {
        // The list is on the disk before what it lists is committed.
        recordset::RunBatch(session.Database(), recordset::OnFailure::KeepDone, [&] {
            ComputeCurrent(session, engine, {.Compute = books, .UseMidQuarter = Chosen(options.MidQuarter)}, context.Asking(),
                           result, list ? std::function<void(const ComputedAsset&)>(addToList) : nullptr);
            if (list) list->Finish();
        });
    } catch (const PlatformError& failure) {
        std::string text = failure.what();
        for (const std::string& remark : RemarksOn(result)) text += "; " + remark;
        throw PlatformError(failure.Code(), text);
    }
    for (const std::string& remark : RemarksOn(result)) std::cerr << ToUtf8(remark) << '\n';
    if (list) list->PutInPlace();
    // A list on standard output stands there alone.
    std::ostream& summary = IsStandardOutput(options.List) ? std::cerr : std::cout;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        if (!books[book]) continue;
        const InServiceTotals& totals = result[book].Totals;
        summary << BookOf(book).Name << ' ' << totals.InServiceText() << ' ' << totals.FourthQuarterText() << ' '
                << totals.PercentText() << '\n';
    }
}

}  // namespace

void AddComputeCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("compute", "Compute the current year of every asset");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("--books", options->Books, "Books to compute: 1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T.")
        ->required()
        ->delimiter(',')
        ->check(CLI::Range(kFirstBook, kLastBook));
    command->add_option("--mid-quarter", options->MidQuarter, "Books that use the mid-quarter convention")
        ->delimiter(',')
        ->check(CLI::Range(kFirstBook, kLastBook));
    command->add_option("--month", options->Month, "Month of the fiscal year wanted for book 3; 0 for the whole year")
        ->check(CLI::Range(0, 12));
    command->add_option("--list", options->List, "Write every asset and book as a CSV; - prints it");
    command->callback([options, &context] { Run(*options, context); });
}

}  // namespace tallymar::cli
