#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "engine/ADepre.h"
#include "platform/runtime/DateText.h"
#include "samples/TextTable.h"
#include "store/Vocabularies.h"

namespace tallymar {
namespace {

using Row = std::map<std::string, std::string>;

template <typename Codes>
std::int16_t IndexOf(const Codes& codes, const std::string& code) {
    return static_cast<std::int16_t>(std::find(codes.begin(), codes.end(), code) - codes.begin());
}

AssetRecord RecordOf(const Row& row) {
    const auto amount = [&](const char* column) { return CurrencyAmount::Parse(row.at(column)).value(); };
    AssetRecord record;
    record.AssetType = row.at("AssetType");
    record.NewUsed = row.at("NewUsed");
    record.InService = ParseIsoDate(row.at("InService")).value();
    record.BusinessUse = amount("BusinessUse");
    record.ClassLife = amount("Life");
    record.DeprType[1] = IndexOf(kDeprTypes, row.at("Type"));
    record.DeprMethod[1] = IndexOf(kDeprMethods, row.at("Method"));
    record.DBPercent[1] = static_cast<std::int16_t>(std::stoi(row.at("Percent")));
    record.Period[1] = amount("Life");
    record.IRSConvUsed[1] = row.at("Convention");
    record.Basis[1] = amount("Cost");
    record.Section179[1] = amount("Section179");
    record.ADPct[1] = amount("AddlPercent");
    record.Auto[1] = row.at("Auto") == "Yes";
    if (const std::string& sold = row.at("Sold"); !sold.empty()) {
        record.Sold = true;
        record.DateSold = ParseIsoDate(sold).value();
    }
    return record;
}

// The examples that IRS Publication 946 works out in print, each year computed on top of the years before it.
TEST(Publication946, EveryPrintedAnswerIsComputed) {
    ADepre engine(test::kTableFolder);
    const auto rows = test::ReadTable(TALLYMAR_SOURCE_DIR "/tests/samples/publication946.csv");
    ASSERT_GT(rows.size(), 60U);
    for (const Row& row : rows) {
        AssetRecord record = RecordOf(row);
        const int lastYear = std::stoi(row.at("Year"));
        for (int year = record.InService.Year(); year <= lastYear; ++year) {
            record.PrevDepr[1] += record.CurrDepr[1];
            engine.ComputeDepreciation(record, Date::FromYmd(year, 12, 31), row.at("Convention") == "Q", 1);
        }
        const std::string& figure = row.at("Figure");
        const CurrencyAmount computed = figure == "Allowance" ? record.AddlDepr[1]
                                        : figure == "ToDate"  ? record.PrevDepr[1] + record.CurrDepr[1]
                                                              : record.CurrDepr[1];
        EXPECT_LE(std::fabs(computed.ToDouble() - std::stod(row.at("Printed"))), std::stod(row.at("Within")) + 1e-9)
            << row.at("Example") << ", " << figure << " " << lastYear << ": computed " << computed.ToText() << ", printed "
            << row.at("Printed") << " (" << row.at("Place") << ": " << row.at("Why") << ")";
    }
}

}  // namespace
}  // namespace tallymar
