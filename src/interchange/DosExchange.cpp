#include "interchange/DosExchange.h"

#include <algorithm>
#include <array>

#include "interchange/UserImport.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

using R = AssetRecord;

constexpr std::string_view kCompanyName = "ASSETCTL";
constexpr std::string_view kAssetName = "AASCII";
constexpr std::size_t kCompanyLines = 100;

struct CompanyLine {
    std::size_t Line;  // from 1
    std::string_view Column;
};

constexpr auto kCompanyColumns = std::to_array<CompanyLine>({
    {1, "Company"},
    {2, "LastName"},
    {3, "FirstName"},
    {4, "ID"},
    {5, "Address1"},
    {6, "Address2"},
    {7, "City"},
    {8, "ZipCode"},
    {9, "Telephone"},
    {10, "Round"},
    {11, "State"},
    {14, "FYEAMT"},
    {15, "FYEBook"},
    {16, "FYEState"},
    {17, "FYEFederal"},
});

// --- The import

// One record on its way into a row.
struct DosRecord {
    ImportedRows& Rows;
    SequentialReader& File;
    bool Expensed = false;
};

using Rule = void (*)(DosRecord& record, const AssetColumn* column, const std::string& text);

void AsText(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetText(*column, text);
}
void AsDescription(DosRecord& record, const AssetColumn*, const std::string& text) {
    record.Rows.SetDescription(text);
}
void AsDate(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetDate(*column, text);
}
void AsAmount(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetAmount(*column, text);
}
void AsInteger(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetInteger(*column, text);
}
void AsFlag(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetFlag(*column, text);
}
void AsLikeKind(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetFlag(*column, text);
    record.Rows.SetFlag(ColumnOf(&R::Notice4), text, "4");
}
void AsFirstLetter(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetText(*column, std::string_view(text).substr(0, 1));
}
void AsType(DosRecord& record, const AssetColumn* column, const std::string& text) {
    const ImportedCode type = ImportedDeprType(text);
    record.Expensed |= type.Expensed;
    if (!type.Known) record.Rows.Remark("\"" + text + "\" is no depreciation type: taken as MACS");
    record.Rows.Set(*column, type.Index);
}
void AsMethod(DosRecord& record, const AssetColumn* column, const std::string& text) {
    const ImportedCode method = ImportedDeprMethod(text);
    record.Expensed |= method.Expensed;
    if (!method.Known) record.Rows.Remark("\"" + text + "\" is no depreciation method: taken as DB");
    record.Rows.Set(*column, method.Index);
}
void AsPeriod(DosRecord& record, const AssetColumn* column, const std::string& text) {
    record.Rows.SetAmount(*column, record.Expensed ? "1" : text);
}
void Dropped(DosRecord&, const AssetColumn*, const std::string&) {}

struct ItemRule {
    const AssetColumn* Column;
    Rule Apply;
};

// The items of a record from the second on, in their order.
constexpr auto kItemRules = std::to_array<ItemRule>({
    {&ColumnOf(&R::Division), AsText},
    {&ColumnOf(&R::Department), AsText},
    {nullptr, AsDescription},
    {&ColumnOf(&R::SerialNum), AsText},
    {&ColumnOf(&R::AccountNum), AsText},
    {&ColumnOf(&R::Purchased), AsDate},
    {&ColumnOf(&R::InService), AsDate},
    {&ColumnOf(&R::DateSold), AsDate},
    {&ColumnOf(&R::DateDeprToo), AsDate},
    {&ColumnOf(&R::CodeSection), AsText},
    {&ColumnOf(&R::NewUsed), AsFirstLetter},
    {&ColumnOf(&R::AssetType), AsText},
    {&ColumnOf(&R::DeprType), AsType},
    {&ColumnOf(&R::DeprMethod), AsMethod},
    {&ColumnOf(&R::BusinessUse), AsAmount},
    {&ColumnOf(&R::ClassLife), AsAmount},
    {&ColumnOf(&R::Period), AsPeriod},
    {&ColumnOf(&R::Basis), AsAmount},
    {nullptr, Dropped},  // the remaining basis, which can be reckoned
    {&ColumnOf(&R::Salvage), AsAmount},
    {&ColumnOf(&R::PrevDepr), AsAmount},
    {&ColumnOf(&R::CurrDepr), AsAmount},
    {&ColumnOf(&R::Section179), AsAmount},
    {&ColumnOf(&R::DeprLimit), AsAmount},
    {&ColumnOf(&R::SoldAmount), AsAmount},
    {&ColumnOf(&R::SoldExpense), AsAmount},
    {&ColumnOf(&R::TaxCredit), AsAmount},
    {&ColumnOf(&R::TaxCreditUsed), AsAmount},
    {&ColumnOf(&R::DBPercent), AsInteger},
    {&ColumnOf(&R::Auto), AsFlag},
    {&ColumnOf(&R::Listed), AsFlag},
    {&ColumnOf(&R::IRSConvUsed), AsText},
    {&ColumnOf(&R::Abandoned), AsFlag},
    {&ColumnOf(&R::Casualty), AsFlag},
    {&ColumnOf(&R::LikeKind), AsLikeKind},
    {&ColumnOf(&R::Sold), AsFlag},
    {&ColumnOf(&R::FairMktValue), AsAmount},
    {&ColumnOf(&R::Agri), AsFlag},
    {&ColumnOf(&R::AddlDepr), AsAmount},
});

