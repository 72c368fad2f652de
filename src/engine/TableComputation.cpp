#include "engine/EngineMath.h"
#include "engine/Methods.h"

namespace tallymar {

YearAmount ComputeFromTable(const WorkingRecord& record, const YearFacts& facts, DepreciationTables& tables) {
    const DepreciationTableFile* table = tables.Table(record.DeprType, record.DeprMethod, record.Period, record.AssetType);
    if (table == nullptr) return {CurrencyAmount(), kStatusTableNotFound};
    const CurrencyAmount amount = PercentageToCent(record.MaxDepr, table->Percentage(facts.ServiceMonth, facts.YearOfLife));
    if (!facts.Disposed) return {amount};

    const double month = Real(amount) / 12.0;
    const auto sold = [](CurrencyAmount toSale) { return YearAmount{toSale, kStatusDepreciatedToSale}; };
    if (record.Convention() != 'Y') return sold(ToAmount(month * Real(facts.SaleMonth)));
    if (record.ClassLife < Units(15)) return sold(amount);
    if (record.ClassLife == Units(15)) return sold(ToAmount(month * Real(facts.SaleMonth - 1)));
    return sold(ToAmount(month * (Real(facts.SaleMonth) - 0.5)));
}

}  // namespace tallymar
