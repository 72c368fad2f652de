#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "assets/AssetFields.h"
#include "assets/FieldRules.h"

namespace tallymar {
namespace {

CurrencyAmount Amount(const char* text) {
    return CurrencyAmount::Parse(text).value();
}

std::vector<CurrencyAmount> Amounts(const char* texts) {
    std::istringstream in(texts);
    std::vector<CurrencyAmount> amounts;
    for (std::string text; in >> text;) amounts.push_back(Amount(text.c_str()));
    return amounts;
}

TEST(FieldRules, AdjBasisIsComputedThroughTheFields) {
    struct {
        const char* What;
        const char* InService;
        const char* Entries;  // cost, business use, salvage, Section 179, additional percent, credit, class life
        const char* Results;  // AddlDepr, AdjBasis
    } const cases[] = {
        {"additional depreciation on what is left", "1/1/2003", "10000 60 0 2000 30 0 5", "1200 2800"},
        {"the use as a fraction of four decimals", "1/1/2003", "3000 33.33 0 0 0 0 5", "0 999.9"},
        {"a negative basis stands", "1/1/2003", "1000 100 1500 0 0 0 5", "0 -500"},
        {"each step is shown to the cent", "1/1/2003", "100.01 50 0 0 50 0 5", "25.01 25"},
        {"a credit of a tenth halves in", "1/1/1983", "10000 100 0 0 0 1000 7", "0 9500"},
        {"a credit of eight in the hundred does not", "1/1/1983", "10000 100 0 0 0 800 7", "0 10000"},
        {"no credit reduction before 1983", "12/31/1982", "10000 100 0 0 0 1000 7", "0 10000"},
        {"no date, no reduction", "", "10000 100 0 0 0 1000 7", "0 10000"},
        {"a short life looks at a twentieth", "1/1/1985", "10000 100 0 0 0 600 3", "0 9700"},
        {"between four and five both", "1/1/1985", "10000 100 0 0 0 1000 4.5", "0 9000"},
    };
    for (const auto& c : cases) {
        AssetFieldValues values;
        BookFieldValues& book = values.Book[3];
        values.InService = c.InService;
        CurrencyAmount* const entries[] = {&book.Basis, &values.BusinessUse, &book.Salvage,    &book.Section179,
                                           &book.ADPct, &book.TaxCredit,     &values.ClassLife};
        const std::vector<CurrencyAmount> given = Amounts(c.Entries);
        for (std::size_t i = 0; i < std::size(entries); ++i) *entries[i] = given.at(i);
        ComputeAdjBasis(values, 3);
        EXPECT_EQ((std::vector{book.AddlDepr, book.AdjBasis}), Amounts(c.Results)) << c.What;
    }
}

AssetFieldValues Personal() {
    AssetFieldValues values;
    values.AssetType = "PP";
    values.BusinessUse = Units(100);
    values.InService = "3/1/2003";
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        BookFieldValues& fields = values.Book[book];
        fields.DeprType = "MCRS";
        fields.DeprMethod = "DB";
        fields.DBPercent = "200";
        fields.IRSConvUsed = "Y";
    }
    return values;
}

TEST(FieldRules, AssetTypesStartWithTheirShape) {
    const FieldRuleContext context{.Defaults = {.DeprType = "ACRS", .DeprMethod = "AC"}};
    const AssetRecord record;
    AssetFieldValues values = Personal();

    values.AssetType = "RL";
    ApplyChange(values, AssetField::AssetType, 0, context, record);
    EXPECT_EQ(values.ClassLife, Amount("31.5"));
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_EQ(values.Book[book].DeprMethod, "SL");
        EXPECT_EQ(values.Book[book].DBPercent, "") << "straight line takes the percent away";
        EXPECT_EQ(values.Book[book].IRSConvUsed, "M");
        EXPECT_EQ(values.Book[book].Period, Amount("31.5"));
        EXPECT_EQ(values.Book[book].DeprType, "MCRS") << "the type stays";
    }
    values.AssetType = "IN";
    ApplyChange(values, AssetField::AssetType, 0, context, record);
    EXPECT_EQ(values.ClassLife, Units(7));
    EXPECT_EQ(values.Book[4].Period, Units(7));

