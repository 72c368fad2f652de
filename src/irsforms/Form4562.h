#pragma once

#include <array>
#include <string>
#include <vector>

#include "irsforms/IrsForm.h"

namespace tallymar {

// Form 4562, Depreciation and Amortization, from the current depreciation of a book. Amounts are dollars, percentages have 100
// meaning 100%; texts and dates are as the form prints them.
class Form4562 : public IrsForm {
 public:
    static const FormInfo kInfo;

    // Lines 19a to 20c: assets placed in service this year by their class. Row 0 takes what has no line on the form.
    struct ClassRow {
        std::vector<std::string> AssetNums;
        std::string RowPlaced;  // "07/2002"
        CurrencyAmount RowBasis;
        std::string RowPeriod;
        std::string RowConvention;
        std::string RowMethod;
        CurrencyAmount RowDepr;

        friend bool operator==(const ClassRow&, const ClassRow&) = default;
    };
    // Part V.
    struct ListedRow {
        std::string AssetNum;
        std::string ListedDesc;
        std::string ListedDate;
        CurrencyAmount ListedPct;
        CurrencyAmount ListedCost;
        CurrencyAmount ListedBasis;
        std::string ListedLife;
        std::string ListedMethod;
        CurrencyAmount ListedDepr;
        CurrencyAmount ListedElected;

        friend bool operator==(const ListedRow&, const ListedRow&) = default;
    };
    // Line 6: Section 179.
    struct ElectRow {
        std::string AssetNum;
        std::string ElectDesc;
        std::string ElectDate;
        CurrencyAmount ElectCost;
        CurrencyAmount ElectAmount;

        friend bool operator==(const ElectRow&, const ElectRow&) = default;
    };
    // Line 42.
    struct AmortRow {
        std::string AssetNum;
        std::string AmortDesc;
        std::string AmortDate;
        CurrencyAmount AmortCost;
        std::string AmortCode;
        std::string AmortLife;
        CurrencyAmount AmortAmount;

        friend bool operator==(const AmortRow&, const AmortRow&) = default;
    };

    Form4562();

    std::unique_ptr<IrsForm> Clone() const override { return std::make_unique<Form4562>(*this); }
    const FormInfo& Info() const override { return kInfo; }
    void Take(const AssetRecord& asset, FormScan& scan) override;
    void ComputeLines(const FormSettings& settings) override;
    void Write(FormOutput& output) override;
    void ExchangeWorkFile(WorkFile& file) override;
    std::string Message() const override;
    std::optional<DepreciationSums> Sums() const override;
    void WriteTables(JsonWriter& json) const override;
    std::span<const int> SlotsBesideLines() const override;

    // 1 and 3 the company's name, 2 its number, 4 and 5 "Y" with listed property, 6 the election of general asset accounts, 7 the
    // entity type; 8 and 9 are empty.
    const std::string& Header(int slot) const { return header_.at(static_cast<std::size_t>(slot)); }
    const ClassRow& Class(int row) const { return class_.at(static_cast<std::size_t>(row)); }
    const std::vector<ListedRow>& Listed() const { return listed_; }
    const std::vector<ElectRow>& Election() const { return election_; }
    const std::vector<AmortRow>& Amortization() const { return amortization_; }
    // Line 42 has no room for them, so that they stand on a statement.
    bool HasAmortizationStatement() const { return Line(kAmortizations) > Units(kAmortizationsOnPage); }
    // The rows on line 42 or on its statement, from the first on. COMPAT: so many as have a cost, so that with one that has none
    // among them the last is on no row, though in line 44; it is told as left out.
    std::vector<AmortRow> ShownAmortizations() const;

    // Lines 1 and 3. COMPAT: those of 2002, whatever the fiscal year, unless the company goes by the law of its year.
    CurrencyAmount ExpenseLimit() const { return expenseLimit_; }
    CurrencyAmount ExpenseThreshold() const { return expenseThreshold_; }

    static constexpr int kAmortizationsOnPage = 2;

    // Slots of Lines beside the form's own.
    static constexpr int kElectedCost = 46;
    static constexpr int kElections = 47;
    static constexpr int kListedAbove = 48;  // above 50% business use, with a description
    static constexpr int kListedBelow = 49;
    static constexpr int kAmortizations = 42;  // with a cost; line 42 itself is a table

 private:
    void TakeListed(const AssetRecord& asset, int book, bool firstYear);
    void TakeAmortization(const AssetRecord& asset, int book, bool firstYear);
    void TakeClass(const AssetRecord& asset, int book);
    void TakeElection(const AssetRecord& asset, int book);
    void TakePriorYear(const AssetRecord& asset, int book);
    int ChooseClassRow(const AssetRecord& asset, int book);
    int ChooseBuildingRow(const AssetRecord& asset, int firstRow, std::string_view period);
    void TakeLimits(const FormSettings& settings);
    void RoundColumns(const FormSettings& settings);
    void NameLostAmortizations();

    std::array<std::string, 11> header_;
    std::array<ClassRow, 21> class_;
    std::vector<ListedRow> listed_;
    std::vector<ElectRow> election_;
    std::vector<AmortRow> amortization_;
    CurrencyAmount expenseLimit_;
    CurrencyAmount expenseThreshold_;
    CurrencyAmount listedAllowance_;  // for line 25
    CurrencyAmount inBook_;
    CurrencyAmount onForm_;
    CurrencyAmount lostInRounding_;  // of what stands on the form
};

}  // namespace tallymar
