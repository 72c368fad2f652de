#pragma once

#include <functional>
#include <optional>
#include <string>

#include "reports/Reports.h"
#include "store/Vocabularies.h"
#include "support/TestCompany.h"

namespace tallymar::test {

// A company whose reports can be printed, with a fixed clock.
struct ReportCompany : TestCompany {
    ReportCompany() : Engine(Folder.Path()) { SetYearEnds(Date::FromYmd(2003, 12, 31)); }

    void Add(const AssetRecord& asset) { Session.AddAssetRecord(asset); }

    static ReportOptions Options(int reportNumber) { return ReportOptions::Defaults(reportNumber, Date::FromYmd(2004, 1, 15)); }

    ReportResult Print(ReportOptions options, PageDocument& canvas, DetailTable* details = nullptr) {
        const std::optional<ReportFilter> filter = CheckReportOptions(Session, options, Prompts);
        if (!filter) return {};
        if (AfterAsking) AfterAsking();
        ReportRun run{.Session = Session,
                      .Engine = Engine,
                      .Asking = Prompts,
                      .V = canvas,
                      .Filter = *filter,
                      .Now = Date::FromYmd(2004, 1, 15).AddDays(0.75),
                      .Details = details,
                      .OnDrawn = OnDrawn};
        return PrintReport(run);
    }

    AssetRecord Read(const char* number) {
        Session.AssetsRecordset().SetIndex("AssetNum");
        Session.AssetsRecordset().Seek(number);
        AssetRecord record;
        Session.ReadAssetRecord(record);
        return record;
    }

    ADepre Engine;
    std::function<void()> AfterAsking;  // what happens between the checks and the run
    std::function<void()> OnDrawn;
};

inline CurrencyAmount Money(const char* text) {
    return CurrencyAmount::Parse(text).value();
}

// An asset of one account with the same amounts in every book, but half the current depreciation in all books other than Federal.
inline AssetRecord Ledger(const char* number, const char* account, const char* description, Date inService, const char* cost,
                          const char* previous, const char* current) {
    AssetRecord asset = Machine(number, inService, 0);
    asset.AccountNum = account;
    asset.Description = description;
    asset.PropertyTax = true;
    asset.FairMktValue = Units(500);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        asset.Basis[book] = Money(cost);
        asset.PrevDepr[book] = Money(previous);
        asset.CurrDepr[book] = Money(current);
        asset.YearThru[book] = 2;
        if (book != 1) asset.CurrDepr[book] = CurrencyAmount::FromDouble(Money(current).ToDouble() / 2);
    }
    return asset;
}

inline void SetInEveryBook(PerBook<CurrencyAmount>& amounts, const char* amount) {
    for (int book = kFirstBook; book <= kLastBook; ++book) amounts[book] = Money(amount);
}

inline void Dispose(AssetRecord& asset, bool AssetRecord::*flag, Date date, const char* amount, const char* expense) {
    asset.*flag = true;
    asset.DateSold = date;
    asset.SoldAmount = Money(amount);
    asset.SoldExpense = Money(expense);
}

// One asset of every kind that the reports tell apart, in three accounts.
inline void FillWithEveryKind(ReportCompany& company) {
    const Date sold = Date::FromYmd(2003, 9, 30);
    const auto year = [](int y) { return Date::FromYmd(y, 3, 1); };
    const auto add = [&](AssetRecord asset, auto&&... changes) {
        (changes(asset), ...);
        company.Add(asset);
    };
    add(Ledger("A1", "1500", "Lathe", year(2001), "10000", "5200", "1920"),
        [](AssetRecord& a) { a.Descrip2 = "second line of A1"; });
    add(Ledger("A2", "1500", "Mill, sold: flag and amount", year(2001), "8000.55", "4160.29", "768"),
        [&](AssetRecord& a) { Dispose(a, &AssetRecord::Sold, sold, "3500", "125.50"); });
    add(Ledger("A3", "1500", "Press, an amount and no flag", year(2001), "2000", "1040", "192"), [&](AssetRecord& a) {
        a.DateSold = sold;
        a.SoldAmount = Money("900");
    });
    add(Ledger("A4", "1500", "Saw, like-kind after 2000", year(2001), "3000", "1560", "576"),
        [&](AssetRecord& a) { Dispose(a, &AssetRecord::Notice4, sold, "100", "0"); });
    add(Ledger("A5", "1500", "Drill, like-kind", year(2001), "1000", "520", "96"),
        [&](AssetRecord& a) { Dispose(a, &AssetRecord::LikeKind, sold, "0", "0"); });
    add(Ledger("B1", "1600", "Pump, abandoned", year(2001), "1000", "520", "96"),
        [&](AssetRecord& a) { Dispose(a, &AssetRecord::Abandoned, sold, "0", "0"); });
    add(Ledger("B2", "1600", "Shed, burnt", year(2001), "1000", "520", "96"),
        [&](AssetRecord& a) { Dispose(a, &AssetRecord::Casualty, sold, "0", "30"); });
    add(Ledger("B3", "1600", "Loader, sold the year before", year(2000), "7000", "7000", "0"),
        [](AssetRecord& a) { Dispose(a, &AssetRecord::Sold, Date::FromYmd(2002, 5, 5), "2500", "0"); });
    add(Ledger("B4", "1600", "Computer, expensed whole", year(2003), "2400", "0", "0"), [](AssetRecord& a) {
        SetInEveryBook(a.Section179, "2400");
        a.YearThru = {};
    });
    add(Ledger("B5", "1600", "Truck, additional first year", year(2003), "40000", "0", "5600"), [](AssetRecord& a) {
        SetInEveryBook(a.AddlDepr, "12000");
        a.YearThru = {};
        a.Auto[1] = true;
        a.BusinessUse = Money("87.5");
    });
    add(Ledger("B6", "1600", "Van, expensed in part earlier", year(2002), "30000", "4000", "6400"), [](AssetRecord& a) {
        SetInEveryBook(a.Section179, "10000");
        SetInEveryBook(a.AddlDepr, "1000");
        a.Listed[1] = true;
        a.YearThru = {};
        for (int book = kFirstBook; book <= kLastBook; ++book) a.YearThru[book] = 1;
    });
    add(Ledger("B7", "1600", "Crane, in service next year", Date::FromYmd(2004, 2, 1), "5000", "0", "0"));
    add(Ledger("C1", "1700", "Shares held", year(2001), "6000", "0", "0"), [](AssetRecord& a) {
        for (int book = kFirstBook; book <= kLastBook; ++book) a.DeprType[book] = kStck;
        a.PropertyTax = false;
    });
    add(Ledger("C2", "1700", "Shares sold", year(2001), "6000", "0", "0"), [&](AssetRecord& a) {
        for (int book = kFirstBook; book <= kLastBook; ++book) a.DeprType[book] = kStck;
        Dispose(a, &AssetRecord::Sold, sold, "7500", "75");
    });
    add(Ledger("C3", "1700", "Painting sold", year(2001), "9000", "0", "0"), [&](AssetRecord& a) {
        for (int book = kFirstBook; book <= kLastBook; ++book) a.DeprType[book] = kColl;
        Dispose(a, &AssetRecord::Sold, sold, "8000", "100");
    });
    add(Ledger("C4", "1700", "Building site", year(1995), "1234567890.12", "0", "0"), [](AssetRecord& a) {
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            a.DeprType[book] = kXxxx;
            a.Period[book] = {};
            a.DBPercent[book] = 0;
            a.IRSConvUsed[book] = "X";
        }
    });
}

}  // namespace tallymar::test