    values.AssetType = "PP";
    ApplyChange(values, AssetField::AssetType, 0, context, record);
    EXPECT_EQ(values.Book[2].DeprMethod, "AC");
    EXPECT_EQ(values.Book[2].DeprType, "ACRS");
    EXPECT_EQ(values.Book[2].DBPercent, "") << "only a default of DB sets a percent";
    ApplyChange(values, AssetField::AssetType, 0, {}, record);
    EXPECT_EQ(values.Book[2].DeprMethod, "DB");
    EXPECT_EQ(values.Book[2].DBPercent, "200");
    EXPECT_EQ(values.Book[2].IRSConvUsed, "Y");
}

TEST(FieldRules, MethodAndBusinessUse) {
    const AssetRecord record;
    AssetFieldValues values = Personal();
    values.Book[2].DBPercent = "150";
    values.Book[2].DeprMethod = "SY";
    ApplyChange(values, AssetField::DeprMethod, 2, {}, record);
    EXPECT_EQ(values.Book[2].DBPercent, "150");
    values.Book[2].DeprMethod = "DB";
    ApplyChange(values, AssetField::DeprMethod, 2, {}, record);
    EXPECT_EQ(values.Book[2].DBPercent, "150");

    values.BusinessUse = Units(51);
    ApplyChange(values, AssetField::BusinessUse, 0, {}, record);
    EXPECT_EQ(values.Book[1].DeprMethod, "DB");
    // Typing 100 passes through 1.
    values.BusinessUse = Amount("50.99");
    ApplyChange(values, AssetField::BusinessUse, 0, {}, record);
    values.BusinessUse = Units(100);
    ApplyChange(values, AssetField::BusinessUse, 0, {}, record);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_EQ(values.Book[book].DeprMethod, "SL");
        EXPECT_EQ(values.Book[book].DBPercent, "");
    }
}

TEST(FieldRules, FederalSpreadsWhileTheAssetIsNew) {
    const AssetRecord record;
    struct {
        AssetField Field;
        CurrencyAmount BookFieldValues::*Item;
    } const spreading[] = {{AssetField::Basis, &BookFieldValues::Basis},
                           {AssetField::Salvage, &BookFieldValues::Salvage},
                           {AssetField::Section179, &BookFieldValues::Section179},
                           {AssetField::TaxCredit, &BookFieldValues::TaxCredit},
                           {AssetField::TaxCreditUsed, &BookFieldValues::TaxCreditUsed}};
    for (const auto& [field, item] : spreading) {
        AssetFieldValues values = Personal();
        for (int book = kFirstBook; book <= kLastBook; ++book) values.Book[book].Basis = Units(5000);
        values.Book[1].*item = Units(1000);
        ApplyChange(values, field, 1, {.NewAssetPending = true, .Defaults = {}}, record);
        EXPECT_EQ(values.Book[4].*item, Units(1000));
        EXPECT_EQ(values.Book[4].AdjBasis, field == AssetField::TaxCreditUsed ? CurrencyAmount() : values.Book[1].AdjBasis);

        values.Book[2].*item = Units(7);
        ApplyChange(values, field, 2, {.NewAssetPending = true, .Defaults = {}}, record);
        EXPECT_EQ(values.Book[1].*item, Units(1000)) << "only Federal spreads";
        values.Book[1].*item = Units(8);
        ApplyChange(values, field, 1, {}, record);
        EXPECT_EQ(values.Book[2].*item, Units(7)) << "and only on a new asset";
    }
    AssetFieldValues values = Personal();
    values.Book[1].TaxCreditYear = 1999;
    values.Book[1].PrevDepr = Units(9);
    ApplyChange(values, AssetField::TaxCreditYear, 1, {.NewAssetPending = true, .Defaults = {}}, record);
    ApplyChange(values, AssetField::PrevDepr, 1, {.NewAssetPending = true, .Defaults = {}}, record);
    EXPECT_EQ(values.Book[3].TaxCreditYear, 1999);
    EXPECT_EQ(values.Book[3].PrevDepr, CurrencyAmount());
}

