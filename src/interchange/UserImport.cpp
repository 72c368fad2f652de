#include "interchange/UserImport.h"

#include <algorithm>
#include <array>

#include "interchange/ExchangeBook.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Windows1252.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using R = AssetRecord;

constexpr int kItems = FieldDefinition::kFields;
// Fields that a rule or the reading of a record looks at by their number.
constexpr int kNumber = 1;
constexpr int kType = 14;

// The definition as numbers, read once and not once a record.
class Layout {
 public:
    explicit Layout(const FieldDefinition& definition) : count_(definition.FieldCount()) {
        for (int field = kItems; field >= 1; --field) {
            const int position = definition.Position(field);
            position_.at(static_cast<std::size_t>(field)) = position;
            if (position >= 1 && position <= kItems) fieldAt_.at(static_cast<std::size_t>(position)) = field;
        }
    }

    int Position(int field) const { return position_.at(static_cast<std::size_t>(field)); }
    bool Has(int field) const { return Position(field) >= 1; }

    // The field that a position of a record belongs to: the first that claims it, or none (0).
    int FieldAt(int position) const { return fieldAt_.at(static_cast<std::size_t>(position)); }
    bool Reads(int position) const { return FieldAt(position) != 0 || count_ > position; }
    int ItemsRead() const {
        int items = 0;
        for (int position = 1; position <= kItems; ++position) items += Reads(position) ? 1 : 0;
        return items;
    }
    bool LeavesLastItem() const { return count_ >= 1 && count_ <= kItems && FieldAt(count_) == 0; }
    int Count() const { return count_; }

 private:
    std::array<int, kItems + 1> position_{};
    std::array<int, kItems + 1> fieldAt_{};
    int count_;
};

// One record as the rules of its columns see it.
struct UserRecord {
    const Layout& Fields;
    ImportedRows& Rows;
    std::array<std::string, kItems + 1> Text;  // of field k, whatever its position
    std::int16_t DeprType = 0;                 // found by its own rule, which comes before the method's
    // COMPAT: a record that is expensed leaves the mark for all that follow.
    bool Expensed = false;

    const std::string& operator[](int field) const { return Text.at(static_cast<std::size_t>(field)); }
    bool Has(int field) const { return Fields.Has(field); }
};

using Rule = void (*)(UserRecord& record, const AssetColumn& column, int field);

void AsText(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetText(column, record[field]);
}

void AsCutText(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetCut(column, record[field], static_cast<std::size_t>(column.Width()));
}

// COMPAT: cut to 16 characters though the column holds 12: a longer number fails there.
void AsAccountNumber(UserRecord& record, const AssetColumn& column, int field) {
    constexpr std::size_t kTaken = 16;
    record.Rows.SetCut(column, record[field], kTaken);
}

void AsDescription(UserRecord& record, const AssetColumn&, int field) {
    record.Rows.SetDescription(record[field]);
}

void AsDate(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetDate(column, record[field]);
}

void AsAmount(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetAmount(column, record[field]);
}

void AsFlag(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetFlag(column, record[field]);
}

// "4" is of the field's other column, which says what is neither.
void AsLikeKind(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.Set(column, record[field] == "Y");
}

void AsNotice4(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.SetFlag(column, record[field], "4");
}

void AsSold(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.Set(column, record.Rows.NumberOf(record[field]) > 0);  // be it less than an amount can hold
}

// The date of service stands for the date of purchase where the file has only one of them, and the reverse.
constexpr int kPurchased = 7;
constexpr int kInService = 8;
void AsEitherDate(UserRecord& record, const AssetColumn& column, int field) {
    const int other = field == kPurchased ? kInService : kPurchased;
    if (record.Has(field)) return AsDate(record, column, field);
    if (record.Fields.Position(field) == 0 && record.Has(other)) AsDate(record, column, other);
}

void AsDateIfThere(UserRecord& record, const AssetColumn& column, int field) {
    if (record.Has(field)) AsDate(record, column, field);
}

void AsCodeSection(UserRecord& record, const AssetColumn& column, int field) {
    constexpr std::string_view kUsual = "1245";
    record.Rows.SetText(column, record.Has(field) ? std::string_view(record[field]) : kUsual);
}

// COMPAT: what the file says of new or used is never taken.
void AsNew(UserRecord& record, const AssetColumn& column, int field) {
    if (record[field].starts_with('U')) record.Rows.Remark("\"" + record[field] + "\" is stored as new");
    record.Rows.SetText(column, "N");
}

