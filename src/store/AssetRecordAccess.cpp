#include "store/AssetRecordAccess.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

constexpr CurrencyAmount kLongClassLife = Units(11);
constexpr std::string_view kShortLifeSection = "1245";

// Rows are read as if through text: a Null is then nothing, and a number of another type than the column's, as a file of another
// program may hold, still reads as a number.
double NumberOf(const recordset::Value& value) {
    return Val(value.ToText());
}

void Load(const recordset::Value& value, std::string& item) {
    if (value.Type() == recordset::Value::Kind::Text) {
        item.assign(value.Text());
    } else {
        item = value.ToText();
    }
}

template <std::size_t N>
void Load(const recordset::Value& value, FixedText<N>& item) {
    if (value.Type() == recordset::Value::Kind::Text) {
        item = value.Text();
    } else {
        item = value.ToText();
    }
}

// COMPAT: amounts are read through a double. Up to 2^50 ten-thousandths that gives every amount back as it was.
void Load(const recordset::Value& value, CurrencyAmount& item) {
    if (value.Type() != recordset::Value::Kind::Currency) {
        item = CurrencyAmount::FromDouble(NumberOf(value));
        return;
    }
    constexpr CurrencyAmount kExact = CurrencyAmount::FromTenThousandths(std::int64_t{1} << 50);
    const CurrencyAmount amount = value.Currency();
    item = amount > -kExact && amount < kExact ? amount : CurrencyAmount::FromDouble(amount.ToDouble());
}

void Load(const recordset::Value& value, std::int16_t& item) {
    item = value.Type() == recordset::Value::Kind::Integer ? value.Integer() : ToInteger(NumberOf(value));
}

void Load(const recordset::Value& value, Date& item) {
    item = value.IsDate() ? value.AsDate() : Date();
}

void Load(const recordset::Value& value, bool& item) {
    item = value.Boolean();
}

std::int16_t FedLifeOf(CurrencyAmount classLife) {
    return ToInteger(static_cast<double>(classLife.WholePart()));
}

template <std::size_t N>
recordset::Value ValueOf(const FixedText<N>& item) {
    return item.View();
}

template <typename T>
recordset::Value ValueOf(const T& item) {
    return item;
}

}  // namespace

AssetRecordAccess::AssetRecordAccess(recordset::Recordset& assets) : assets_(&assets) {
    ordinals_.reserve(kAssetFileColumns);
    AssetRecord record;
    VisitAssetColumns(record, [this](const AssetColumn& column, const auto&, int book) {
        ordinals_.push_back(assets_->Ordinal(ColumnName(column, book)));
    });
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const auto ordinalOf = [&](const AssetMember& member) { return assets_->Ordinal(ColumnName(ColumnOf(member), book)); };
        computedOrdinals_[book] = std::apply([&](auto... member) { return std::array{ordinalOf(member)...}; }, kComputedMembers);
    }
}

void AssetRecordAccess::ReadAssetRecord(AssetRecord& record) {
    auto ordinal = ordinals_.cbegin();
    VisitAssetColumns(record, [&](const AssetColumn&, auto& item, int) {
        const int column = *ordinal++;
        // COMPAT: the class life alone tells; what the column FedLife holds is never looked at.
        if (static_cast<const void*>(&item) != &record.FedLife) Load(assets_->Get(column), item);
    });
    record.FedLife = FedLifeOf(record.ClassLife);
    if (record.CodeSection.empty() && record.ClassLife < kLongClassLife) record.CodeSection = kShortLifeSection;
}

void RequireReadable(const AssetColumn& column, const recordset::Value& value) {
    if (value.Type() != recordset::Value::Kind::Currency) return;  // nothing that a column can hold fails for the others
    CurrencyAmount amount;
    Load(value, amount);
    if (column.Member == AssetMember(&AssetRecord::ClassLife)) FedLifeOf(amount);
}

void AssetRecordAccess::WriteAssetRecord(const AssetRecord& record) {
    assets_->Edit();
    Store(record, true);
}

void AssetRecordAccess::ReplaceAssetRecord(const AssetRecord& record) {
    assets_->Edit();
    Store(record, false);
}

void AssetRecordAccess::AddAssetRecord(const AssetRecord& record) {
    assets_->AddNew();
    Store(record, false);
}

void AssetRecordAccess::WriteComputed(const AssetRecord& record, int book) {
    assets_->Edit();
    Finish([&] {
        auto ordinal = computedOrdinals_[book].cbegin();
        std::apply([&](auto... member) { (assets_->Set(*ordinal++, ValueOf((record.*member)[book])), ...); }, kComputedMembers);
    });
}

void AssetRecordAccess::Store(const AssetRecord& record, bool blankTaxGroup) {
    Finish([&] {
        auto ordinal = ordinals_.cbegin();
        VisitAssetColumns(record, [&](const AssetColumn&, const auto& item, int) {
            const bool blank = blankTaxGroup && static_cast<const void*>(&item) == &record.TaxGroup && record.TaxGroup.empty();
            assets_->Set(*ordinal++, blank ? recordset::Value(kBlankTaxGroup) : ValueOf(item));
        });
    });
}

template <typename SetColumns>
void AssetRecordAccess::Finish(SetColumns setColumns) {
    try {
        setColumns();
        assets_->Update();
    } catch (...) {
        assets_->CancelUpdate();
        throw;
    }
}

}  // namespace tallymar
