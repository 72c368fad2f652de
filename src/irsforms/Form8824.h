#pragma once

#include <array>
#include <string>
#include <vector>

#include "irsforms/IrsForm.h"

namespace tallymar {

// Form 8824, Like-Kind Exchanges: a page of its own for each exchanged asset of a book. Amounts are dollars; texts and dates are
// as the form prints them. Its Lines are of no single page: 16 and 18 are summed over all of them.
class Form8824 : public IrsForm {
 public:
    static const FormInfo kInfo;

    // One page.
    struct Exchange {
        std::string AssetNum;
        std::string File;      // page code: "28824101"
        std::string Received;  // the number of the asset received; empty when there is none
        std::array<CurrencyAmount, 26> ExchangeLine;
        std::array<std::string, 28> ExchangeText;
        bool InDollars = false;

        CurrencyAmount Line(int number) const { return ExchangeLine.at(static_cast<std::size_t>(number)); }
        const std::string& Text(int slot) const { return ExchangeText.at(static_cast<std::size_t>(slot)); }
    };

    Form8824();

    std::unique_ptr<IrsForm> Clone() const override { return std::make_unique<Form8824>(*this); }
    const FormInfo& Info() const override { return kInfo; }
    void Take(const AssetRecord& asset, FormScan& scan) override;
    void ComputeLines(const FormSettings&) override {}  // every page is whole when its asset has been taken
    void Write(FormOutput&) override {}
    void ExchangeWorkFile(WorkFile& file) override;  // of one page, the last of the exchanges
    std::string Message() const override;
    void WriteTables(JsonWriter& json) const override;

    const std::vector<Exchange>& Exchanges() const { return exchanges_; }

 private:
    void FillExchange(const AssetRecord& asset, const AssetRecord* received, FormScan& scan, Exchange& exchange);

    std::vector<Exchange> exchanges_;
    std::vector<std::string> boxes_;  // what was told on the way
    int exchangeCount_ = 0;
    struct {
        CurrencyAmount Basis;
        CurrencyAmount PrevDepr;
        CurrencyAmount CurrDepr;
        CurrencyAmount BasisAgain;  // the basis is summed twice
    } totals_;
};

}  // namespace tallymar
