#pragma once

#include <string>
#include <vector>

#include "irsforms/IrsForm.h"

namespace tallymar {

// Form 4255, Recapture of Investment Credit, for assets whose credit was taken and which were disposed of early. Amounts are
// dollars, rates have 100 meaning 100%; texts and dates are as the form prints them.
class Form4255 : public IrsForm {
 public:
    static const FormInfo kInfo;

    // A column of the form: one property.
    struct GridColumn {
        std::string AssetNum;
        std::string Description;
        std::string Life;  // "5 YRS"
        std::string InService;
        std::string Sold;
        CurrencyAmount Days;
        CurrencyAmount YearsHeld;  // whole
        CurrencyAmount CreditAtBase;
        CurrencyAmount CreditAtFullBasis;
        CurrencyAmount RateOfCredit;   // line 1
        CurrencyAmount Basis;          // line 2
        CurrencyAmount Credit;         // line 3
        CurrencyAmount RecaptureRate;  // line 7
        CurrencyAmount Recapture;      // line 8
        CurrencyAmount Earned;         // the credit that is kept; it has no line on this revision

        friend bool operator==(const GridColumn&, const GridColumn&) = default;
    };
    struct RunTotals {
        CurrencyAmount Basis;
        CurrencyAmount PrevDepr;
        CurrencyAmount CurrDepr;
    };

    Form4255();

    std::unique_ptr<IrsForm> Clone() const override { return std::make_unique<Form4255>(*this); }
    const FormInfo& Info() const override { return kInfo; }
    void Take(const AssetRecord& asset, FormScan& scan) override;
    void ComputeLines(const FormSettings& settings) override;
    void Write(FormOutput& output) override;
    void ExchangeWorkFile(WorkFile& file) override;
    std::string Message() const override;
    void WriteTables(JsonWriter& json) const override;

    const std::vector<GridColumn>& RecaptureGrid() const { return grid_; }

    static constexpr std::size_t kColumnsOnPage = 4;

 private:
    std::vector<GridColumn> grid_;
    RunTotals totals_;
};

}  // namespace tallymar