// COMPAT: the books take turns record by record, so that four records in a row are one asset.
int NextBook(int book) {
    return book == kLastBook ? kFirstBook : book + 1;
}

std::vector<std::string> ReadCompanyFile(const fs::path& path) {
    std::vector<std::string> lines;
    SequentialReader file(path);
    while (lines.size() < kCompanyLines && file.HasLine()) lines.push_back(file.ReadLine());
    lines.resize(kCompanyLines);
    return lines;
}

void TakeCompany(CompanySession& session, const std::vector<std::string>& lines) {
    recordset::Recordset& company = session.CompanyRecordset();
    company.Edit();
    try {
        for (const CompanyLine& line : kCompanyColumns) {
            const std::string& text = lines[line.Line - 1];
            const recordset::FieldType type = company.Definition().FindField(line.Column)->Type;
            if (type == recordset::FieldType::Date) {
                company.Set(line.Column, TextToDate(text));
            } else if (type == recordset::FieldType::Boolean) {
                company.Set(line.Column, text == "Y");
            } else {
                company.Set(line.Column, text);
            }
        }
        company.Update();
    } catch (...) {
        company.CancelUpdate();
        throw;
    }
}

ImportCounts ImportRecords(CompanySession& session, const DosImportOptions& options, const fs::path& path,
                           const ImportProgress& onRecord) {
    const int chosen = ExchangeBook(options.Type);
    SequentialReader file(path);
    const auto told = [](int) { return std::string("An error has occurred during import."); };
    return RunImport(session, options.Ending, told, [&](ImportedRows& rows, const ImportCounts& counts) {
        const auto readOne = [&] {
            DosRecord record{rows, file};
            int item = 1;
            rows.AtItem(item);
            rows.Open(file.ReadText(), options.AddNew);
            for (const ItemRule& rule : kItemRules) {
                rows.AtItem(++item);
                rule.Apply(record, rule.Column, file.ReadText());
            }
            if (onRecord) onRecord(counts, file.ShareRead());
            rows.Update();
        };
        int book = chosen;
        bool more = !file.AtEnd();
        while (more) {
            if (chosen == 0) book = NextBook(book);
            rows.BeginRecord(book);
            more = rows.Try(readOne) && !file.AtEnd();
        }
    });
}

// --- The export

std::string NewOrUsed(const AssetRecord& asset) {
    const std::string_view text = asset.NewUsed.View();
    return std::string(text == "N" ? "New" : text == "U" ? "Used" : text);
}

std::string RecordOf(const AssetRecord& a, int book) {
    const std::string items[] = {
        a.AssetNum.ToString(),
        std::string(a.Division.Trimmed()),
        std::string(a.Department.Trimmed()),
        a.Description,
        a.SerialNum,
        a.AccountNum,
        ExportDate(a.Purchased),
        ExportDate(a.InService),
        ExportDate(a.DateSold),
        ExportDate(a.DateDeprToo[book]),
        a.CodeSection,
        NewOrUsed(a),
        a.AssetType,
        std::string(DeprTypeCode(a.DeprType[book])),
        std::string(DeprMethodCode(a.DeprMethod[book])),
        a.BusinessUse.ToText(),
        a.ClassLife.ToText(),
        a.Period[book].ToText(),
        a.Basis[book].ToText(),
        (a.Basis[book] - a.Salvage[book] - a.Section179[book]).ToText(),
        a.Salvage[book].ToText(),
        a.PrevDepr[book].ToText(),
        a.CurrDepr[book].ToText(),
        a.Section179[book].ToText(),
        a.DeprLimit[book].ToText(),
        a.SoldAmount.ToText(),
        a.SoldExpense.ToText(),
        a.TaxCredit[book].ToText(),
        a.TaxCreditUsed[book].ToText(),
        std::to_string(a.DBPercent[book]),
        std::string(YesOrNo(a.Auto[book])),
        std::string(YesOrNo(a.Listed[book])),
        a.IRSConvUsed[book].ToString(),
        std::string(YesOrNo(a.Abandoned)),
        std::string(YesOrNo(a.Casualty)),
        std::string(YesOrNo(a.LikeKind)),
        std::string(YesOrNo(a.Sold)),
        a.FairMktValue.ToText(),
        std::string(YesOrNo(a.Agri[book])),
        a.AddlDepr[book].ToText(),
    };
    static_assert(std::size(items) == kItemRules.size() + 1);
    std::string record;
    for (const std::string& item : items) record.append(item).append(1, ',');
    record.back() = '\r';
    return record + '\n';
}

