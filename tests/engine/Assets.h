#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/ADepre.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "store/AssetRecord.h"
#include "store/Vocabularies.h"

namespace tallymar {

// Failures print amounts as a person reads them.
inline void PrintTo(CurrencyAmount amount, std::ostream* out) {
    *out << amount.ToText();
}

}  // namespace tallymar

namespace tallymar::test {

inline CurrencyAmount Money(std::string_view text) {
    return CurrencyAmount::Parse(text).value();
}
inline std::vector<CurrencyAmount> Amounts(std::initializer_list<std::string_view> texts) {
    std::vector<CurrencyAmount> amounts;
    for (const std::string_view text : texts) amounts.push_back(Money(text));
    return amounts;
}
inline Date Day(int year, int month, int day) {
    return Date::FromYmd(year, month, day);
}
inline Date YearEnd(int year) {
    return Day(year, 12, 31);
}

inline const std::filesystem::path kDeliveredTables = std::filesystem::path(TALLYMAR_BINARY_DIR) / "share/tallymar";

// One asset in book 1, to be bent to the case: full business use, new, nothing sold.
struct TestAsset {
    AssetRecord Record;
    int Book;

    TestAsset(std::string_view assetType, int type, int method, std::string_view period, std::string_view basis, Date inService,
              int book = 1)
        : Book(book) {
        Record.AssetType = assetType;
        Record.NewUsed = "N";
        Record.BusinessUse = Units(100);
        Record.InService = inService;
        Record.DeprType[Book] = static_cast<std::int16_t>(type);
        Record.DeprMethod[Book] = static_cast<std::int16_t>(method);
        Record.Period[Book] = Money(period);
        Record.Basis[Book] = Money(basis);
    }

    TestAsset& Declining(int percent) {
        Record.DBPercent[Book] = static_cast<std::int16_t>(percent);
        return *this;
    }
    TestAsset& Convention(std::string_view letter) {
        Record.IRSConvUsed[Book] = letter;
        return *this;
    }
    TestAsset& SoldOn(Date date) {
        Record.Sold = true;
        Record.DateSold = date;
        return *this;
    }

    CurrencyAmount Compute(ADepre& engine, Date asOf, bool midQuarter = false) {
        engine.ComputeDepreciation(Record, asOf, midQuarter, Book);
        return Record.CurrDepr[Book];
    }
    // The amounts of consecutive fiscal years from firstYearEnd on, each year's amount moving on into PrevDepr.
    std::vector<CurrencyAmount> ComputeYears(ADepre& engine, Date firstYearEnd, int years, bool midQuarter = false) {
        std::vector<CurrencyAmount> amounts;
        for (int year = 0; year < years; ++year) {
            amounts.push_back(Compute(engine, firstYearEnd.AddYears(year), midQuarter));
            Record.PrevDepr[Book] += amounts.back();
        }
        return amounts;
    }
};

}  // namespace tallymar::test
