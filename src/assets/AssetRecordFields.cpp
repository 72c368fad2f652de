#include "assets/AssetRecordFields.h"

#include <algorithm>
#include <type_traits>

#include "assets/AssetFields.h"
#include "assets/FieldRules.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

template <std::size_t N>
void Show(const FixedText<N>& stored, std::string& shown) {
    shown = stored.Trimmed();
}
void Show(const std::string& stored, std::string& shown) {
    shown = stored;
}
void Show(Date stored, std::string& shown) {
    shown = stored.IsNone() ? std::string() : FormatShortDate(stored);
}
void Show(CurrencyAmount stored, CurrencyAmount& shown) {
    shown = ThroughField(stored);
}
void Show(std::int16_t stored, int& shown) {
    shown = stored;
}
void Show(bool stored, bool& shown) {
    shown = stored;
}

template <std::size_t N>
void Store(const std::string& shown, FixedText<N>& stored) {
    stored = shown;
}
void Store(const std::string& shown, std::string& stored) {
    stored = shown;
}
void Store(const std::string& shown, Date& stored) {
    stored = TextToDate(shown);
}
void Store(CurrencyAmount shown, CurrencyAmount& stored) {
    stored = shown;
}
void Store(int shown, std::int16_t& stored) {
    stored = ToInteger(shown);
}
void Store(bool shown, bool& stored) {
    stored = shown;
}

// What a field's or column's member holds, of the book if it is one of the books'. The holder may be const.
template <typename Holder, typename Item, typename Owner>
auto& ItemOf(Holder& holder, Item Owner::*member, int book) {
    if constexpr (std::is_same_v<Owner, BookFieldValues>) {
        return holder.Book[book].*member;
    } else if constexpr (requires { (holder.*member)[book]; } && !std::is_same_v<Item, std::string>) {
        return (holder.*member)[book];
    } else {
        return holder.*member;
    }
}

// Calls each(field, book) for every field that is stored, those of the books once for each.
template <typename Each>
void ForEachStored(Each each) {
    for (const AssetFieldDef& field : AssetFields()) {
        if (!field.Stored) continue;
        if (field.Place != FieldPlace::Book) {
            each(field, 0);
            continue;
        }
        for (int book = kFirstBook; book <= kLastBook; ++book) each(field, book);
    }
}

// COMPAT: a list that lacks the stored code keeps what the asset before showed, and saving stores that.
void ShowList(const AssetRecord& r, AssetField list, int book, AssetFieldValues& v) {
    switch (list) {
        case AssetField::NewUsed:
            if (r.NewUsed == "N") v.NewUsed = "New";
            if (r.NewUsed == "U") v.NewUsed = "Used";
            break;
        case AssetField::AssetType:
            MoveList(v, list, book, r.AssetType);
            break;
        case AssetField::DeprType:
            v.Book[book].DeprType = DeprTypeCode(r.DeprType[book]);
            break;
        case AssetField::DeprMethod:
            v.Book[book].DeprMethod = DeprMethodCode(r.DeprMethod[book]);
            break;
        case AssetField::DBPercent:
            v.Book[book].DBPercent = r.DBPercent[book] != 0 ? std::to_string(r.DBPercent[book]) : std::string();
            break;
        case AssetField::IRSConvUsed:
            MoveList(v, list, book, r.IRSConvUsed[book].View());
            break;
        default:
            break;
    }
}

template <typename Codes>
void StoreIndex(const Codes& codes, std::string_view code, std::int16_t& index) {
    const auto found = std::find(codes.begin(), codes.end(), code);
    if (found != codes.end()) index = static_cast<std::int16_t>(found - codes.begin());
}

void StoreList(const AssetFieldValues& v, AssetField list, int book, AssetRecord& r) {
    switch (list) {
        case AssetField::NewUsed:
            r.NewUsed = v.NewUsed == "New" ? "N" : "U";
            break;
        case AssetField::AssetType:
            r.AssetType = v.AssetType;
            break;
        case AssetField::DeprType:
            StoreIndex(kDeprTypes, v.Book[book].DeprType, r.DeprType[book]);
            break;
        case AssetField::DeprMethod:
            StoreIndex(kDeprMethods, v.Book[book].DeprMethod, r.DeprMethod[book]);
            break;
        case AssetField::DBPercent:
            r.DBPercent[book] = ToInteger(Val(v.Book[book].DBPercent));
            break;
        case AssetField::IRSConvUsed:
            r.IRSConvUsed[book] = v.Book[book].IRSConvUsed;
            break;
        default:
            break;
    }
}

}  // namespace

void RecordToFields(const AssetRecord& record, AssetFieldValues& values) {
    ForEachStored([&](const AssetFieldDef& field, int book) {
        if (field.Computed) return;
        if (field.Kind == FieldKind::List) return ShowList(record, field.Id, book, values);
        std::visit(
            [&](auto stored, auto member) {
                const auto& item = ItemOf(record, stored, book);
                auto& shown = ItemOf(values, member, book);
                if constexpr (requires { Show(item, shown); }) return Show(item, shown);
                throw PlatformError(Failure::TypeMismatch);
            },
            *field.Stored, field.Member);
    });
    if (record.TaxGroup.empty()) values.TaxGroup = kBlankTaxGroup;
}

void FieldsToRecord(const AssetFieldValues& values, AssetRecord& record) {
    ForEachStored([&](const AssetFieldDef& field, int book) {
        if (field.Kind == FieldKind::List) return StoreList(values, field.Id, book, record);
        std::visit(
            [&](auto stored, auto member) {
                const auto& shown = ItemOf(values, member, book);
                auto& item = ItemOf(record, stored, book);
                if constexpr (requires { Store(shown, item); }) return Store(shown, item);
                throw PlatformError(Failure::TypeMismatch);
            },
            *field.Stored, field.Member);
    });
    if (RTrim(record.TaxGroup).empty()) record.TaxGroup = kBlankTaxGroup;
    record.FedLife = ToInteger(static_cast<double>(record.ClassLife.WholePart()));
}

}  // namespace tallymar
