#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "assets/DeprBuild.h"
#include "engine/ADepre.h"
#include "help/HelpText.h"
#include "platform/runtime/Format.h"
#include "store/Vocabularies.h"

namespace tallymar {
namespace {

// A worked example of the help: an asset, and the years whose amounts the page gives.
struct Example {
    const char* Page;
    const char* Type;
    const char* Method;
    int Percent;
    const char* Convention;
    const char* AssetType;
    Date InService;
    int Cost;
    double Period;
    int Years;
    // What only some have.
    int Section179 = 0;
    int AddlPercent = 0;
    int BusinessUse = 100;
    int TaxCredit = 0;
    bool Auto = false;
    Date Sold = {};
    bool IsBuild = false;  // as the Build command has it
};

const Example kExamples[] = {
    {"mcrs", "MCRS", "DB", 200, "Y", "PP", Date::FromYmd(1998, 2, 10), 1000, 5, 6},
    {"mcrs", "MCRS", "SL", 0, "Y", "PP", Date::FromYmd(1999, 6, 14), 18000, 5, 6},
    {"mcrs", "MCRS", "SL", 0, "N", "PP", Date::FromYmd(2001, 9, 15), 12000, 5, 1},
    {"depreciation", "MCRS", "SL", 0, "N", "PP", Date::FromYmd(2001, 9, 15), 12000, 5, 1},
    {"mcrs", "MCRS", "SL", 0, "M", "RL", Date::FromYmd(2001, 1, 15), 100000, 39, 2},
    {"mid-quarter", "MCRS", "DB", 200, "Q", "PP", Date::FromYmd(2002, 1, 14), 4000, 7, 2},
    {"mid-quarter", "MCRS", "DB", 200, "Q", "PP", Date::FromYmd(2002, 9, 9), 1000, 7, 2},
    {"mid-quarter", "MCRS", "DB", 200, "Q", "PP", Date::FromYmd(2002, 10, 7), 5000, 5, 6},
    {.Page = "first-year",
     .Type = "MCRS",
     .Method = "DB",
     .Percent = 200,
     .Convention = "Q",
     .AssetType = "PP",
     .InService = Date::FromYmd(2003, 10, 26),
     .Cost = 39000,
     .Period = 7,
     .Years = 1,
     .Section179 = 24000,
     .AddlPercent = 50},
    {.Page = "first-year",
     .Type = "MCRS",
     .Method = "DB",
     .Percent = 200,
     .Convention = "Y",
     .AssetType = "PP",
     .InService = Date::FromYmd(2002, 3, 4),
     .Cost = 10000,
     .Period = 5,
     .Years = 2,
     .AddlPercent = 30},
    {.Page = "build",
     .Type = "MCRS",
     .Method = "DB",
     .Percent = 200,
     .Convention = "Y",
     .AssetType = "PP",
     .InService = Date::FromYmd(2002, 3, 4),
     .Cost = 10000,
     .Period = 5,
     .Years = 2,
     .AddlPercent = 30,
     .IsBuild = true},
    {.Page = "automobiles",
     .Type = "MCRS",
     .Method = "DB",
     .Percent = 200,
     .Convention = "Y",
     .AssetType = "PP",
     .InService = Date::FromYmd(1997, 5, 12),
     .Cost = 31500,
     .Period = 5,
     .Years = 6,
     .Auto = true},
    {.Page = "automobiles",
     .Type = "MCRS",
     .Method = "SL",
     .Percent = 0,
     .Convention = "Y",
     .AssetType = "PP",
     .InService = Date::FromYmd(2000, 5, 12),
     .Cost = 30000,
     .Period = 5,
     .Years = 4,
     .BusinessUse = 60,
     .Auto = true},
    {"acrs", "ACRS", "AC", 0, "Y", "PP", Date::FromYmd(1984, 3, 1), 10000, 5, 5},
    {"acrs", "ACRS", "SL", 0, "Y", "PP", Date::FromYmd(1984, 3, 1), 10000, 5, 6},
    {"tables", "MACS", "DB", 200, "Y", "PP", Date::FromYmd(1996, 8, 11), 10000, 7, 8},
    {"tables", "MCRS", "DB", 200, "Y", "PP", Date::FromYmd(1996, 8, 11), 10000, 7, 1},
    {"formula", "AMRT", "SL", 0, "N", "IN", Date::FromYmd(2000, 4, 1), 5100, 17, 2},
    {"formula", "ADS", "SL", 0, "N", "PP", Date::FromYmd(1999, 7, 1), 12000, 12, 2},
    {"formula", "GENL", "DB", 200, "N", "PP", Date::FromYmd(1999, 4, 1), 10000, 5, 6},
    {"formula", "GENL", "SY", 0, "N", "PP", Date::FromYmd(1999, 1, 10), 15000, 5, 5},
    {.Page = "disposals",
     .Type = "MCRS",
     .Method = "DB",
     .Percent = 200,
     .Convention = "Q",
     .AssetType = "PP",
     .InService = Date::FromYmd(2000, 12, 2),
     .Cost = 10000,
     .Period = 5,
     .Years = 4,
     .Sold = Date::FromYmd(2003, 4, 6)},
    {.Page = "tax-credit",
     .Type = "ACRS",
     .Method = "AC",
     .Percent = 0,
     .Convention = "Y",
     .AssetType = "PP",
     .InService = Date::FromYmd(1985, 6, 1),
     .Cost = 10000,
     .Period = 5,
     .Years = 1,
     .TaxCredit = 1000},
};

template <typename Codes>
std::int16_t IndexOf(const Codes& codes, const std::string& code) {
    return static_cast<std::int16_t>(std::find(codes.begin(), codes.end(), code) - codes.begin());
}

AssetRecord RecordOf(const Example& example) {
    AssetRecord record;
    record.AssetType = example.AssetType;
    record.NewUsed = example.AddlPercent > 0 ? "N" : "U";
    record.InService = example.InService;
    record.BusinessUse = Units(example.BusinessUse);
    record.ClassLife = CurrencyAmount::FromDouble(example.Period);
    record.DeprType[1] = IndexOf(kDeprTypes, example.Type);
    record.DeprMethod[1] = IndexOf(kDeprMethods, example.Method);
    record.DBPercent[1] = static_cast<std::int16_t>(example.Percent);
    record.Period[1] = CurrencyAmount::FromDouble(example.Period);
    record.IRSConvUsed[1] = example.Convention;
    record.Basis[1] = Units(example.Cost);
    record.Section179[1] = Units(example.Section179);
    record.ADPct[1] = Units(example.AddlPercent);
    record.TaxCredit[1] = Units(example.TaxCredit);
    record.Auto[1] = example.Auto;
    record.Sold = !example.Sold.IsNone();
    record.DateSold = example.Sold;
    return record;
}

// What the years come to, closed one after the other.
std::vector<CurrencyAmount> AmountsOf(const Example& example, ADepre& engine) {
    AssetRecord record = RecordOf(example);
    std::vector<CurrencyAmount> amounts;
    const int first = example.InService.Year();
    if (example.IsBuild) {
        DeprBuildGrid grid;
        BuildDepreciation(record, Date::FromYmd(first + example.Years - 1, 12, 31), engine, grid);
        for (const DeprBuildRow& row : grid.Rows()) amounts.push_back(row.CurrDepr[1]);
        return amounts;
    }
    for (int year = first; year < first + example.Years; ++year) {
        record.PrevDepr[1] += record.CurrDepr[1];
        engine.ComputeDepreciation(record, Date::FromYmd(year, 12, 31), record.IRSConvUsed[1] == "Q", 1);
        amounts.push_back(record.CurrDepr[1]);
    }
    return amounts;
}

TEST(WorkedExamples, TheHelpGivesTheAmountsThatTheEngineComputes) {
    const auto books = test::OpenBooks();
    ADepre engine(test::kShareFolder);
    engine.BeginRun("False");
    for (const Example& example : kExamples) {
        const std::string page = test::TextOfPages(*books, QString::fromLatin1(example.Page) + ".html");
        for (const CurrencyAmount amount : AmountsOf(example, engine)) {
            const std::string text = Format(amount, "###,##0.00");
            EXPECT_NE(page.find(text), page.npos) << example.Page << ": " << example.Type << " " << example.Method << " of "
                                                  << example.Cost << " comes to " << text;
        }
    }
}

}  // namespace
}  // namespace tallymar
