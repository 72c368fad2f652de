#include "irsforms/IrsForm.h"

#include <algorithm>
#include <array>
#include <map>

#include "irsforms/Form4255.h"
#include "irsforms/Form4562.h"
#include "irsforms/Form4797.h"
#include "irsforms/Form8824.h"
#include "irsforms/FormSchD.h"
#include "irsforms/FormTables.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetPass.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

template <typename Form>
std::unique_ptr<IrsForm> Make() {
    return std::make_unique<Form>();
}

struct FormKind {
    const FormInfo* Info;
    std::unique_ptr<IrsForm> (*Make)();
};
constexpr auto kForms = std::to_array<FormKind>({{&Form4562::kInfo, Make<Form4562>},
                                                 {&Form4797::kInfo, Make<Form4797>},
                                                 {&FormSchD::kInfo, Make<FormSchD>},
                                                 {&Form4255::kInfo, Make<Form4255>},
                                                 {&Form8824::kInfo, Make<Form8824>}});

constexpr std::string_view kPageExtension = ".LDT";

FormSettings SettingsOf(CompanySession& session, const FormOptions& options) {
    FormSettings settings{.Company = session.CompanyName(),
                          .Id = {},
                          .RoundText = session.RoundText(),
                          .YearEnd = session.FiscalYearEnd(options.Book),
                          .Options = options,
                          .LimitsByLaw = session.LimitsByLaw()};
    recordset::Recordset& company = session.CompanyRecordset();
    if (company.HasCurrentRow()) settings.Id = company.Get("ID").ToText();
    return settings;
}

bool PassesFilter(std::string_view filter, std::string_view trimmedValue) {
    const std::string_view wanted = RTrim(filter);
    return wanted.empty() || trimmedValue == wanted;
}

bool Passes(const FormOptions& options, const AssetRecord& asset) {
    return PassesFilter(options.Division, asset.Division.Trimmed()) &&
           PassesFilter(options.Department, asset.Department.Trimmed());
}

bool Contains(const std::vector<std::string>& codes, const std::string& code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// The pages of the form that lie in the folder and are not of this run.
std::vector<std::string> EarlierPages(const FormInfo& info, const FormOutput& output) {
    std::vector<std::string> earlier;
    if (!info.PageForEachAsset) {
        for (const std::string_view code : info.Pages) {
            const std::string page(code);
            if (!Contains(output.Pages(), page) && fs::exists(output.Folder() / (page + std::string(kPageExtension)))) {
                earlier.push_back(page);
            }
        }
        return earlier;
    }
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(output.Folder(), ignored)) {
        const std::string page = entry.path().stem().string();
        const bool ours = entry.path().extension() == kPageExtension && page.starts_with(info.Pages.front()) &&
                          page.size() == info.Pages.front().size() + 2;
        if (ours && !Contains(output.Pages(), page)) earlier.push_back(page);
    }
    std::sort(earlier.begin(), earlier.end());
    return earlier;
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

}  // namespace

void IrsForm::NameCompany(const FormSettings& settings) {
    company_ = settings.Company;
    id_ = settings.Id;
}

void IrsForm::LeaveOut(const AssetRecord& asset, std::string reason, CurrencyAmount amount, std::string together) {
    leftOut_.push_back({std::string(asset.AssetNum.Trimmed()), std::move(reason), amount, std::move(together)});
}

void IrsForm::LeaveOut(const std::string& assetNum, std::string reason) {
    leftOut_.push_back({assetNum, std::move(reason), {}, {}});
}

std::string IrsForm::WorkFileText() {
    WorkFile file;
    ExchangeWorkFile(file);
    return file.Written();
}

std::vector<const FormInfo*> AllForms() {
    std::vector<const FormInfo*> forms;
    for (const FormKind& kind : kForms) forms.push_back(kind.Info);
    return forms;
}

std::unique_ptr<IrsForm> MakeForm(std::string_view name) {
    for (const FormKind& kind : kForms) {
        if (kind.Info->Name == name) return kind.Make();
    }
    throw PlatformError(Failure::InvalidCall, "There is no form \"" + std::string(name) + "\"");
}

std::unique_ptr<IrsForm> ReadWorkFile(std::string_view name, std::string_view contents) {
    std::unique_ptr<IrsForm> form = MakeForm(name);
    WorkFile file(contents);
    form->ExchangeWorkFile(file);
    return form;
}

std::string EntityType(std::string_view text) {
    std::string type = UCase(Trim(text));
    if (!type.empty() && std::find(kEntityTypes.begin(), kEntityTypes.end(), type) == kEntityTypes.end()) {
        throw PlatformError(Failure::InvalidCall,
                            "There is no entity type \"" + type + "\"; enter 1040, 1041, 1120, 1120S or 1065");
    }
    return type;
}