std::vector<std::string> CompanyFileLines(CompanySession& session) {
    std::vector<std::string> lines(kCompanyLines);
    recordset::Recordset& company = session.CompanyRecordset();
    if (!company.HasCurrentRow()) return lines;
    for (const CompanyLine& line : kCompanyColumns) {
        const recordset::Value value = company.Get(line.Column);
        std::string& text = lines[line.Line - 1];
        if (value.IsDate()) {
            text = ExportDate(value.AsDate());
        } else if (value.Type() == recordset::Value::Kind::Boolean) {
            text = YesOrNo(value.Boolean());
        } else {
            text = value.ToText();
        }
    }
    return lines;
}

// Is the asset file there? The message says where it was looked for.
bool IsThere(const fs::path& assetFile, const fs::path& companyFile, std::string_view message, Prompts& prompts) {
    std::error_code ignored;
    if (!assetFile.empty() && fs::exists(assetFile, ignored)) return true;
    const fs::path wanted = assetFile.empty() ? companyFile : assetFile;
    prompts.Message(std::string(message) + "\n" + FromUtf8(wanted.string()), "Tallymar", MessageKind::Warning);
    return false;
}

}  // namespace

std::vector<CountLine> CountLines(const ImportCounts& counts) {
    return {{"Update Existing", counts.Updated}, {"Add New", counts.Added}, {"Add Duplicate", counts.Duplicates}};
}

std::vector<CountLine> CountLines(const ExportCounts& counts) {
    return {{"Total Assets", counts.Total}, {"Assets Not Exported", counts.NotExported}, {"Assets Exported", counts.Exported}};
}

fs::path AssetFileOf(const fs::path& companyFile) {
    std::string name = UCase(companyFile.filename().string());
    const std::size_t place = name.find(kCompanyName);
    if (place == std::string::npos) return {};
    name.replace(place, kCompanyName.size(), kAssetName);
    const fs::path folder = companyFile.has_parent_path() ? companyFile.parent_path() : fs::path(".");
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        if (UCase(entry.path().filename().string()) == name) return entry.path();
    }
    return folder / name;
}

void WriteCompanyFile(CompanySession& session, const fs::path& path) {
    RequireApart(path, session.DatabaseFileName());
    RequireOrdinaryOutput(path);
    SequentialWriter file(path);
    for (const std::string& line : CompanyFileLines(session)) file.WriteLine(line);
    file.Close();
}

std::optional<ImportCounts> DosImport(CompanySession& session, const DosImportOptions& options, const fs::path& file,
                                      Prompts& prompts, const ImportProgress& onRecord) {
    if (ExchangeBook(options.Type) != 0) return ImportRecords(session, options, file, onRecord);
    const std::vector<std::string> lines = ReadCompanyFile(file);
    if (options.Ending != ImportEnding::CheckOnly) TakeCompany(session, lines);
    const fs::path assets = AssetFileOf(file);
    if (!IsThere(assets, file, "Asset import file not found for this client:", prompts)) return {};
    return ImportRecords(session, options, assets, onRecord);
}

std::optional<ExportCounts> DosExport(CompanySession& session, const ExportOptions& options, const fs::path& file,
                                      Prompts& prompts) {
    const int chosen = ExchangeBook(options.Book);
    ExportYearEnd(session, options.Book);
    try {
        fs::path assets = file;
        if (chosen == 0) {
            WriteCompanyFile(session, file);
            assets = AssetFileOf(file);
            if (!IsThere(assets, file, "Asset Export file not found for this client:", prompts)) return {};
        }
        int book = chosen;
        const auto step = [&] {
            if (chosen == 0) book = NextBook(book);
        };
        return WriteAssets(
            session, options, assets, prompts, [&](const AssetRecord& asset, std::string& line) { line = RecordOf(asset, book); },
            step);
    } catch (const PlatformError& failure) {
        throw failure.WithPrefix("An error has occurred during Export.\n");
    }
}

}  // namespace tallymar
