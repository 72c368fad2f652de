#include <iostream>
#include <memory>
#include <vector>

#include "cli/Commands.h"
#include "cli/ImportCheck.h"
#include "cli/Output.h"
#include "interchange/AssetDump.h"
#include "interchange/AssetLoad.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace {

struct LoadFlags {
    std::filesystem::path File;
    std::filesystem::path Table;
    std::vector<std::string> Pairs;
    bool AddNew = false;
    bool Check = false;
};

struct DumpFlags {
    std::filesystem::path File;
    std::filesystem::path Out = "-";
    std::vector<std::string> Columns;
};

// "Cost=Basis(1)"; the last sign divides, since no column has one. "=" leaves out what stands below no heading.
HeadingPair PairOf(const std::string& argument) {
    const std::string text = FromArgument(argument);
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos)
        throw PlatformError(Failure::InvalidCall, "--pair wants \"Heading=Column\", not \"" + text + "\"");
    return {.Heading = text.substr(0, sign), .Column = text.substr(sign + 1)};
}

bool IsWorkbookName(const std::filesystem::path& path) {
    const std::string extension = LCase(path.extension().string());
    if (extension == ".ods" || extension == ".xls")
        throw PlatformError(Failure::InvalidCall, "A workbook is written as an .xlsx, not as an " + extension);
    return extension == ".xlsx";
}

void DumpToFile(CompanySession& session, const DumpFlags& flags, const std::vector<std::string>& columns) {
    const auto dump = IsWorkbookName(flags.Out) ? DumpWorkbook : DumpAssets;
    RequireOutput(flags.Out, flags.File);
    FileReplacement file(flags.Out);
    const recordset::ReadSnapshot snapshot(session.Database());
    dump(session.AssetsRecordset(), columns, [&file](std::string_view text) { file.Write(text); });
    file.Commit();
}

}  // namespace

void AddLoadCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<LoadFlags>();
    CLI::App* command = app.add_subcommand("load", "Add or rewrite assets from a CSV, an .xlsx or an .ods");
    command->add_option("FILE", flags->File, "Company file")->required();
    command
        ->add_option("TABLE", flags->Table,
                     "CSV or workbook whose first row names columns (\"Basis(1)\", \"Federal Asset Cost\")")
        ->required();
    command->add_option("--pair", flags->Pairs, "\"Heading=Column\": what a heading stands for; \"Heading=\" leaves it out");
    command->add_flag("--add-new", flags->AddNew, "Add assets whose number is taken under a DUP number");
    command->add_flag("--check", flags->Check, "Say what would fail or be changed, and write nothing");
    command->callback([flags, &context] {
        RequireApart(flags->Table, flags->File);
        LoadOptions options{.Pairs = {}, .AddNew = flags->AddNew, .CheckOnly = flags->Check};
        for (const std::string& pair : flags->Pairs) options.Pairs.push_back(PairOf(pair));
        CompanySession& session = context.Open(flags->File);
        const ImportCounts counts = LoadAssets(session.Database(), session.AssetsRecordset(), flags->Table, options);
        if (flags->Check) return EndCheck(counts);
        std::cout << "Assets added: " << counts.Added + counts.Duplicates << ", rewritten: " << counts.Updated << '\n';
    });
}

void AddDumpCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<DumpFlags>();
    CLI::App* command = app.add_subcommand("dump", "Write every asset as a CSV or a workbook");
    command->add_option("FILE", flags->File, "Company file")->required();
    command->add_option("--out", flags->Out, "File to write, an .xlsx as a workbook; standard output unless given");
    command->add_option("--columns", flags->Columns, "Columns to write, separated by commas; all of them unless named")
        ->delimiter(',');
    command->callback([flags, &context] {
        std::vector<std::string> columns;
        for (const std::string& column : flags->Columns) columns.push_back(FromArgument(column));
        CompanySession& session = context.Open(flags->File);
        if (!IsStandardOutput(flags->Out)) return DumpToFile(session, *flags, columns);
        PrintWhole([&](const auto& write) {
            const recordset::ReadSnapshot snapshot(session.Database());
            DumpAssets(session.AssetsRecordset(), columns, write);
        });
    });
}

}  // namespace tallymar::cli