FormResult CreateForm(std::unique_ptr<IrsForm>& form, CompanySession& session, const FormOptions& asked, const fs::path& folder,
                      Prompts& prompts) {
    FormOptions options = asked;
    options.Type = EntityType(asked.Type);
    std::unique_ptr<IrsForm> next = form->Clone();
    recordset::Recordset& assets = session.AssetsRecordset();
    std::optional<recordset::ReadSnapshot> snapshot(std::in_place, session.Database());
    const FormSettings settings = SettingsOf(session, options);
    next->NameCompany(settings);
    FormOutput output(folder);
    AssetRecord asset;
    std::vector<std::string> messages;
    const auto endReading = [&] {
        snapshot.reset();
        for (const std::string& message : messages) prompts.Message(message, next->Info().Title);
    };
    FormScan scan{.Settings = settings,
                  .Tell = [&](std::string text) { messages.push_back(std::move(text)); },
                  .Output = output,
                  .Find =
                      [&](const FixedText<6>& number, AssetRecord& found) {
                          assets.Seek(number.View());
                          const bool isThere = !assets.NoMatch();
                          if (isThere) session.ReadAssetRecord(found);
                          assets.Seek(asset.AssetNum.View());
                          return isThere;
                      }};
    try {
        AssetPass pass(session, prompts);
        pass.ForEach(asset, [&] {
            ++next->AssetsRead;
            if (Passes(options, asset)) next->Take(asset, scan);
        });
    } catch (const PlatformError&) {
        endReading();
        throw;
    }
    endReading();
    next->ComputeLines(settings);
    next->Write(output);
    output.PutInPlace();
    form = std::move(next);
    FormResult result{.Message = form->Message(),
                      .Pages = output.Pages(),
                      .Skipped = output.Skipped(),
                      .Earlier = EarlierPages(form->Info(), output)};
    return result;
}

std::vector<std::string> FormNotes(const IrsForm& form, const FormResult& result) {
    std::vector<std::string> notes;
    if (!result.Skipped.empty()) notes.push_back(Joined(result.Skipped) + " could not be written");
    if (!result.Earlier.empty()) {
        notes.push_back(Joined(result.Earlier) + (result.Earlier.size() == 1 ? " is" : " are") + " from an earlier run");
    }
    struct Group {
        int Assets = 0;
        CurrencyAmount Amount;
    };
    std::map<std::string, Group> groups;
    for (const LeftOut& one : form.NotOnForm()) {
        if (one.Together.empty()) {
            notes.push_back(one.AssetNum + ": " + one.Reason);
        } else {
            ++groups[one.Together].Assets;
            groups[one.Together].Amount += one.Amount;
        }
    }
    for (const auto& [text, group] : groups) {
        notes.push_back(text + ": " + std::to_string(group.Assets) + (group.Assets == 1 ? " asset, " : " assets, ") +
                        Format(group.Amount, pictures::kTotal));
    }
    if (const auto sums = form.Sums()) {
        notes.push_back("Current depreciation: " + Format(sums->InBook, pictures::kTotal) + " in the book, " +
                        Format(sums->OnForm, pictures::kTotal) + " on the form, " + Format(sums->LeftOut, pictures::kTotal) +
                        " left out");
    }
    return notes;
}

std::string FormJson(const IrsForm& form, const FormResult& result, const FormOptions& options) {
    JsonWriter json;
    json.BeginObject();
    json.Text("form", form.Info().Name);
    json.Text("year", kFormYear);
    json.Number("book", options.Book);
    json.Text("message", result.Message);
    json.BeginArray("pages");
    for (const std::string& page : result.Pages) json.Text({}, page);
    json.End();
    WriteJsonLines(json, "lines", form.Lines(), form.SlotsBesideLines());
    form.WriteTables(json);
    json.BeginArray("leftOut");
    for (const LeftOut& one : form.NotOnForm()) {
        json.BeginObject();
        json.Text("AssetNum", one.AssetNum);
        json.Text("reason", one.Reason);
        json.Text("amount", DecimalText(one.Amount));
        json.End();
    }
    json.End();
    if (const auto sums = form.Sums()) {
        json.BeginObject("CurrDepr");
        json.Text("inBook", DecimalText(sums->InBook));
        json.Text("onForm", DecimalText(sums->OnForm));
        json.Text("leftOut", DecimalText(sums->LeftOut));
        json.End();
    }
    json.End();
    return json.Result();
}

}  // namespace tallymar