void AsAssetType(UserRecord& record, const AssetColumn& column, int field) {
    const bool known = std::find(kAssetTypes.begin(), kAssetTypes.end(), record[field]) != kAssetTypes.end();
    if (!known && !record[field].empty()) record.Rows.Remark("\"" + record[field] + "\" is no asset type: PP is stored");
    record.Rows.SetText(column, known ? std::string_view(record[field]) : kAssetTypes.front());
}

void AsDeprType(UserRecord& record, const AssetColumn& column, int field) {
    const ImportedCode type = ImportedDeprType(record[field]);
    if (!type.Known && record.Has(field)) record.Rows.Remark("\"" + record[field] + "\" is no depreciation type: taken as MACS");
    record.Expensed |= type.Expensed;
    record.DeprType = type.Index;
    record.Rows.Set(column, type.Index);
}

void AsDeprMethod(UserRecord& record, const AssetColumn& column, int field) {
    // COMPAT: a file without methods gets the number of the type here too.
    if (!record.Has(field)) return record.Rows.Set(column, record.DeprType);
    std::string& text = record.Text.at(static_cast<std::size_t>(field));
    if (text == "DDB") text = "DB";
    const ImportedCode method = ImportedDeprMethod(text);
    if (!method.Known) record.Rows.Remark("\"" + text + "\" is no depreciation method: taken as DB");
    record.Expensed |= method.Expensed;
    record.Rows.Set(column, method.Index);
}

constexpr int kMethodField = 15;

void AsBusinessUse(UserRecord& record, const AssetColumn& column, int field) {
    if (record.Has(field)) return AsAmount(record, column, field);
    if (record.Fields.Position(field) == 0) record.Rows.SetAmount(column, "100");
}

// Class life and period stand in for each other where the file has only one of them.
constexpr int kClassLife = 17;
constexpr int kPeriod = 18;
void AsEitherLife(UserRecord& record, const AssetColumn& column, int field) {
    const int other = field == kClassLife ? kPeriod : kClassLife;
    if (field == kPeriod && record.Expensed) return record.Rows.SetAmount(column, "1");
    if (record.Has(field)) return AsAmount(record, column, field);
    if (record.Has(other)) AsAmount(record, column, other);
}

constexpr int kSection179 = 24;
void AsBasis(UserRecord& record, const AssetColumn& column, int field) {
    record.Rows.Set(column, record.Rows.AmountOf(record[field]) + record.Rows.AmountOf(record[kSection179]));
}

void AsDBPercent(UserRecord& record, const AssetColumn& column, int field) {
    if (record.Expensed) return record.Rows.SetInteger(column, "200");
    if (record.Has(field)) return record.Rows.SetInteger(column, record[field]);
    if (record.Fields.Position(field) == 0 && record[kMethodField] == "DB") record.Rows.SetInteger(column, "200");
}

struct ColumnRule {
    int Field;
    const AssetColumn* Column;
    Rule Apply;
};

