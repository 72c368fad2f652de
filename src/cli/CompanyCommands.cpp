#include <iostream>
#include <memory>
#include <vector>

#include "cli/Commands.h"
#include "interchange/FieldText.h"
#include "platform/recordset/Names.h"
#include "platform/runtime/PlatformError.h"
#include "store/CompanyLimits.h"
#include "store/Schema.h"

namespace tallymar::cli {

namespace {

struct NewOptions {
    std::filesystem::path File;
    std::string Name;
    bool Force = false;
};

struct CompanyOptions {
    std::filesystem::path File;
    std::vector<std::string> Set;
};

// Beside the columns of the company: the choice of its limits.
constexpr std::string_view kLimits = "Limits";

// Sets the columns named; gives the choice of limits, if one is named.
std::optional<Limits> SetColumns(recordset::Recordset& company, const std::vector<std::string>& assignments) {
    std::optional<Limits> limits;
    if (assignments.empty()) return limits;
    // An open in a broken state may have left the table without its row.
    if (company.RecordCount() < 1) {
        company.AddNew();
        company.Update();
        company.MoveFirst();
    }
    company.Edit();
    std::string buffer;
    for (const std::string& assignment : assignments) {
        const std::size_t equals = assignment.find('=');
        if (equals == std::string::npos) {
            throw PlatformError(Failure::InvalidCall, "--set wants COLUMN=VALUE, not \"" + FromArgument(assignment) + "\"");
        }
        const std::string name = FromArgument(assignment.substr(0, equals));
        if (recordset::SameName(name, kLimits)) {
            limits = LimitsOfWord(FromArgument(assignment.substr(equals + 1)));
            continue;
        }
        const recordset::Field* field = company.Definition().FindField(name);
        if (field == nullptr) throw PlatformError(Failure::ItemNotFound, "The company has no column \"" + name + "\"");
        const std::string text = assignment.substr(equals + 1);
        try {
            const bool isNull = text.empty() && field->Type != recordset::FieldType::Text;
            company.Set(field->Name, isNull ? NullFieldValue(*field) : ParseFieldText(*field, text, buffer));
        } catch (const PlatformError& failure) {
            throw failure.WithPrefix("Column " + field->Name + ": ");
        }
    }
    company.Update();
    return limits;
}

void SetProfile(CompanySession& session, const std::vector<std::string>& assignments) {
    recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        if (const auto limits = SetColumns(session.CompanyRecordset(), assignments)) SetLimits(session.Database(), *limits);
    });
}

void PrintColumns(const recordset::Recordset& company, Limits limits) {
    std::string lines;
    for (const recordset::Field& field : company.Definition().Fields) {
        lines += field.Name + '=';
        if (company.HasCurrentRow()) AppendFieldText(company.Get(field.Name), lines);
        lines += '\n';
    }
    if (limits != Limits::AsDelivered) lines += std::string(kLimits) + '=' + std::string(NameOf(limits).Word) + '\n';
    std::cout << lines;
}

void RunNew(const NewOptions& options, Context& context) {
    if (!options.Force && std::filesystem::exists(options.File)) {
        throw PlatformError(Failure::FileExists, options.File.string() + " exists already; --force replaces it");
    }
    const std::string name = FromArgument(options.Name);
    const std::size_t room = static_cast<std::size_t>(CompanyTable().FindField("Company")->Size);
    if (name.size() > room) {
        throw PlatformError(Failure::FieldTooSmall, "The company's name is longer than " + std::to_string(room) + " characters");
    }
    context.Session().NewCompany(options.File);
    if (name.empty()) return;
    recordset::Recordset& company = context.Session().CompanyRecordset();
    company.Edit();
    company.Set("Company", name);
    company.Update();
}

}  // namespace

void AddNewCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<NewOptions>();
    CLI::App* command = app.add_subcommand("new", "Create a company file");
    command->add_option("FILE", options->File, "Company file to create")->required();
    command->add_option("--name", options->Name, "Name of the company");
    command->add_flag("--force", options->Force, "Replace a file of that name");
    command->callback([options, &context] { RunNew(*options, context); });
}

void AddCompanyCommand(CLI::App& app, Context& context) {
    auto options = std::make_shared<CompanyOptions>();
    CLI::App* command = app.add_subcommand("company", "Set and print the company's profile");
    command->add_option("FILE", options->File, "Company file")->required();
    command->add_option("--set", options->Set, "COLUMN=VALUE, or Limits=Law or Limits=Delivered; may be given many times")
        ->allow_extra_args(true);
    command->callback([options, &context] {
        CompanySession& session = context.Open(options->File);
        if (!options->Set.empty()) SetProfile(session, options->Set);
        PrintColumns(session.CompanyRecordset(), LimitsOf(session.Database()));
    });
}

}  // namespace tallymar::cli
