#include "interchange/DosExchange.h"

#include <algorithm>
#include <array>

#include "interchange/ExchangeBook.h"
#include "interchange/ExportItems.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/FindFile.h"
#include "platform/runtime/Folder.h"
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
    record.Rows.Set(*column, text == "Y");
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

std::vector<std::string> ReadCompanyFile(SequentialReader& file) {
    std::vector<std::string> lines;
    while (lines.size() < kCompanyLines && file.HasLine()) lines.push_back(file.ReadLine());
    lines.resize(kCompanyLines);
    return lines;
}

// The value of a line for its column; *unlike is then set to what is stored where that is not what the line says.
recordset::Value CompanyValue(const std::string& text, recordset::FieldType type, std::string* unlike) {
    if (type == recordset::FieldType::Date) {
        const Date date = TextToDate(text);
        if (date == Date() && !Trim(text).empty()) *unlike = "is no date: none is stored";
        return date;
    }
    if (type == recordset::FieldType::Boolean) {
        if (!text.empty() && text != "Y" && text != "N") *unlike = "is neither Y nor N: taken as No";
        return text == "Y";
    }
    if (LooksLikeUtf8(text)) *unlike = kLooksUtf8;
    return text;
}

// Stores the lines in the company's row. With remarks, what a line would not give or not take is told there, and the rest is
// tried.
void TakeCompany(CompanySession& session, const std::vector<std::string>& lines, std::vector<ImportRemark>* remarks = nullptr) {
    recordset::Recordset& company = session.CompanyRecordset();
    company.Edit();
    try {
        for (const CompanyLine& line : kCompanyColumns) {
            const std::string& text = lines[line.Line - 1];
            const auto remark = [&](const std::string& what, bool fails) {
                remarks->push_back({.Text = what, .Fails = fails, .Line = static_cast<int>(line.Line)});
            };
            std::string unlike;
            try {
                company.Set(line.Column, CompanyValue(text, company.Definition().FindField(line.Column)->Type, &unlike));
                if (remarks != nullptr && !unlike.empty()) remark("\"" + text + "\" " + unlike, false);
            } catch (const PlatformError& failure) {
                if (remarks == nullptr) throw failure.WithPrefix("company file, line " + std::to_string(line.Line) + ": ");
                remark(failure.what(), true);
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
    return RunImport(session, options.Ending, file, told, [&](ImportedRows& rows, const ImportCounts& counts) {
        std::array<std::string, kItemRules.size() + 1> items;
        const auto readOne = [&] {
            // The whole record before any of it is stored: an item that fails leaves the file at the next record.
            int item = 0;
            for (std::string& text : items) {
                rows.AtItem(++item);
                text = file.ReadText();
            }
            DosRecord record{rows};
            item = 1;
            rows.AtItem(item);
            rows.Open(items.front(), options.AddNew);
            for (const ItemRule& rule : kItemRules) {
                rows.AtItem(++item);
                rule.Apply(record, rule.Column, items.at(static_cast<std::size_t>(item - 1)));
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

// Of the letters of a file's name, which are the system's own, only A to Z are known to have two cases.
std::string UpperAscii(std::string name) {
    for (char& c : name) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return name;
}

// Says where the asset file was looked for; a company file whose name leads to none is named itself.
std::string NotFoundText(std::string_view message, const fs::path& assets, const fs::path& companyFile) {
    return std::string(message) + "\n" + FromUtf8((assets.empty() ? companyFile : assets).string());
}

bool IsThere(const fs::path& assets) {
    std::error_code ignored;
    return !assets.empty() && fs::exists(assets, ignored);
}

}  // namespace

std::vector<CountLine> CountLines(const ImportCounts& counts) {
    return {{"Update Existing", counts.Updated}, {"Add New", counts.Added}, {"Add Duplicate", counts.Duplicates}};
}

std::vector<CountLine> CountLines(const ExportCounts& counts) {
    return {{"Total Assets", counts.Total}, {"Assets Not Exported", counts.NotExported}, {"Assets Exported", counts.Exported}};
}

fs::path AssetFileOf(const fs::path& companyFile) {
    std::string name = UpperAscii(companyFile.filename().string());
    const std::size_t place = name.find(kCompanyName);
    if (place == std::string::npos) return {};
    name.replace(place, kCompanyName.size(), kAssetName);
    const fs::path folder = FolderOf(companyFile);
    const fs::path found = FindAnyCase(folder, name);
    return found.empty() ? folder / name : found;
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
    SequentialReader companyFile(file);
    const std::vector<std::string> lines = ReadCompanyFile(companyFile);
    const fs::path assets = AssetFileOf(file);
    const std::string notFound = NotFoundText("Asset import file not found for this client:", assets, file);
    if (options.Ending == ImportEnding::KeepDone) {
        TakeCompany(session, lines);
        if (IsThere(assets)) return ImportRecords(session, options, assets, onRecord);
        prompts.Message(notFound, "Tallymar", MessageKind::Warning);
        return {};
    }
    return recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&](recordset::WriteBatch& batch) {
        const bool isCheck = options.Ending == ImportEnding::CheckOnly;
        std::vector<ImportRemark> remarks;
        if (companyFile.HasLostLetters()) remarks.push_back({.Text = "the file " + std::string(kLostLetters), .Line = 1});
        TakeCompany(session, lines, isCheck ? &remarks : nullptr);
        ImportCounts counts;
        if (IsThere(assets)) {
            counts = ImportRecords(session, options, assets, onRecord);
        } else if (isCheck) {
            std::string line = notFound;
            std::replace(line.begin(), line.end(), '\n', ' ');
            remarks.push_back({.Text = line, .Fails = true});
        } else {
            throw PlatformError(Failure::FileNotFound, notFound);
        }
        if (isCheck) batch.Rollback();
        counts.Failing += std::count_if(remarks.begin(), remarks.end(), [](const ImportRemark& remark) { return remark.Fails; });
        counts.Remarks.insert(counts.Remarks.begin(), remarks.begin(), remarks.end());
        return std::optional(counts);
    });
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
            if (!IsThere(assets)) {
                prompts.Message(NotFoundText("Asset Export file not found for this client:", assets, file), "Tallymar",
                                MessageKind::Warning);
                return {};
            }
        }
        int book = chosen;
        const auto step = [&] {
            if (chosen == 0) book = NextBook(book);
            return book;
        };
        return WriteAssets(session, options, assets, prompts, step, [](const ExportedAsset& asset, std::string& line) {
            for (const ExportItem& item : ExportItems()) line.append(item.DosText(asset)).append(1, ',');
            line.back() = '\r';
            line += '\n';
        });
    } catch (const PlatformError& failure) {
        throw failure.WithPrefix("An error has occurred during Export.\n");
    }
}

}  // namespace tallymar