// In the order of the table, which is the order in which a record's columns are stored.
constexpr auto kRules = std::to_array<ColumnRule>({
    {2, &ColumnOf(&R::Division), AsCutText},
    {3, &ColumnOf(&R::Department), AsCutText},
    {4, &ColumnOf(&R::Description), AsDescription},
    {5, &ColumnOf(&R::SerialNum), AsCutText},
    {kPurchased, &ColumnOf(&R::Purchased), AsEitherDate},
    {11, &ColumnOf(&R::CodeSection), AsCodeSection},
    {6, &ColumnOf(&R::AccountNum), AsAccountNumber},
    {12, &ColumnOf(&R::NewUsed), AsNew},
    {kInService, &ColumnOf(&R::InService), AsEitherDate},
    {13, &ColumnOf(&R::AssetType), AsAssetType},
    {38, &ColumnOf(&R::FairMktValue), AsAmount},
    {16, &ColumnOf(&R::BusinessUse), AsBusinessUse},
    {kClassLife, &ColumnOf(&R::ClassLife), AsEitherLife},
    {35, &ColumnOf(&R::Casualty), AsFlag},
    {36, &ColumnOf(&R::LikeKind), AsLikeKind},
    {36, &ColumnOf(&R::Notice4), AsNotice4},
    {34, &ColumnOf(&R::Abandoned), AsFlag},
    {26, &ColumnOf(&R::Sold), AsSold},
    {9, &ColumnOf(&R::DateSold), AsDate},
    {26, &ColumnOf(&R::SoldAmount), AsAmount},
    {27, &ColumnOf(&R::SoldExpense), AsAmount},
    {kType, &ColumnOf(&R::DeprType), AsDeprType},
    {10, &ColumnOf(&R::DateDeprToo), AsDateIfThere},
    {kMethodField, &ColumnOf(&R::DeprMethod), AsDeprMethod},
    {20, &ColumnOf(&R::Basis), AsBasis},
    {22, &ColumnOf(&R::PrevDepr), AsAmount},
    {23, &ColumnOf(&R::CurrDepr), AsAmount},
    {39, &ColumnOf(&R::AddlDepr), AsAmount},
    {40, &ColumnOf(&R::ADPct), AsAmount},
    {25, &ColumnOf(&R::DeprLimit), AsAmount},
    {kSection179, &ColumnOf(&R::Section179), AsAmount},
    {28, &ColumnOf(&R::TaxCredit), AsAmount},
    {29, &ColumnOf(&R::TaxCreditUsed), AsAmount},
    {kPeriod, &ColumnOf(&R::Period), AsEitherLife},
    {30, &ColumnOf(&R::DBPercent), AsDBPercent},
    {33, &ColumnOf(&R::IRSConvUsed), AsText},
    {32, &ColumnOf(&R::Listed), AsFlag},
    {31, &ColumnOf(&R::Auto), AsFlag},
    {37, &ColumnOf(&R::Agri), AsFlag},
    {21, &ColumnOf(&R::Salvage), AsAmount},
});

// COMPAT: an unclaimed position is passed over only below the count, so that a last item that no box claims begins the next
// record.
void ReadItems(SequentialReader& file, const Layout& layout, UserRecord& record) {
    for (std::string& text : record.Text) text.clear();
    for (int position = 1; position <= kItems; ++position) {
        if (!layout.Reads(position)) continue;
        record.Rows.AtItem(position);
        std::string item = file.ReadText();
        const int field = layout.FieldAt(position);
        if (field != 0) record.Text.at(static_cast<std::size_t>(field)) = std::move(item);
    }
}

}  // namespace

std::string UserImportCountText(const ImportCounts& counts) {
    return "Assets Added = " + std::to_string(counts.Added + counts.Duplicates) +
           "  Assets Updated = " + std::to_string(counts.Updated);
}

std::string UserImportDoneText(const ImportCounts& counts) {
    return "DONE:  Assets Added = " + std::to_string(counts.Added + counts.Duplicates) +
           "    Assets Updated = " + std::to_string(counts.Updated);
}

ImportCounts UserImport(CompanySession& session, const UserImportOptions& options, const std::filesystem::path& file,
                        const ImportProgress& onRecord) {
    const Layout layout(options.Definition);
    if (layout.ItemsRead() == 0) throw PlatformError(Failure::InvalidCall, "The definition reads no item of a record");
    const int book = ExchangeBook(options.Book);
    SequentialReader reader(file);
    const auto told = [](int number) { return "An error " + std::to_string(number) + " has occurred during import"; };
    return RunImport(session, options.Ending, reader, told, [&](ImportedRows& rows, const ImportCounts& counts) {
        UserRecord record{.Fields = layout, .Rows = rows, .Text = {}};
        const auto readOne = [&] {
            ReadItems(reader, layout, record);
            rows.AtItem(layout.Position(kNumber));
            rows.Open(record[kNumber], options.AddNew);
            if (onRecord) onRecord(counts, reader.ShareRead());
            for (const ColumnRule& rule : kRules) {
                rows.AtItem(layout.Position(rule.Field));
                rule.Apply(record, *rule.Column, rule.Field);
            }
            rows.Update();
        };
        if (!layout.Has(kType)) rows.Remark("no box claims the depreciation type: taken as MACS");
        if (layout.LeavesLastItem()) {
            rows.Remark(
                "item " + std::to_string(layout.Count()) + ", the last, is claimed by no box: it is taken for the one after it",
                true);
        }
        bool more = !reader.AtEnd();
        while (more) {
            rows.BeginRecord(book);
            more = rows.Try(readOne) && !reader.AtEnd();
        }
    });
}

}  // namespace tallymar
