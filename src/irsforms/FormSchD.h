#pragma once

#include <array>
#include <string>
#include <vector>

#include "irsforms/IrsForm.h"

namespace tallymar {

// Schedule D, Capital Gains and Losses, and its continuation Schedule D-1, from the stocks and collectibles of a book. Amounts
// are dollars; texts and dates are as the form prints them.
class FormSchD : public IrsForm {
 public:
    static const FormInfo kInfo;

    struct SaleRow {
        std::string AssetNum;
        std::string ItemDesc;
        std::string ItemBought;
        std::string ItemSold;
        CurrencyAmount ItemPrice;
        CurrencyAmount ItemCost;
        CurrencyAmount ItemGain;
        CurrencyAmount ItemGain28;  // of collectibles
        std::string ItemTerm;       // "S" short, "L" long, "5" held more than five years
        std::string ItemCode;       // a mark and a column code; empty

        // "2": no price stands on a continuation, "3": no cost, "4": no qualified five-year gain.
        std::string_view ColumnCode() const { return std::string_view(ItemCode).substr(ItemCode.empty() ? 0 : 1); }
        bool IsShort() const { return ItemTerm == "S"; }

        friend bool operator==(const SaleRow&, const SaleRow&) = default;
    };
    struct TermTotals {
        std::size_t Rows = 0;
        CurrencyAmount Price;
        CurrencyAmount Cost;
        CurrencyAmount Gain;
        CurrencyAmount Gain28;
    };

    FormSchD();

    std::unique_ptr<IrsForm> Clone() const override { return std::make_unique<FormSchD>(*this); }
    const FormInfo& Info() const override { return kInfo; }
    void Take(const AssetRecord& asset, FormScan& scan) override;
    void ComputeLines(const FormSettings& settings) override;
    void Write(FormOutput& output) override;
    void ExchangeWorkFile(WorkFile& file) override;
    std::string Message() const override;
    void WriteTables(JsonWriter& json) const override;

    bool InDollars() const { return round_ == "Y"; }
    const std::vector<SaleRow>& SaleTable() const { return saleTable_; }
    const TermTotals& ShortTerm() const { return short_; }
    const TermTotals& LongTerm() const { return long_; }

    // Slots of SchDLine.
    static constexpr int kNetLongTerm = 17;
    static constexpr int kNetLongTermLoss = 18;
    static constexpr int kItems = 30;
    static constexpr int kFiveYearGain = 31;
    CurrencyAmount SchDLine(int slot) const { return schDLine_[slot]; }

 private:
    void LookAgainAtTerms();
    void SumTerms();

    FormLines schDLine_;  // by the numbers of the computation
    std::string round_;
    std::vector<SaleRow> saleTable_;
    TermTotals short_;
    TermTotals long_;
};

}  // namespace tallymar