TEST(FieldRules, StocksAndClassLives) {
    AssetFieldValues values = Personal();
    values.ClassLife = Units(5);
    values.Book[2].Period = Units(3);
    ApplyClassLife(values);
    EXPECT_EQ(values.Book[1].Period, Units(5));
    EXPECT_EQ(values.Book[2].Period, Units(3));

    const AssetFieldValues before = values;
    ApplyStockAndCollectible(values, true);
    EXPECT_EQ(values, before) << "an asset of another type is left alone";
    values.Book[1].DeprType = "COLL";
    const AssetFieldValues collectible = values;
    ApplyStockAndCollectible(values, false);
    EXPECT_EQ(values, collectible) << "as is one that is not new";
    ApplyStockAndCollectible(values, true);
    EXPECT_EQ(values.ClassLife, CurrencyAmount());
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_EQ(values.Book[book].DeprType, "COLL");
        EXPECT_EQ(values.Book[book].DeprMethod, "XX");
        EXPECT_EQ(values.Book[book].IRSConvUsed, "X");
        EXPECT_EQ(values.Book[book].DBPercent, "");
        EXPECT_EQ(values.Book[book].Period, CurrencyAmount());
    }
}

TEST(FieldRules, DispositionsExcludeEachOther) {
    const AssetRecord record;
    AssetFieldValues values;
    values.Abandoned = values.Notice4 = values.Sold = true;
    ApplyChange(values, AssetField::Sold, 0, {}, record);
    EXPECT_TRUE(values.Sold);
    EXPECT_FALSE(values.Abandoned || values.Casualty || values.LikeKind || values.Notice4);
    values.Abandoned = true;
    values.Sold = false;
    ApplyChange(values, AssetField::Sold, 0, {}, record);
    EXPECT_TRUE(values.Abandoned) << "clearing one does nothing";
}

TEST(FieldRules, GainAndStatusLookAtTheSavedFederalBook) {
    AssetRecord record;
    record.Basis[1] = Units(10000);
    record.PrevDepr[1] = Units(6000);
    record.AddlDepr[1] = Units(500);
    record.CurrDepr[1] = Units(250);
    record.Section179[1] = Units(1000);
    AssetFieldValues values;
    values.Book[1].Basis = Units(1);  // typed and not saved: plays no part
    ComputeGainLoss(values, record);
    EXPECT_EQ(values.GainLoss, CurrencyAmount()) << "no amount, no gain";
    values.SoldExpense = Amount("0.01");
    ComputeGainLoss(values, record);
    EXPECT_EQ(values.GainLoss, Amount("-2250.01"));
    values.SoldAmount = Units(3000);
    ComputeGainLoss(values, record);
    EXPECT_EQ(values.GainLoss, Amount("749.99"));

    EXPECT_EQ(AssetStatusText(values, record), "Asset is still depreciating");
    record.PrevDepr[1] = Units(9000);
    EXPECT_EQ(AssetStatusText(values, record), "Asset is fully depreciated");
    record.Section179[1] = Units(10000);
    EXPECT_EQ(AssetStatusText(values, record), "Asset was Sec.179 expensed");
    values.Sold = true;
    EXPECT_EQ(AssetStatusText(values, record), "Asset has been Sold");
    values.Casualty = true;
    EXPECT_EQ(AssetStatusText(values, record), "Asset was a Causalty Loss");
    values.Notice4 = true;
    EXPECT_EQ(AssetStatusText(values, record), "Asset was Notice-4 exchanged");
}

// Every column has its field; what may go without is named.
TEST(AssetFields, CoverTheColumns) {
    std::vector<std::string_view> missing;
    for (const AssetColumn& column : kAssetColumns) {
        const auto field = std::find_if(AssetFields().begin(), AssetFields().end(),
                                        [&column](const AssetFieldDef& def) { return def.Stored == column.Member; });
        if (field == AssetFields().end()) {
            missing.push_back(column.Name);
        } else {
            EXPECT_EQ(field->Place == FieldPlace::Book, column.IsPerBook()) << column.Name;
        }
    }
    EXPECT_EQ(missing, (std::vector<std::string_view>{"FedLife", "DeprLimit"}));
    EXPECT_EQ(MaxLengthOf(FieldDef(AssetField::AccountNum)), 16U);
    EXPECT_EQ(MaxLengthOf(FieldDef(AssetField::Division)), 16U);
    EXPECT_EQ(MaxLengthOf(FieldDef(AssetField::CodeSection)), 8U);
    EXPECT_EQ(ControlName(FieldDef(AssetField::Basis), 2), "sidbBasis(2)");
    EXPECT_EQ(ControlName(FieldDef(AssetField::AssetNum), 0), "sitxAssetNum");
}

}  // namespace
}  // namespace tallymar
